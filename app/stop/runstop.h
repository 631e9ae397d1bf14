#pragma once

#include <QObject>

namespace sim {
class Controller;
}

namespace app {

class StatusWatcher;

/// What the Stop of the header does: the same as the Stop of the project page, for any run, step or
/// station, and it ends a jog. While nothing is under way it only says so.
class RunStop : public QObject {
    Q_OBJECT
public:
    /// Both must outlive it.
    RunStop(const StatusWatcher* status, sim::Controller* controller, QObject* parent = nullptr);

    /// Stops from the event loop, after what was pressed before it: a start that is still due is stopped,
    /// too.
    void stop();

signals:
    /// There was nothing to stop. `text` says what to do instead.
    void nothingToStop(const QString& text);

private:
    void stopNow();

    const StatusWatcher* status_;
    sim::Controller* controller_;
    bool posted_ = false;
};

}  // namespace app
