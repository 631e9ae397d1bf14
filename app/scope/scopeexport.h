#pragma once

#include "app/scope/scoperow.h"
#include "app/scope/signalrecorder.h"

class QIODevice;

namespace app {

/// Writes a section of the record as a value change dump with all signals of the cell, as the runner does.
/// Time 0 is the beginning of the section. On failure returns false and writes the reason to `error`.
bool writeVcd(QIODevice* device, const SignalRecorder& recorder, const TimeSpan& span, QString* error);

/// Writes a section of some signals as comma-separated values. One line for the beginning and one for each
/// millisecond in which a signal changed; times in seconds from the beginning. A column's title has the
/// controller's and the operator's name.
bool writeCsv(QIODevice* device, const SignalRecorder& recorder, const std::vector<ScopeRow>& rows,
              const TimeSpan& span, QString* error);

}  // namespace app
