#pragma once

#include "app/results/runresult.h"
#include "app/results/sheets.h"

class QIODevice;

namespace app {

/// The seam passport of a run, in the panel's language: what was welded, judged by the limits, with the
/// picture of the path, the signals, parameters, program, and checksums of the files.
[[nodiscard]] Sheets seamPassport(const RunResult& result);

/// The same as a PDF file. False when the device does not take it.
[[nodiscard]] bool writePassport(QIODevice* device, const RunResult& result);

}  // namespace app
