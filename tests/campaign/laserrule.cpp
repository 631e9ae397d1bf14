#include "campaign/rules.h"

namespace campaign {

namespace {

/// The laser is on only from a permitted opening to the end of its closing; a closing takes as long as
/// its ramp, ends at power 0 and never raises the power; a weld is never continued elsewhere.
class LaserRule : public Rule {
public:
    void on(const Event& event, const Outputs& outputs, const Runs& runs) override {
        const bool laserOn = outputs.values[LASER] != 0;
        if (laserOn && deadline_ >= 0 && event.ms > deadline_) {
            forbid(true, QString("the laser is enabled at %1 ms; after %2 it has to be off by %3 ms")
                             .arg(event.ms)
                             .arg(why_)
                             .arg(deadline_));
            deadline_ = -1;
        }
        onRun(event, runs);
        onCloseStatement(event, runs);
        if (event.kind == Statement) {
            announced_ = event.text == "open";
            if (event.text == "close" && event[Permitted] && laserOn) {
                closeWithin(event, event[DecreaseMs] + 1, "a close statement");
            }
        } else if (event.kind == Param && announced_) {
            beginOpening(event);
        } else if (event.kind == Permission) {
            onPermission(event, laserOn);
        } else if (event.kind == Quit || Runs::isPowerLoss(event)) {
            quits_ |= event.kind == Quit;
            closeNow(event, laserOn);
            if (laserOn) {
                closeWithin(event, 0, event.kind == Quit ? "the request to quit" : "a loss of power");
            }
        } else if (event.kind == Pause ||
                   (event.kind == Activity && event.value && event.wait == "rampdown")) {
            closeNow(event, laserOn);
        } else if (event.kind == Write && !quits_) {  // what is due when it quits is undone in the same turn
            onWrite(event, outputs, laserOn);
        } else if (event.kind == Emission) {
            forbid(event.value != 0 && !laserOn, "the source emits, though the laser was not enabled");
        }
    }

private:
    void onRun(const Event& event, const Runs& runs) {
        if (runs.begun) {
            // A weld may be continued by hand, in the program in which it was left open by hand.
            const Event& asked = runs.begun->asked;
            announced_ = asked.kind == Start && asked[WeldOpen] && asked[Mode] == 0 && weldMode_ == 0 &&
                         weldGeneration_ == runs.begun->generation;
        }
        if (event.kind == WeldFlag && event.value != 0 && runs.current()) {
            weldMode_ = runs.current()->asked[Mode];
            weldGeneration_ = runs.current()->generation;
        }
        if (event.kind == Activity && event[Depth] == 0) {
            announced_ = false;
            armed_ = false;
        }
    }

    /// A close statement whose closing has begun closes the weld, so that no start opens it again.
    void onCloseStatement(const Event& event, const Runs& runs) {
        if (closeBegun_ && (event.kind == Statement || runs.ended)) {
            forbid(event[WeldOpen], "the weld counts as open behind its close statement");
            closeBegun_ = false;
        }
        if (event.kind == Statement) {
            closeAhead_ = event.text == "close" && event[Permitted];
        } else if (event.kind == Pause || event.kind == Power || event.kind == Permission) {
            closeAhead_ = false;
        } else if (closeAhead_ && event.kind == Write && event.port == PULLBACK && event.value != 0) {
            closeAhead_ = false;
            closeBegun_ = true;
        }
    }

    void onPermission(const Event& event, bool laserOn) {
        const bool lost = permitted_ && !event[Permitted];
        permitted_ = event[Permitted];
        if (!lost || !(armed_ || laserOn)) {
            return;
        }
        armed_ = false;
        if (laserOn) {
            closeWithin(event, event[DecreaseMs] + 1, "the loss of the welding permission");
        }
        closingSince_ = closingSince_ < 0 ? event.ms : closingSince_;
    }

    void beginOpening(const Event& event) {
        announced_ = false;
        armed_ = event[Permitted];
        closingSince_ = -1;
        deadline_ = -1;
        forbid(!armed_, "an opening goes on though welding is not permitted");
    }

    /// The laser has to be off `ms` from now, or earlier where that was due already.
    void closeWithin(const Event& event, int ms, const QString& why) {
        if (deadline_ < 0 || event.ms + ms < deadline_) {
            deadline_ = event.ms + ms;
            why_ = why;
        }
    }

    /// What ends every weld has come; a pause, when the closing is under way already, ends that at once.
    void closeNow(const Event& event, bool laserOn) {
        if (event.kind == Pause && laserOn) {
            const bool closing = closingSince_ >= 0 && event.ms > closingSince_;
            closeWithin(event, closing ? 0 : event[DecreaseMs] + 1,
                        closing ? "a pause in a closing" : "a pause");
        }
        closingSince_ = closingSince_ < 0 ? event.ms : closingSince_;
        announced_ = false;
        armed_ = false;
    }

    void onWrite(const Event& event, const Outputs& outputs, bool laserOn) {
        const bool switchesOn = event.value != 0;
        const int power = outputs.values[POWER];
        if (announced_ && switchesOn && (event.port == GAS || event.port == LASER)) {
            beginOpening(event);
        }
        if (event.port == PULLBACK && switchesOn) {
            closeNow(event, laserOn);
        } else if (event.port == GAS && switchesOn) {
            forbid(!armed_, "the gas is switched on outside an opening");
        } else if (event.port == POWER && laserOn && !armed_) {
            forbid(event.value > std::max(0, power),
                   QString("a closing raises the laser power from %1 to %2").arg(power).arg(event.value));
        } else if (event.port == LASER && switchesOn) {
            forbid(!armed_, "the laser is enabled outside a permitted opening");
            forbid(armed_ && !event[Permitted], "the laser is enabled though welding is not permitted");
        } else if (event.port == LASER) {
            forbid(!armed_ && laserOn && power > 0,
                   QString("a closing disables the laser at power %1, not 0").arg(power));
            deadline_ = -1;
        }
    }

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

}  // namespace

std::unique_ptr<Rule> makeLaserRule() {
    return std::make_unique<LaserRule>();
}

}  // namespace campaign
