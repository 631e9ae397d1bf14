#include "runner/vcdrecorder.h"

namespace run {

VcdRecorder::VcdRecorder(rec::VcdWriter* writer, sim::Controller* controller, sim::Cell* cell,
                         rec::TreeFollower* follower, std::function<qint64()> clock, QObject* parent)
    : QObject(parent), writer_(writer), signals_(controller, cell, follower), clock_(std::move(clock)) {}

void VcdRecorder::begin() {
    signals_.declare(writer_);
    int index = 0;
    for (const rec::CellSignal& signal : signals_.all())
        writer_->set(index++, signal.value, 0);
    writer_->begin();
    connect(&signals_, &rec::CellSignals::changed, this,
            [this](int signal, double value) { writer_->set(signal, value, clock_()); });
}

}  // namespace run
