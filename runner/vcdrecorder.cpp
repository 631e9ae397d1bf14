#include "runner/vcdrecorder.h"

namespace run {

VcdRecorder::VcdRecorder(workcell::VcdWriter* writer, sim::Controller* controller, sim::Cell* cell,
                         workcell::TreeFollower* follower, std::function<qint64()> clock, QObject* parent)
    : QObject(parent), writer_(writer), signals_(controller, cell, follower), clock_(std::move(clock)) {}

void VcdRecorder::begin() {
    signals_.declare(writer_);
    int index = 0;
    for (const workcell::CellSignal& signal : signals_.all()) {
        writer_->set(index++, signal.value, 0);
    }
    writer_->begin();
    connect(&signals_, &workcell::CellSignals::changed, this,
            [this](int signal, double value) { writer_->set(signal, value, clock_()); });
}

}  // namespace run
