// What stops, stays off and comes to rest.

#include "program/words.h"
#include "workcell/safety/rulebook.h"

#include <algorithm>
#include <array>

namespace workcell::safety {

/// After a loss of power during any activity everything is off at once, and stays off until the next start,
/// step or pause.
void powerLossShutsDown(const Steps& steps, Findings& found) {
    bool stopped = false;
    int losing = 0;  // action number of the loss of power that has not returned, 0 for none
    each(steps, found, [&](const Step& step) {
        // A pause inside the loss of power belongs to it.
        if ((step.kind == Kind::Pause && losing == 0) || step.begun) {
            stopped = false;
        }
        // When idle, with nothing on and nothing pending, a loss of power requires nothing.
        if (step.isPowerLoss() && (!step.idle || step.pending > 0 || !step.on().isEmpty())) {
            stopped = true;
            losing = losing == 0 ? step.action : losing;  // a nested one belongs to the outer one
        }
        const bool returns = step.kind == Kind::Done && step.action == losing;
        losing = returns ? 0 : losing;
        if (stopped) {
            const bool raises =
                step.kind == Kind::Write && step.value > std::max(0, step.outputs[std::size_t(step.port)]);
            const bool moves = step.kind == Kind::Command && step.text != prog::command::stop;
            found.forbid(returns && !step.on().isEmpty(),
                         QStringLiteral("the loss of power has left on:") + step.on());
            found.forbid(raises, step.text + QStringLiteral(" is raised after a loss of power"));
            found.forbid(moves || step.kind == Kind::Output,
                         step.text + QStringLiteral(" is commanded after a loss of power"));
        }
    });
}

/// A pause stops a robot that moves, or that has motions without a result.
void pauseStopsMotions(const Steps& steps, Findings& found) {
    int outstanding = 0;  // queued motions without a result
    int stopDue = 0;      // action number of the pause that has to stop the robot, 0 for none
    each(steps, found, [&](const Step& step) {
        if (step.commands(prog::command::reset) || step.commands(prog::command::stop)) {
            outstanding = 0;
            stopDue = step.text == prog::command::stop ? 0 : stopDue;
        } else if (step.kind == Kind::Command) {
            outstanding += step.text == prog::command::enough ? 0 : 1;
        } else if (step.kind == Kind::Result) {
            // After an error the robot drops the other motions.
            outstanding = step.value < 0 ? 0 : std::max(0, outstanding - 1);
        } else if (step.kind == Kind::Pause && !step.inPower && (outstanding > 0 || !step.robotIdle)) {
            stopDue = step.action;
        } else if (step.kind == Kind::Done && stopDue != 0 && step.action == stopDue) {
            found.forbid(true, "a pause did not stop the robot");
            stopDue = 0;
        }
    });
}

/// Nothing is on when the executor is at rest, and it is at rest in the end.
void nothingIsLeftOn(const Steps& steps, Findings& found) {
    each(steps, found, [&](const Step& step) {
        // A shutdown tells of its dropped steps before it switches off.
        const bool says = (step.kind == Kind::Done || step.kind == Kind::Wait) && !step.inPower;
        const bool ends = step.kind == Kind::End;
        found.forbid((says || ends) && step.rests() && !step.on().isEmpty(),
                     QStringLiteral("the executor rests with something on:") + step.on());
        found.forbid(ends && !step.rests(), "at the end the executor does not rest");
    });
}

/// What a page had switched on when a run began is off before the run commands its first motion or begins its
/// first line.
void handLitGoesOff(const Steps& steps, Findings& found) {
    std::array<bool, prog::portCount> wasOn{};
    each(steps, found, [&](const Step& step) {
        for (const prog::Device& device : prog::devices) {
            wasOn[device.output] |= step.begun && step.byHand[device.output] != 0;
        }
        if (step.kind == Kind::ByHand || (step.kind == Kind::Write && step.value == 0)) {
            wasOn[std::size_t(step.port)] = false;
        }
        const bool moves = step.kind == Kind::Command && step.text.startsWith(QLatin1String("move.")) &&
                           step.text != prog::command::stop && step.text != prog::command::reset;
        if (!step.current || (!moves && step.kind != Kind::Statement)) {
            return;
        }
        for (const prog::Device& device : prog::devices) {
            found.forbid(wasOn[device.output], QStringLiteral("a run moves with %1 on, switched on by hand")
                                                   .arg(prog::portInfo(device.output).word));
        }
    });
}

/// What a page switches off during a weld stays off until the next opening.
void handSwitchedStaysOff(const Steps& steps, Findings& found) {
    bool laserOff = false;
    bool wireOff = false;
    each(steps, found, [&](const Step& step) {
        const bool switchesOff = step.kind == Kind::ByHand && step.value == 0;
        if (step.begun || (step.kind == Kind::Statement && step.text == prog::statement::open)) {
            laserOff = wireOff = false;
        }
        laserOff |= switchesOff && step.port == DO_LASER_ENABLE && step.current && step.laserOn();
        wireOff |= switchesOff && step.port == DO_WIRE_ENABLE && step.current && step.isOn(DO_WIRE_ENABLE);
        found.forbid(
            (laserOff && step.switchesOn(DO_LASER_ENABLE)) || (wireOff && step.switchesOn(DO_WIRE_ENABLE)),
            step.text + QStringLiteral(" is switched on again after a hand switched it off"));
    });
}

/// Qt reports no misuse, and nothing remains that the course has to name.
void nothingComplains(const Steps& steps, Findings& found) {
    each(steps, found, [&](const Step& step) { found.forbid(step.kind == Kind::Complaint, step.text); });
}

}  // namespace workcell::safety
