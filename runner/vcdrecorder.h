#pragma once

#include "workcell/cellsignals.h"

#include <QObject>

#include <functional>

namespace run {

/// Records the signals of a run as a value change dump.
class VcdRecorder : public QObject {
    Q_OBJECT
public:
    VcdRecorder(workcell::VcdWriter* writer, sim::Controller* controller, sim::Cell* cell,
                workcell::TreeFollower* follower, std::function<qint64()> clock, QObject* parent = nullptr);

    /// Declares the signals with the ports as they are now, and writes the header.
    void begin();

private:
    workcell::VcdWriter* writer_;
    workcell::CellSignals signals_;
    std::function<qint64()> clock_;
};

}  // namespace run
