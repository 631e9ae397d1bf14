#pragma once

#include "campaign/invariants.h"

#include <QVector>

namespace campaign {

/// The laser is on only from a permitted opening to the end of its closing; a closing takes as long as
/// its ramp, ends at power 0 and never raises the power; a weld is never continued elsewhere.
class LaserRule : public Rule {
public:
    void on(const Event& event, const Outputs& outputs, const Runs& runs) override;

private:
    void onWrite(const Event& event, const Outputs& outputs);
    void onRun(const Event& event, const Runs& runs);
    void onPermission(const Event& event, bool laserOn);
    void beginOpening(const Event& event);
    /// The laser has to be off `ms` from now, or earlier where that was due already.
    void closeWithin(const Event& event, int ms, const QString& why);
    void closeNow(const Event& event, const Outputs& outputs, const QString& why);
    void onCloseStatement(const Event& event, const Runs& runs);

    bool announced_ = false;    ///< an opening may begin now
    bool armed_ = false;        ///< it has begun with permission, and nothing has ended it
    bool quits_ = false;        ///< all is over in the turn in which the application ends
    bool permitted_ = true;     ///< as of the event before
    bool closeAhead_ = false;   ///< a close statement may begin its closing now
    bool closeBegun_ = false;   ///< it has
    qint64 closingSince_ = -1;  ///< when what ends the weld came, -1: nothing
    qint64 deadline_ = -1;      ///< when the laser has to be off, -1: not yet known
    QString why_;
    int weldMode_ = -1;  ///< run mode of the weld that was left open last, -1: none
    int weldGeneration_ = -1;
};

/// After a loss of power that finds something under way everything is off at once, and stays off until
/// the next start, step or pause.
class StopRule : public Rule {
public:
    void on(const Event& event, const Outputs& outputs, const Runs& runs) override;

private:
    bool stopped_ = false;
    int action_ = 0;  ///< the loss of power that is on the stack, 0: none
};

/// Nothing is on when the executor says that it rests.
class RestRule : public Rule {
public:
    void on(const Event& event, const Outputs& outputs, const Runs& runs) override;
};

/// One run at a time; a start that is refused says so and changes nothing else; a run that came to its
/// end leaves no weld open.
class StartRule : public Rule {
public:
    void on(const Event& event, const Outputs& outputs, const Runs& runs) override;

private:
    void onBegun(const Run& run, const Runs& runs);
    void onEnded(const Run& run, const Event& event);
    void onRefused(const Event& asked, const Event& done);

    bool quits_ = false;  ///< the application was asked to quit
};

/// The walk is never ahead of the robot: what follows a move begins when its result has come or the
/// tool is in its zone, and nothing follows a move that failed. A pause leaves no motion to the robot.
class WalkRule : public Rule {
public:
    void on(const Event& event, const Outputs& outputs, const Runs& runs) override;

private:
    void onStatement(const Event& event);
    void onPause(const Event& event, const Runs& runs);

    QVector<int> results_;       ///< since the last reset, stop or loss of power
    int walked_ = 0;             ///< moves begun since the last reset
    int unanswered_ = 0;         ///< of these without a result of their own
    bool begun_ = false;         ///< a statement has begun since then
    bool afterMove_ = false;     ///< the statement before was a move
    bool inZone_ = false;        ///< the tool has entered that move's zone
    bool falseResults_ = false;  ///< results can no longer be told apart
    int outstanding_ = 0;        ///< motions that the robot has and has not answered
    int stopDue_ = 0;            ///< the pause that has to stop the robot, 0: none
};

/// With the gas in use it flows before the laser comes on, and after it has gone off until the post-flow
/// is over; that of a pause counts from the pause, but not before the laser is off.
class GasRule : public Rule {
public:
    void on(const Event& event, const Outputs& outputs, const Runs& runs) override;

private:
    void onGasOff(const Event& event, const Outputs& outputs, const Runs& runs);

    bool closing_ = false;    ///< a closing has begun since the gas came on
    bool unused_ = false;     ///< the gas had no port in use since then, or still has none
    qint64 pausedMs_ = -1;    ///< the last pause since the gas came on
    qint64 failedMs_ = -1;    ///< the last motion error since then
    qint64 laserOffMs_ = -1;  ///< when the laser was on last
    int postFlowMs_ = 0;      ///< shortest post-flow in force since then
    qint64 gasOffMs_ = -1;    ///< the gas went off while the laser was on
};

/// Every motion that was handed over is awaited, or its result passed over for a reason that is logged.
class MotionRule : public Rule {
public:
    void on(const Event& event, const Outputs& outputs, const Runs& runs) override;

private:
    void onResult();
    void onDropped(const Event& event);

    int outstanding_ = 0;
    int zones_ = 0;              ///< motions whose wait ended in the zone since the last reset
    bool silent_ = false;        ///< a result came that belongs to no motion, and nothing was said of it
    bool belongs_ = false;       ///< the last result belongs to a motion, and nothing came since
    bool falseResults_ = false;  ///< results can no longer be told apart
};

/// A run goes through its lines once, upwards, from the line it was asked for; a pause leaves the line that
/// it interrupted for the resume.
class ResumeRule : public Rule {
public:
    void on(const Event& event, const Outputs& outputs, const Runs& runs) override;

private:
    int line_ = -1;        ///< the last one of the run under way, -1: none yet
    int action_ = 0;       ///< the pause that is to leave it, 0: none
    bool edited_ = false;  ///< somebody edited the program in this run
};

}  // namespace campaign
