#include "runner/flightlog.h"

#include "runner/problem.h"
#include "simulator/time/virtualtime.h"

namespace run {

bool FlightLog::open(const Options& options) {
    if (options.flight.isEmpty()) {
        return true;
    }
    flight::RingProblem problem;
    ring_ = flight::RingFile::open(options.flight, qint64(options.flightMb) << 20, &problem);
    if (!ring_) {
        printError(QStringLiteral("--flight %1: %2").arg(options.flightName, problem.text()));
    }
    return ring_ != nullptr;
}

void FlightLog::begin(const Options& options, const int* runMode, const std::function<QString()>& project) {
    if (!ring_) {
        return;
    }
    flight::Facts facts;
    facts.version = QStringLiteral(LUMO_VERSION);
    facts.language = options.language;
    facts.isExact = sim::VirtualTime::instance() && !options.realtime;
    facts.runMode = runMode;
    facts.project = project;
    recorder_ = std::make_unique<flight::Recorder>(ring_.get(), facts);
}

void FlightLog::noteQuitting() {
    if (recorder_) {
        recorder_->noteQuitting();
    }
}

}  // namespace run
