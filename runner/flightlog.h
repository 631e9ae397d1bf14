#pragma once

#include "flight/recorder.h"
#include "flight/ringfile.h"
#include "runner/options.h"

#include <QString>

#include <functional>
#include <memory>

namespace run {

/// The flight recorder of a run, for --flight; without that it does nothing.
class FlightLog {
public:
    /// Opens the ring file. False when that fails, with one line on standard error.
    bool open(const Options& options);
    /// Records from now on. What was before is in the state that the recording begins with.
    void begin(const Options& options, const int* runMode, const std::function<QString()>& project);
    /// The run is over or the process quits: what comes now is its winding down.
    void noteQuitting();

private:
    std::unique_ptr<flight::RingFile> ring_;
    std::unique_ptr<flight::Recorder> recorder_;
};

}  // namespace run
