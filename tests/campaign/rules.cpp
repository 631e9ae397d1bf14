// Checks the events of a schedule against the safety rules.

#include "campaign/campaign.h"

#include <algorithm>
#include <array>
#include <optional>

namespace campaign {

namespace {

/// A walk or single step, seen from the executor's depth.
struct Run {
    Event asked;             ///< the Start or Once that caused it; other kinds are not runs
    bool disturbed = false;  ///< by a pause, a motion error or a loss of power
};

/// An event with the state before it.
struct Step : Event {
    std::array<int, portCount> outputs{};  ///< the executor's last writes
    bool inPower = false;                  ///< a loss of power is on the stack, or the application quits
    bool asking = false;                   ///< the innermost action is a start, not yet accepted or returned
    std::optional<Run> current{};          ///< the innermost run on the stack
    std::optional<Run> begun{}, ended{};   ///< the run that begins or ends with this event
    std::optional<Event> refused{};        ///< the start that was refused with this event

    [[nodiscard]] bool laserOn() const { return outputs[LASER] != 0; }
    [[nodiscard]] bool isPowerLoss() const { return kind == Power && value == 0; }
    [[nodiscard]] bool writes(int which) const { return kind == Write && port == which; }
    [[nodiscard]] bool switchesOn(int which) const { return writes(which) && value != 0; }
    [[nodiscard]] bool commands(const char* which) const { return kind == Command && text == which; }
    /// Equipment that is on, by name.
    [[nodiscard]] QString on() const {
        QString names;
        for (const Port which : {GAS, WIRE, PULLBACK, LASER, POWER, FREQUENCY, DUTY_CYCLE}) {
            names += outputs[which] > 0 ? ' ' + nameOf(which) : QString();
        }
        return names;
    }
};

using Steps = std::vector<Step>;

struct Findings {
    std::multimap<std::size_t, QString> all;
    std::size_t at = 0;  ///< index of the event being checked

    void forbid(bool happens, const QString& words) {
        if (happens) {
            all.emplace(at, words);
        }
    }
};

/// Calls a rule for each event.
template <typename Rule>
void each(const Steps& steps, Findings& found, Rule rule) {
    for (found.at = 0; found.at < steps.size(); ++found.at) {
        rule(steps[found.at]);
    }
}

/// After a loss of power during any activity everything is off at once, and stays off until the next start,
/// step or pause.
void checkStops(const Steps& steps, Findings& found) {
    bool stopped = false;
    int losing = 0;  // action number of the loss of power on the stack, 0 for none
    each(steps, found, [&](const Step& step) {
        // A pause inside the loss of power belongs to it.
        if ((step.kind == Pause && losing == 0) || step.begun) {
            stopped = false;
        }
        // When idle, with nothing on and nothing pending, a loss of power requires nothing.
        if (step.isPowerLoss() && (!step.idle || step.pending > 0 || !step.on().isEmpty())) {
            stopped = true;
            losing = losing == 0 ? step.action : losing;  // a nested one belongs to the outer one
        }
        const bool returns = step.kind == Done && step.action == losing;
        losing = returns ? 0 : losing;
        if (stopped) {
            const bool raises = step.kind == Write && step.value > std::max(0, step.outputs[step.port]);
            const bool moves = step.kind == Command && step.text != "move.stop";
            found.forbid(returns && !step.on().isEmpty(), "the loss of power has left on:" + step.on());
            found.forbid(raises, step.text + " is raised after a loss of power");
            found.forbid(moves || step.kind == Output, step.text + " is commanded after a loss of power");
        }
    });
}

/// Only one run at a time. A refused start shows a message and changes nothing else. A run that reached its
/// end leaves no weld open.
void checkStarts(const Steps& steps, Findings& found) {
    const auto isPossible = [](const Event& asked) {
        const bool lineExists = asked.value >= 0 && asked.value < asked.lineCount;
        return asked.idle && asked.depth == 0 && asked.powered && asked.robotIdle && lineExists;
    };
    bool quits = false;
    each(steps, found, [&](const Step& step) {
        quits |= step.kind == Quit;
        found.forbid(step.begun && !isPossible(step.begun->asked),
                     "a run was accepted in another run, without power, of a moving robot or of no line");
        if (step.ended) {
            found.forbid(!step.idle, "a run is over, but the state is not idle");
            found.forbid(!step.ended->disturbed && step.ended->asked.kind == Start && step.weldOpen,
                         "a run has come to its end and leaves the weld open");
        }
        if (step.refused && !quits) {  // while the application quits, a start has no message
            found.forbid(step.boxes == 0, "a start was refused without a message");
            found.forbid(isPossible(*step.refused) && !step.refused->mayBeRefused,
                         "a start was refused for no reason");
        }
        found.forbid(step.asking && step.kind >= State && step.kind <= Command,
                     "a start that was not accepted caused a " + nameOf(step.kind));
    });
}

/// The program is never ahead of the robot: the statement after a move begins when the move's result was
/// written or the tool is in its zone. Nothing follows a failed move.
void checkWalk(const Steps& steps, Findings& found) {
    int results = 0;         // since the last reset
    bool failed = false;     // one of the results was an error
    int walked = 0;          // moves begun since the last reset
    int unanswered = 0;      // moves among them that have no result
    bool begun = false;      // a statement has begun since the last reset
    bool afterMove = false;  // the previous statement was a move
    bool inZone = false;     // the tool has entered that move's zone
    each(steps, found, [&](const Step& step) {
        if (step.commands("move.reset")) {
            results = walked = unanswered = 0;
            failed = afterMove = begun = false;
        } else if (step.commands("move.l") && !begun) {
            --unanswered;  // the move back to where a weld stopped belongs to no statement
        } else if (step.kind == Result) {
            ++results;
            failed |= step.value < 0;
        } else if (step.kind == Zone) {
            inZone = true;
        } else if (step.kind == Statement) {
            // A resumed arc of which nothing is left queues no motion.
            unanswered += !begun && step.text.startsWith("moveC") ? 1 : 0;
            found.forbid(afterMove && !inZone && results < walked - unanswered,
                         "the walk is ahead of the robot");
            found.forbid(failed, "the walk goes on after a motion error");
            begun = true;
            inZone = false;
            afterMove = QStringList{"moveJ", "moveL", "moveC", "moveCC"}.contains(step.text);
            walked += afterMove ? 1 : 0;
        }
    });
}

/// A pause stops the robot. Every queued motion is awaited, or the log says that its result is ignored
/// because the wait had ended in the zone.
void checkMotions(const Steps& steps, Findings& found) {
    int outstanding = 0;   // queued motions without a result
    int stopDue = 0;       // action number of the pause that has to stop the robot, 0 for none
    int zones = 0;         // motions whose wait ended in the zone since the last reset
    bool belongs = false;  // the last result belonged to a queued motion
    each(steps, found, [&](const Step& step) {
        if (step.commands("move.reset") || step.commands("move.stop")) {
            outstanding = zones = 0;
            stopDue = step.text == "move.stop" ? 0 : stopDue;
        } else if (step.kind == Command) {
            outstanding += step.text == "move.opr.enough" ? 0 : 1;
        } else if (step.kind == Result) {
            belongs = outstanding > 0;
            // After an error the robot drops the other motions.
            outstanding = step.value < 0 ? 0 : std::max(0, outstanding - 1);
        } else if (step.kind == Pause && !step.inPower && (outstanding > 0 || !step.robotIdle)) {
            stopDue = step.action;
        } else if (step.kind == Done && stopDue != 0 && step.action == stopDue) {
            found.forbid(true, "a pause did not stop the robot");
            stopDue = 0;
        } else if (step.kind == Zone) {
            ++zones;
        } else if (step.kind == Dropped) {
            const bool unexpected = step.text.startsWith("unexpected");
            found.forbid(unexpected ? belongs : zones == 0,
                         "the result of a motion was passed over: " + step.text);
        }
        found.forbid(step.ended && !step.ended->disturbed && outstanding > zones,
                     "a run has come to its end with motions that were not awaited");
    });
}

/// If the gas port is used, gas flows before the laser comes on, and after it has gone off until the end of
/// the post-flow. The post-flow of a pause counts from the pause, but ends not before the laser is off.
void checkGas(const Steps& steps, Findings& found) {
    bool closing = false;    // a closing has begun since the gas came on
    qint64 pausedMs = -1;    // the last pause since the gas came on
    qint64 failedMs = -1;    // the last motion error since the gas came on
    qint64 laserOffMs = -1;  // when the laser was on last
    int postFlowMs = 0;      // shortest post-flow since the closing began
    each(steps, found, [&](const Step& step) {
        postFlowMs = step.laserOn() && !closing ? step.postFlowMs : std::min(postFlowMs, step.postFlowMs);
        laserOffMs = step.laserOn() ? step.ms : laserOffMs;
        // The pull-back port may be disabled.
        closing |= step.switchesOn(PULLBACK) || (step.kind == Permission && !step.permitted);
        if (step.kind == Result && step.value < 0) {
            failedMs = step.ms;  // after the zone it stops the run inside another wait, as a pause does
        } else if (step.kind == Pause) {
            pausedMs = step.ms;
            postFlowMs = step.postFlowMs;
        } else if (step.switchesOn(GAS)) {
            closing = false;
            pausedMs = failedMs = laserOffMs = -1;
        } else if (step.writes(GAS) && step.outputs[GAS] != 0) {
            const qint64 from = pausedMs < 0 ? laserOffMs : pausedMs;
            const bool mayStop = step.inPower || (failedMs >= 0 && step.ms >= failedMs + postFlowMs);
            const QString words =
                "the gas goes off %1 ms after the laser or the pause, its post-flow is %2 ms";
            found.forbid(!mayStop && from >= 0 && step.ms < from + postFlowMs,
                         words.arg(step.ms - from).arg(postFlowMs));
        } else if (step.switchesOn(LASER)) {
            found.forbid(step.gasUsed && step.outputs[GAS] == 0, "the laser is enabled without gas");
        }
    });
}

/// A run executes its lines once, in order, from the requested line to the last. A pause keeps the
/// interrupted line for the resume.
void checkLines(const Steps& steps, Findings& found) {
    int line = -1;  // the last line of the current run, -1 for none
    int pause = 0;  // action number of the pause that has to keep it, 0 for none
    each(steps, found, [&](const Step& step) {
        // Replacing the program resets the resume data.
        line = step.begun ? -1 : line;
        pause = step.begun || step.kind == Replace ? 0 : pause;
        const bool walks = step.current && step.current->asked.kind == Start;
        if (step.kind == Line && walks) {
            const Event& asked = step.current->asked;
            const bool comesNext = step.value > line && step.value >= asked.value;
            const QString words = "a run comes to line %1 after line %2, its program has %3";
            found.forbid(!comesNext || step.value >= asked.lineCount,
                         words.arg(step.value).arg(line).arg(asked.lineCount));
            line = step.value;
        } else if (step.kind == Pause && walks && line >= 0) {
            pause = step.action;
        } else if (step.kind == Done && step.action == pause) {
            pause = 0;
            found.forbid(step.resumeLine != line, QString("a pause leaves another line than %1").arg(line));
        }
    });
}

/// The laser is on only from a permitted opening to the end of its closing. A closing takes as long as its
/// ramp, ends at power 0 and never raises the power. A weld is never continued elsewhere.
void checkLaser(const Steps& steps, Findings& found) {
    bool announced = false;    // an opening may begin now
    bool armed = false;        // an opening has begun with permission and has not ended
    bool quits = false;        // the application quits
    bool closes = false;       // a close statement is being carried out
    qint64 closingSince = -1;  // when the weld began to end, -1 for not yet
    qint64 deadline = -1;      // when the laser has to be off, -1 for not known
    int weldMode = -1;         // run mode of the last weld left open, -1 for none

    each(steps, found, [&](const Step& step) {
        /// The laser has to be off in `ms`, or at an earlier deadline.
        const auto closeWithin = [&](int ms) {
            deadline = step.laserOn() && (deadline < 0 || step.ms + ms < deadline) ? step.ms + ms : deadline;
        };
        const auto beginOpening = [&] {
            announced = false;
            armed = step.permitted;
            closingSince = deadline = -1;
            found.forbid(!armed, "an opening goes on though welding is not permitted");
        };
        /// The weld begins to end.
        const auto close = [&] {
            closingSince = closingSince < 0 ? step.ms : closingSince;
            announced = armed = false;
        };

        if (step.laserOn() && deadline >= 0 && step.ms > deadline) {
            found.forbid(true, QString("the laser is enabled, but had to be off by %1 ms").arg(deadline));
            deadline = -1;
        }
        if (step.begun) {
            // Only a start by hand may continue a weld, in the same program, if it was left open by hand.
            const Event& asked = step.begun->asked;
            announced = asked.kind == Start && asked.weldOpen && asked.mode == 0 && weldMode == 0;
        } else if (step.kind == WeldFlag && step.value != 0 && step.current) {
            weldMode = step.current->asked.mode;
        } else if (step.kind == Activity && step.depth == 0) {
            announced = armed = false;
        }

        // An undisturbed close statement closes the weld, so that no start reopens it.
        if (step.kind == Statement || step.ended) {
            found.forbid(closes && step.weldOpen, "the weld counts as open behind its close statement");
            closes = step.kind == Statement && step.text == "close" && step.permitted;
        } else if (step.kind == Pause || step.kind == Power || step.kind == Permission) {
            closes = false;
        }

        if (step.kind == Statement) {
            announced = step.text == "open";
            if (closes) {
                closeWithin(step.decreaseMs + 1);
            }
        } else if (step.kind == Param && announced) {
            beginOpening();
        } else if (step.kind == Permission && !step.permitted && (armed || step.laserOn())) {
            closeWithin(step.decreaseMs + 1);
            closingSince = closingSince < 0 ? step.ms : closingSince;
            armed = false;
        } else if (step.kind == Quit || step.isPowerLoss()) {
            quits |= step.kind == Quit;
            close();
            closeWithin(0);
        } else if (step.kind == Pause) {
            // A pause ends a closing in progress at once.
            closeWithin(closingSince >= 0 && step.ms > closingSince ? 0 : step.decreaseMs + 1);
            close();
        } else if ((step.kind == Activity && step.text == "rampdown") || step.switchesOn(PULLBACK)) {
            close();
        } else if (step.kind == Replace) {
            weldMode = -1;
        }

        if (step.kind != Write || quits) {
            return;  // writes due while the application quits are undone in the same pass
        }
        if (announced && (step.switchesOn(GAS) || step.switchesOn(LASER))) {
            beginOpening();
        }
        if (step.switchesOn(GAS)) {
            found.forbid(!armed, "the gas is switched on outside an opening");
        } else if (step.switchesOn(LASER)) {
            found.forbid(!armed || !step.permitted, "the laser is enabled outside a permitted opening");
        } else if (step.laserOn() && !armed) {
            const int power = std::max(0, step.outputs[POWER]);
            found.forbid(step.port == POWER && step.value > power, "a closing raises the laser power");
            found.forbid(step.port == LASER && power > 0, "a closing disables the laser at a power above 0");
        }
        deadline = step.writes(LASER) && step.value == 0 ? -1 : deadline;
    });
}

/// Nothing is on when the executor is at rest, and it is at rest in the end. Every complaint is a finding.
void checkRest(const Steps& steps, Findings& found) {
    each(steps, found, [&](const Step& step) {
        // A shutdown emits activityChanged() for its dropped steps before it switches off.
        const bool says = (step.kind == Done || step.kind == Activity) && !step.inPower;
        const bool rests = step.idle && step.depth == 0 && step.pending == 0;
        found.forbid((says || step.kind == End) && rests && !step.on().isEmpty(),
                     "the executor rests with something on:" + step.on());
        found.forbid(step.kind == End && !rests, "at the end the executor does not rest");
        found.forbid(step.kind == Complaint, step.text);
    });
}

/// Adds to each event which actions, walks, steps and pauses are on the stack.
Steps stepsOf(const std::vector<Event>& events) {
    struct OpenAction {
        Event event;
        bool counted;  // it has increased the depth
    };
    std::vector<OpenAction> openActions;
    std::vector<Run> depthUnits;  // one for each level of the depth
    const auto isRun = [](const Run& unit) { return unit.asked.kind <= Once; };
    const auto isLoss = [](const OpenAction& action) {
        return action.event.kind == Power && action.event.value == 0;
    };
    bool quits = false;
    Steps steps;
    for (const Event& event : events) {
        Step step{event};
        if (!steps.empty()) {
            step.outputs = steps.back().outputs;
            if (steps.back().kind == Write) {
                step.outputs[steps.back().port] = steps.back().value;
            }
        }
        if (event.kind == Done) {  // of the innermost action
            if (openActions.back().event.kind <= Once && !openActions.back().counted) {
                step.refused = openActions.back().event;
            }
            openActions.pop_back();
        } else if (event.kind <= Act) {
            openActions.push_back({event, false});
        }
        bool disturbs = event.kind == Pause || event.kind == Quit || step.isPowerLoss();
        // A run or pause caused by the innermost action, or the pause of a run after a motion error.
        while (event.kind == Activity && int(depthUnits.size()) < event.depth) {
            const bool answers = !openActions.empty() && !std::exchange(openActions.back().counted, true);
            depthUnits.push_back({answers ? openActions.back().event : Event{Pause}});
            if (isRun(depthUnits.back())) {
                step.begun = depthUnits.back();
            } else {
                disturbs = true;
            }
        }
        while (event.kind == Activity && int(depthUnits.size()) > event.depth) {
            if (isRun(depthUnits.back())) {
                step.ended = depthUnits.back();
            }
            depthUnits.pop_back();
        }
        for (Run& unit : depthUnits) {
            unit.disturbed |= disturbs;
            step.current = isRun(unit) ? unit : step.current;
        }
        quits |= event.kind == Quit;
        step.inPower = quits || std::any_of(openActions.begin(), openActions.end(), isLoss);
        step.asking =
            !openActions.empty() && !openActions.back().counted && openActions.back().event.kind <= Once;
        steps.push_back(step);
    }
    return steps;
}

}  // namespace

std::multimap<std::size_t, QString> check(const std::vector<Event>& events) {
    const Steps steps = stepsOf(events);
    Findings found;
    for (const auto rule :
         {checkStops, checkStarts, checkWalk, checkMotions, checkGas, checkLines, checkLaser, checkRest}) {
        rule(steps, found);
    }
    return found.all;
}

}  // namespace campaign
