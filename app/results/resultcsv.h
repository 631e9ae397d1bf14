#pragma once

#include "app/results/runresult.h"

#include <QByteArray>

namespace app {

/// Results as comma-separated values (RFC 4180) in UTF-8, in the words of the runner's summary and with
/// decimal points, so that scripts read files of every panel. The text begins with a byte-order mark, by
/// which spreadsheets recognise the encoding.

/// The mark and the titles of the columns.
[[nodiscard]] QByteArray csvHeader();
/// A line for each seam; for a run without a seam one line in which the seam's columns are empty.
[[nodiscard]] QByteArray csvLines(const RunResult& result);

}  // namespace app
