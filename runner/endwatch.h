#pragma once

#include "runner/longtime.h"

#include <QObject>
#include <QString>
#include <QTimer>

namespace sim {
class Controller;
}

namespace run {

class MessageWatch;
class PageOperator;
class ScenarioPlayer;
class StationPage;
class TreeOperator;

/// Finds out when the runner is to end: everything is at rest and no scenario entry is left, or nothing more
/// can happen, or the time is up. On the wall clock it is not seen that nothing more can happen.
class EndWatch : public QObject {
    Q_OBJECT
public:
    /// What has to be at rest. All must outlive the watch.
    struct Parts {
        const QObject* executor = nullptr;
        const sim::Controller* controller = nullptr;
        const TreeOperator* tree = nullptr;
        const PageOperator* pages = nullptr;
        const MessageWatch* messages = nullptr;
        ScenarioPlayer* player = nullptr;
        const StationPage* stations = nullptr;  ///< null when a project is run
    };

    explicit EndWatch(QObject* parent = nullptr);

    /// The run begins now; `untilMs`: its longest time.
    void begin(const Parts& parts, qint64 untilMs);
    /// Waits for stations until some time after the last entry of the scenario, which has begun now.
    void waitCalmly();
    /// The application was asked to quit: nothing ends before its event loops have returned.
    void holdForQuit() { quit_ = Quit::Asked; }
    /// They have returned. Stations are not waited for any more.
    void endQuit();
    /// No signal comes any more.
    void stop();

public slots:
    /// Something has happened: looks at the next pass of the event loop whether it was the last.
    void schedule();

signals:
    /// Everything is at rest.
    void over();
    /// It never will be: "stalled" or "until".
    void gaveUp(const QString& reason);

private:
    void onAboutToBlock();
    void checkStall();
    void check();
    void watchStuckRun();
    bool isActive() const { return parts_.executor && !stopped_; }
    bool isOver() const;
    bool isAtRest() const;
    bool isStuck() const;
    bool areStationsDone() const;
    bool isForgotten() const;

    Parts parts_;
    LongTimer until_;
    LongTimer calm_;  ///< runs for a while after the last entry of a scenario for stations
    QTimer* stuck_ = new QTimer(&until_);  ///< a child of until_: armedTimers() leaves both out
    bool checkPosted_ = false;
    bool stopped_ = false;
    enum class Quit {
        No,
        Asked,
        Done
    } quit_ = Quit::No;  ///< Done: the application's event loop has returned
};

}  // namespace run
