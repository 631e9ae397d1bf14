#pragma once

#include "json/fileproblem.h"
#include "kord/kordservice.h"
#include "runner/trace.h"
#include "simulator/controller.h"
#include "workcell/treefollower.h"

#include <QObject>

namespace sim {
class Cell;
}

namespace run {

/// Writes events of the host, the controller and the package's loggers as trace lines while recording is on.
/// Make it before the controller: the line of a command then comes before those of its consequences.
class Recorder : public QObject {
    Q_OBJECT
public:
    Recorder(Trace* trace, workcell::TreeFollower* follower, QObject* parent = nullptr);

    /// Records a controller; `posture`: its posture, too.
    void attach(sim::Controller* controller, bool posture);
    /// Records the posture also when the laser starts and ends to emit.
    void attachCell(sim::Cell* cell);
    void setRecording(bool on) { recording_ = on && trace_->isOpen(); }

    void message(const QString& icon, const QString& title, const QString& text);
    void answer(const QString& title, const QString& answer);
    /// The state text of a station; `row` from 0.
    void station(int row, const QString& state);
    /// A scenario entry, as JSON.
    void scenarioEntry(const QByteArray& entry, bool refused);

private:
    void onIssued(const KordCall& call);
    void onHanded(const QString& path, const mendo::ModuleObject* node);
    void onChanged(const workcell::Change& change);
    void onOutput(const QString& name, const QVariant& value);
    void onRejected(const QString& name, const QString& reason);
    void onInput(const QString& name, bool value);
    void onMotion(int id, sim::Controller::MotionEvent event);
    void onResult(const QString& command, int id, int code);
    void onPosture();
    void onLog(const QString& level, const QString& text);
    void onFileProblem(const mendo::FileProblem& problem);

    Trace* trace_;
    sim::Controller* robot_ = nullptr;  ///< only when its posture is recorded
    QByteArray lastPosture_;            ///< the last line, with its time
    bool recording_ = false;
};

}  // namespace run
