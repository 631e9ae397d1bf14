// When laser and gas may be on.

#include "program/words.h"
#include "workcell/safety/rulebook.h"

#include <algorithm>
#include <iterator>

namespace workcell::safety {

namespace {

/// An opening of the laser and its closing, as the events show them.
class Weld {
public:
    /// Takes the next event in, but for what the executor writes with it; see take().
    void follow(const Step& step);
    /// Takes in what the executor writes.
    void take(const Step& step);

    bool armed = false;         ///< an opening has begun with permission and has not ended
    bool opensUnarmed = false;  ///< an opening has begun with this event without permission
    qint64 deadlineMs = -1;     ///< when the laser has to be off, -1 for not known
    bool quits = false;         ///< the application quits
    bool closes = false;        ///< a close statement is being carried out

private:
    void closeWithin(const Step& step, int ms);
    void beginOpening(const Step& step);
    void close(const Step& step);
    void onRun(const Step& step);
    void onClose(const Step& step);
    void onStop(const Step& step);

    bool announced_ = false;      ///< an opening may begin now
    qint64 closingSinceMs_ = -1;  ///< when the weld began to end, -1 for not yet
    int openMode_ = -1;           ///< run mode of the last weld left open, -1 for none
};

/// The laser has to be off in `ms`, or at an earlier deadline.
void Weld::closeWithin(const Step& step, int ms) {
    if (step.laserOn() && (deadlineMs < 0 || step.ms + ms < deadlineMs)) {
        deadlineMs = step.ms + ms;
    }
}

void Weld::beginOpening(const Step& step) {
    announced_ = false;
    armed = step.permitted;
    opensUnarmed = !armed;
    closingSinceMs_ = deadlineMs = -1;
}

/// The weld begins to end.
void Weld::close(const Step& step) {
    closingSinceMs_ = closingSinceMs_ < 0 ? step.ms : closingSinceMs_;
    announced_ = armed = false;
}

/// Only a start by hand may continue a weld, in the same program, if it was left open by hand.
void Weld::onRun(const Step& step) {
    if (step.begun) {
        const Event& asked = step.begun->asked;
        announced_ = asked.kind == Kind::Start && asked.weldOpen && asked.mode == prog::runmode::byHand &&
                     openMode_ == prog::runmode::byHand;
    } else if (step.kind == Kind::WeldFlag && step.value != 0 && step.current) {
        openMode_ = step.current->asked.mode;
    } else if (step.kind == Kind::Wait && step.depth == 0) {
        announced_ = armed = false;
    }
}

void Weld::onClose(const Step& step) {
    if (step.kind == Kind::Statement || step.ended) {
        closes = step.kind == Kind::Statement && step.text == prog::statement::close && step.permitted;
    } else if (step.kind == Kind::Pause || step.kind == Kind::Power || step.kind == Kind::Permission) {
        closes = false;
    }
}

void Weld::onStop(const Step& step) {
    if (step.kind == Kind::Permission && !step.permitted && (armed || step.laserOn())) {
        closeWithin(step, step.decreaseMs + 1);
        closingSinceMs_ = closingSinceMs_ < 0 ? step.ms : closingSinceMs_;
        armed = false;
    } else if (step.kind == Kind::Quit || step.isPowerLoss()) {
        quits |= step.kind == Kind::Quit;
        close(step);
        closeWithin(step, 0);
    } else if (step.kind == Kind::Pause) {
        // A pause ends a closing in progress at once.
        closeWithin(step, closingSinceMs_ >= 0 && step.ms > closingSinceMs_ ? 0 : step.decreaseMs + 1);
        close(step);
    } else if ((step.kind == Kind::Wait && step.text == prog::waits::rampDown) ||
               step.switchesOn(DO_WIRE_PULLBACK)) {
        close(step);
    } else if (step.kind == Kind::Replace) {
        openMode_ = -1;
    }
}

void Weld::follow(const Step& step) {
    opensUnarmed = false;
    onRun(step);
    onClose(step);
    if (step.kind == Kind::Statement) {
        announced_ = step.text == prog::statement::open;
        if (closes) {
            closeWithin(step, step.decreaseMs + 1);
        }
    } else if (step.kind == Kind::Set && announced_) {
        beginOpening(step);
    } else {
        onStop(step);
    }
    const bool lights = step.switchesOn(DO_GAS) || step.switchesOn(DO_LASER_ENABLE);
    if (announced_ && lights && !quits) {
        beginOpening(step);
    }
}

void Weld::take(const Step& step) {
    if (step.writes(DO_LASER_ENABLE) && step.value == 0 && !quits) {
        deadlineMs = -1;
    }
}

/// Calls a part of a rule for each event with the weld at that moment.
template <typename Part>
void eachInWeld(const Steps& steps, Findings& found, Part part) {
    Weld weld;
    each(steps, found, [&](const Step& step) {
        weld.follow(step);
        part(step, weld);
        weld.take(step);
    });
}

}  // namespace

/// If the gas port is used and no hand switches the gas off, gas flows before the laser comes on, and after
/// it has gone off until the end of the post-flow. The post-flow of a pause counts from the pause, but ends
/// not before the laser is off.
void gasOutlastsTheLaser(const Steps& steps, Findings& found) {
    bool handOff = false;    // a hand has switched the gas off since it came on
    bool closing = false;    // a closing has begun since the gas came on
    qint64 pausedMs = -1;    // the last pause since the gas came on
    qint64 failedMs = -1;    // the last motion error since the gas came on
    qint64 laserOffMs = -1;  // when the laser was on last
    int postFlowMs = 0;      // shortest post-flow since the closing began
    each(steps, found, [&](const Step& step) {
        postFlowMs = step.laserOn() && !closing ? step.postFlowMs : std::min(postFlowMs, step.postFlowMs);
        laserOffMs = step.laserOn() ? step.ms : laserOffMs;
        // The pull-back port may be out of use.
        closing |= step.switchesOn(DO_WIRE_PULLBACK) || (step.kind == Kind::Permission && !step.permitted);
        handOff |= step.kind == Kind::ByHand && step.port == DO_GAS && step.value == 0;
        if (step.kind == Kind::Result && step.value < 0) {
            failedMs = step.ms;  // after the zone it stops the run inside another wait, as a pause does
        } else if (step.kind == Kind::Pause) {
            pausedMs = step.ms;
            postFlowMs = step.postFlowMs;
        } else if (step.switchesOn(DO_GAS)) {
            closing = handOff = false;
            pausedMs = failedMs = laserOffMs = -1;
        } else if (step.writes(DO_GAS) && step.isOn(DO_GAS)) {
            const qint64 from = pausedMs < 0 ? laserOffMs : pausedMs;
            const bool mayStop = step.inPower || (failedMs >= 0 && step.ms >= failedMs + postFlowMs);
            found.forbid(
                !mayStop && from >= 0 && step.ms < from + postFlowMs,
                QStringLiteral("the gas goes off %1 ms after the laser or the pause, its post-flow is %2 ms")
                    .arg(step.ms - from)
                    .arg(postFlowMs));
        } else if (step.switchesOn(DO_LASER_ENABLE)) {
            found.forbid(step.gasUsed && !step.isOn(DO_GAS) && !handOff, "the laser is enabled without gas");
        }
    });
}

/// Gas and laser come on only in a permitted opening: not behind a pause, without permission, or elsewhere
/// than where the weld was left open. Writes due while the application quits are undone in the same pass.
void laserOnlyInAnOpening(const Steps& steps, Findings& found) {
    eachInWeld(steps, found, [&](const Step& step, const Weld& weld) {
        found.forbid(weld.opensUnarmed, "an opening goes on though welding is not permitted");
        if (weld.quits) {
            return;
        }
        found.forbid(step.switchesOn(DO_GAS) && !weld.armed, "the gas is switched on outside an opening");
        found.forbid(step.switchesOn(DO_LASER_ENABLE) && (!weld.armed || !step.permitted),
                     "the laser is enabled outside a permitted opening");
    });
}

/// A closing never raises the power, and disables the laser only when the power is 0.
void closingNeverRaisesThePower(const Steps& steps, Findings& found) {
    eachInWeld(steps, found, [&](const Step& step, const Weld& weld) {
        const bool lights = step.switchesOn(DO_GAS) || step.switchesOn(DO_LASER_ENABLE);
        if (step.kind != Kind::Write || weld.quits || lights || !step.laserOn() || weld.armed) {
            return;
        }
        const int power = std::max(0, step.outputs[AO_LASER_POWER]);
        found.forbid(step.port == AO_LASER_POWER && step.value > power, "a closing raises the laser power");
        found.forbid(step.port == DO_LASER_ENABLE && power > 0,
                     "a closing disables the laser at a power above 0");
    });
}

/// After a stop, a close statement or the loss of the permission the laser goes off within the ramp, after a
/// loss of power at once.
void laserGoesOffInTime(const Steps& steps, Findings& found) {
    qint64 told = -1;  // the deadline that was told last
    qint64 due = -1;   // the deadline before this event
    eachInWeld(steps, found, [&](const Step& step, const Weld& weld) {
        const bool late = step.laserOn() && due >= 0 && step.ms > due && due != told;
        found.forbid(late, QStringLiteral("the laser is enabled, but had to be off by %1 ms").arg(due));
        told = late ? due : told;
        due = step.writes(DO_LASER_ENABLE) && step.value == 0 ? -1 : weld.deadlineMs;
    });
}

/// In a dry run nothing of a weld is switched on, by nobody. Its pilot light goes off with it.
void dryRunStaysDark(const Steps& steps, Findings& found) {
    each(steps, found, [&](const Step& step) {
        const bool isWrite = step.kind == Kind::Write || step.kind == Kind::ByHand;
        const auto* const row =
            std::find_if(std::begin(prog::shutdownOrder), std::end(prog::shutdownOrder),
                         [&step](const prog::ShutdownOutput& output) { return output.output == step.port; });
        const bool isOfWeld = row != std::end(prog::shutdownOrder) && row->output != DO_RED_LIGHT;
        found.forbid(step.dry && isWrite && step.value != 0 && isOfWeld,
                     QStringLiteral("a dry run switches %1 on").arg(step.text));
        found.forbid(step.ended && step.isOn(DO_RED_LIGHT) && !step.byHand[DO_RED_LIGHT],
                     "a dry run is over, but its pilot light is on");
    });
}

/// An undisturbed close statement closes the weld, so that no start reopens it.
void weldEndsAtItsClose(const Steps& steps, Findings& found) {
    bool closed = false;  // a close statement was being carried out before this event
    eachInWeld(steps, found, [&](const Step& step, const Weld& weld) {
        found.forbid((step.kind == Kind::Statement || step.ended) && closed && step.weldOpen,
                     "the weld counts as open behind its close statement");
        closed = weld.closes;
    });
}

}  // namespace workcell::safety
