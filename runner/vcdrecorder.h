#pragma once

#include "runner/treefollower.h"
#include "runner/vcdwriter.h"

#include <QHash>
#include <QObject>

#include <functional>

namespace sim {
class Cell;
class Controller;
}  // namespace sim

namespace run {

/// Records the signals of a run as a value change dump: the controller's inputs and outputs, by their
/// equipment too where a port names them, the laser's emission, the tool and the executor.
class VcdRecorder : public QObject {
    Q_OBJECT
public:
    VcdRecorder(VcdWriter* writer, sim::Controller* controller, sim::Cell* cell, TreeFollower* follower,
                std::function<qint64()> clock, QObject* parent = nullptr);

    /// Declares the signals with the ports as they are now, and writes the header.
    void begin();

private:
    void declareSignals();
    void declareEquipment();
    void set(int signal, double value) { writer_->set(signal, value, clock_()); }
    void onSignal(const QString& name, const QVariant& value);
    void onChanged(const Change& change);
    void onPosture();

    VcdWriter* writer_;
    sim::Controller* controller_;
    sim::Cell* cell_;
    std::function<qint64()> clock_;
    bool begun_ = false;
    QHash<QString, int> signals_;  ///< by the controller's name
    int emission_ = 0, busy_ = 0, line_ = 0, moving_ = 0;
    int tool_[3] = {};
};

}  // namespace run
