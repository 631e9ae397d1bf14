#include "campaign/rules.h"

namespace campaign {

/// The laser is on only from a permitted opening to the end of its closing; a closing takes as long as
/// its ramp, ends at power 0 and never raises the power; a weld is never continued elsewhere.
void checkLaser(const std::vector<Step>& steps, Findings& found) {
    bool announced = false;    // an opening may begin now
    bool armed = false;        // it has begun with permission, and nothing has ended it
    bool quits = false;        // all is over in the turn in which the application ends
    bool permitted = true;     // as of the event before
    bool closeAhead = false;   // a close statement may begin its closing now
    bool closeBegun = false;   // it has
    qint64 closingSince = -1;  // when what ends the weld came, -1: nothing
    qint64 deadline = -1;      // when the laser has to be off, -1: not yet known
    QString why;
    int weldMode = -1;  // run mode of the weld that was left open last, -1: none
    int weldGeneration = -1;

    for (found.at = 0; found.at < steps.size(); ++found.at) {
        const Step& step = steps[found.at];
        const Event& event = step.event;
        const int power = step.outputs[POWER];
        /// The laser has to be off `ms` from now, or earlier where that was due already.
        const auto closeWithin = [&](int ms, const char* reason) {
            if (step.laserOn() && (deadline < 0 || event.ms + ms < deadline)) {
                deadline = event.ms + ms;
                why = reason;
            }
        };
        const auto beginOpening = [&] {
            announced = false;
            armed = event[Permitted];
            closingSince = deadline = -1;
            found.forbid(!armed, "an opening goes on though welding is not permitted");
        };
        /// What ends every weld has come.
        const auto close = [&] {
            closingSince = closingSince < 0 ? event.ms : closingSince;
            announced = armed = false;
        };

        if (step.laserOn() && deadline >= 0 && event.ms > deadline) {
            found.forbid(true, QString("the laser is enabled at %1 ms; after %2 it has to be off by %3 ms")
                                   .arg(event.ms)
                                   .arg(why)
                                   .arg(deadline));
            deadline = -1;
        }
        if (step.begun) {
            // A weld may be continued by hand, in the program in which it was left open by hand.
            const Event& asked = step.begun->asked;
            announced = asked.kind == Start && asked[WeldOpen] && asked[Mode] == 0 && weldMode == 0 &&
                        weldGeneration == step.begun->generation;
        }
        if (event.kind == WeldFlag && event.value != 0 && step.current) {
            weldMode = step.current->asked[Mode];
            weldGeneration = step.current->generation;
        }
        if (event.kind == Activity && event[Depth] == 0) {
            announced = armed = false;
        }

        // A close statement whose closing has begun closes the weld, so that no start opens it again.
        if (closeBegun && (event.kind == Statement || step.ended)) {
            found.forbid(event[WeldOpen], "the weld counts as open behind its close statement");
            closeBegun = false;
        }
        if (event.kind == Statement) {
            closeAhead = event.text == "close" && event[Permitted];
        } else if (event.kind == Pause || event.kind == Power || event.kind == Permission) {
            closeAhead = false;
        } else if (closeAhead && step.switchesOn(PULLBACK)) {
            closeAhead = false;
            closeBegun = true;
        }

        if (event.kind == Statement) {
            announced = event.text == "open";
            if (closeAhead) {
                closeWithin(event[DecreaseMs] + 1, "a close statement");
            }
        } else if (event.kind == Param && announced) {
            beginOpening();
        } else if (event.kind == Permission) {
            if (permitted && !event[Permitted] && (armed || step.laserOn())) {
                closeWithin(event[DecreaseMs] + 1, "the loss of the welding permission");
                closingSince = closingSince < 0 ? event.ms : closingSince;
                armed = false;
            }
            permitted = event[Permitted];
        } else if (event.kind == Quit || step.isPowerLoss()) {
            quits |= event.kind == Quit;
            close();
            closeWithin(0, event.kind == Quit ? "the request to quit" : "a loss of power");
        } else if (event.kind == Pause) {
            // When the closing is under way already, it ends that at once.
            const bool closing = closingSince >= 0 && event.ms > closingSince;
            closeWithin(closing ? 0 : event[DecreaseMs] + 1, closing ? "a pause in a closing" : "a pause");
            close();
        } else if (event.kind == Activity && event.value != 0 && event.wait == "rampdown") {
            close();
        } else if (event.kind == Emission) {
            found.forbid(event.value != 0 && !step.laserOn(),
                         "the source emits, though the laser is disabled");
        }

        if (event.kind != Write || quits) {
            continue;  // what is due when the application quits is undone in the same turn
        }
        if (announced && (step.switchesOn(GAS) || step.switchesOn(LASER))) {
            beginOpening();
        }
        if (step.switchesOn(PULLBACK)) {
            close();
        } else if (step.switchesOn(GAS)) {
            found.forbid(!armed, "the gas is switched on outside an opening");
        } else if (step.writes(POWER) && step.laserOn() && !armed) {
            found.forbid(
                event.value > std::max(0, power),
                QString("a closing raises the laser power from %1 to %2").arg(power).arg(event.value));
        } else if (step.switchesOn(LASER)) {
            found.forbid(!armed, "the laser is enabled outside a permitted opening");
            found.forbid(armed && !event[Permitted], "the laser is enabled though welding is not permitted");
        } else if (step.writes(LASER)) {
            found.forbid(!armed && step.laserOn() && power > 0,
                         QString("a closing disables the laser at power %1, not 0").arg(power));
            deadline = -1;
        }
    }
}

}  // namespace campaign
