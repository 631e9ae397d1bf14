#pragma once

#include "app/scope/lanes.h"
#include "app/scope/signalrecorder.h"

class QIODevice;

namespace app {

/// Writes a section of the record as a value change dump of all the cell's signals, time 0 at its
/// beginning: what the runner writes of the same. False, with the reason in `error`, when it could not
/// be written.
bool writeVcd(QIODevice* device, const SignalRecorder& recorder, const TimeSpan& span, QString* error);

/// Writes a section of some signals as comma-separated values: a row for the beginning and for each
/// millisecond in which one of them changed, times in seconds from the beginning, signals by the
/// controller's name and the operator's.
bool writeCsv(QIODevice* device, const SignalRecorder& recorder, const std::vector<Lane>& lanes,
              const TimeSpan& span, QString* error);

}  // namespace app
