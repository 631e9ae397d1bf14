#include "campaign/rules.h"

#include <algorithm>

namespace campaign {

namespace {

using Steps = std::vector<Step>;

/// Asks of each event in turn.
template <typename Rule>
void each(const Steps& steps, Findings& found, Rule rule) {
    for (found.at = 0; found.at < steps.size(); ++found.at) {
        rule(steps[found.at], steps[found.at].event);
    }
}

/// After a loss of power that finds something under way everything is off at once, and stays off until
/// the next start, step or pause.
void checkStops(const Steps& steps, Findings& found) {
    bool stopped = false;
    int action = 0;  // the loss of power that is on the stack, 0: none
    each(steps, found, [&](const Step& step, const Event& event) {
        // A pause that comes inside the stop itself is a part of it.
        if ((event.kind == Pause && action == 0) || step.begun) {
            stopped = false;
        }
        // Idle, with nothing on and nothing to come, a loss of power asks for nothing.
        if (step.isPowerLoss() && (!event[Idle] || event[Pending] > 0 || !step.on().isEmpty())) {
            stopped = true;
            action = action == 0 ? event.action : action;  // one inside another is a part of that
        }
        const bool returns = event.kind == Done && event.action == action;
        action = returns ? 0 : action;
        if (stopped) {
            found.forbid(returns && !step.on().isEmpty(), "the loss of power has left on: " + step.on());
            found.forbid(event.kind == Write && event.value > std::max(0, step.outputs[event.port]),
                         event.text + " is raised after a loss of power");
            found.forbid(event.kind == Output, "a statement sets an output after a loss of power");
            found.forbid(event.kind == Command && event.text != "move.stop",
                         event.text + " is commanded after a loss of power");
        }
    });
}

/// Nothing is on when the executor says that it rests.
void checkRest(const Steps& steps, Findings& found) {
    each(steps, found, [&](const Step& step, const Event& event) {
        // A shutdown tells of its dropped steps before it switches off.
        const bool says = (event.kind == Done || event.kind == Activity) && !step.inPower;
        if (says && event[Idle] && event[Depth] == 0 && event[Pending] == 0) {
            found.forbid(!step.on().isEmpty(), "the executor rests with something on: " + step.on());
            found.forbid(step.emitting, "the executor rests while the laser source emits");
        }
    });
}

/// One run at a time; a start that is refused says so and changes nothing else; a run that came to its
/// end leaves no weld open.
void checkStarts(const Steps& steps, Findings& found) {
    const auto isPossible = [](const Event& asked) {
        return asked[Powered] && asked[RobotIdle] && asked[LineExists];
    };
    bool quits = false;
    each(steps, found, [&](const Step& step, const Event& event) {
        quits |= event.kind == Quit;
        if (step.begun) {
            const Event& asked = step.begun->asked;
            found.forbid(step.runs > 1, "a run was accepted while another one is on the stack");
            found.forbid(!asked[Idle] || asked[Depth] > 0,
                         "a run was accepted while the executor was not idle");
            found.forbid(!isPossible(asked),
                         "a run was accepted without power, of a moving robot or of no line");
        }
        if (step.ended) {
            found.forbid(!event[Idle], "a run is over, but the state is not idle");
            found.forbid(!step.ended->disturbed && step.ended->asked.kind == Start && event[WeldOpen],
                         "a run has come to its end and leaves the weld open");
        }
        if (step.refused && !quits) {  // while the application ends its loops a start is passed over
            const Event& asked = *step.refused;
            found.forbid(event[Boxes] == 0, "a start was refused without a message");
            found.forbid(asked[Idle] && asked[Depth] == 0 && isPossible(asked) && !asked[MayBeRefused],
                         "a start was refused for no reason");
        }
        found.forbid(step.asking && event.kind >= State && event.kind <= Command,
                     "a start that was not accepted caused a " + nameOf(event.kind));
    });
}

/// The walk is never ahead of the robot: what follows a move begins when its result has come or the
/// tool is in its zone, and nothing follows a move that failed.
void checkWalk(const Steps& steps, Findings& found) {
    std::vector<int> results;   // since the last reset
    int walked = 0;             // moves begun since then
    int unanswered = 0;         // of these without a result of their own
    bool begun = false;         // a statement has begun since then
    bool afterMove = false;     // the statement before was a move
    bool inZone = false;        // the tool has entered that move's zone
    bool falseResults = false;  // results can no longer be told apart
    each(steps, found, [&](const Step&, const Event& event) {
        falseResults |= event.kind == Quirk;
        if (event.kind == Command && event.text == "move.reset") {
            results.clear();
            walked = unanswered = 0;
            afterMove = begun = false;
        } else if (event.kind == Command && event.text == "move.l" && !begun) {
            --unanswered;  // the way back to where a weld stopped is no statement's
        } else if (event.kind == Result) {
            results.push_back(event.value);
        } else if (event.kind == Zone) {
            inZone = true;
            found.forbid(event.value > 0, "a wait ended in the zone, but the tool is outside");
        } else if (event.kind == Statement) {
            // An arc that is taken up queues nothing when nothing is left of it.
            unanswered += !begun && event.text.startsWith("moveC") ? 1 : 0;
            const int answered = walked - unanswered;
            if (afterMove && !inZone && !falseResults && answered > 0) {
                const bool ahead = int(results.size()) < answered;
                found.forbid(ahead, "the walk is ahead of the robot");
                found.forbid(!ahead && results[size_t(answered - 1)] < 0,
                             "the walk goes on after a motion error");
            }
            begun = true;
            inZone = false;
            afterMove = QStringList{"moveJ", "moveL", "moveC", "moveCC"}.contains(event.text);
            walked += afterMove ? 1 : 0;
        }
    });
}

/// A pause leaves no motion to the robot.
void checkPauses(const Steps& steps, Findings& found) {
    int outstanding = 0;  // motions that the robot has and has not answered
    int stopDue = 0;      // the pause that has to stop the robot, 0: none
    each(steps, found, [&](const Step& step, const Event& event) {
        if (event.kind == Command) {
            const bool empties = event.text == "move.reset" || event.text == "move.stop";
            outstanding = empties ? 0 : outstanding + (event.text == "move.opr.enough" ? 0 : 1);
            stopDue = event.text == "move.stop" ? 0 : stopDue;
        } else if (event.kind == Result) {
            // After an error the robot has dropped the rest.
            outstanding = event.value < 0 ? 0 : std::max(0, outstanding - 1);
        } else if (event.kind == Pause && !step.inPower && (outstanding > 0 || !event[RobotIdle])) {
            stopDue = event.action;
        } else if (event.kind == Done && stopDue != 0 && event.action == stopDue) {
            found.forbid(true, "a pause did not stop the robot");
            stopDue = 0;
        }
    });
}

/// With the gas in use it flows before the laser comes on, and after it has gone off until the post-flow
/// is over; that of a pause counts from the pause, but not before the laser is off.
void checkGas(const Steps& steps, Findings& found) {
    bool closing = false;    // a closing has begun since the gas came on
    qint64 pausedMs = -1;    // the last pause since then
    qint64 failedMs = -1;    // the last motion error since then
    qint64 laserOffMs = -1;  // when the laser was on last
    qint64 gasOffMs = -1;    // the gas went off while the laser was on
    int postFlowMs = 0;      // shortest post-flow in force since then
    each(steps, found, [&](const Step& step, const Event& event) {
        if (gasOffMs >= 0 && event.ms > gasOffMs) {
            found.forbid(step.laserOn(), "the laser is enabled and the gas is off");
            gasOffMs = -1;
        }
        postFlowMs = step.laserOn() && !closing ? event[PostFlowMs] : std::min(postFlowMs, event[PostFlowMs]);
        laserOffMs = step.laserOn() ? event.ms : laserOffMs;
        // The pull-back's port may not be in use.
        closing |=
            step.switchesOn(PULLBACK) || (event.kind == Permission && !event[Permitted] && step.laserOn());
        if (event.kind == Result && event.value < 0) {
            failedMs = event.ms;  // behind its zone it stops the run inside another wait, as a pause does
        } else if (event.kind == Pause) {
            pausedMs = event.ms;
            postFlowMs = event[PostFlowMs];
        } else if (step.switchesOn(GAS)) {
            closing = false;
            pausedMs = failedMs = laserOffMs = -1;
        } else if (step.writes(GAS) && step.outputs[GAS] != 0) {
            gasOffMs = step.laserOn() ? event.ms : gasOffMs;
            const qint64 from = pausedMs < 0 ? laserOffMs : pausedMs;
            const bool mayStop = step.inPower || (failedMs >= 0 && event.ms >= failedMs + postFlowMs);
            found.forbid(!mayStop && from >= 0 && event.ms < from + postFlowMs,
                         QString("the gas goes off %1 ms after %2, before its post-flow of %3 ms is over")
                             .arg(event.ms - from)
                             .arg(pausedMs < 0 ? "the laser" : "the pause")
                             .arg(postFlowMs));
        } else if (step.switchesOn(LASER)) {
            found.forbid(event[GasUsed] && step.outputs[GAS] == 0, "the laser is enabled without gas");
        }
    });
}

/// Every motion that was handed over is awaited, or its result passed over for a reason that is logged.
void checkMotions(const Steps& steps, Findings& found) {
    int outstanding = 0;
    int zones = 0;              // motions whose wait ended in the zone since the last reset
    bool silent = false;        // a result came that belongs to no motion, and nothing was said of it
    bool belongs = false;       // the last result belongs to a motion, and nothing came since
    bool falseResults = false;  // results can no longer be told apart
    each(steps, found, [&](const Step& step, const Event& event) {
        const std::optional<Run>& ended = step.ended;
        // A run that begins inside a result that the executor has not heard of yet takes it for its own.
        falseResults |= event.kind == Quirk || (event.kind <= Once && belongs);
        if (event.kind == Command && (event.text == "move.reset" || event.text == "move.stop")) {
            outstanding = zones = 0;
            belongs = false;
        } else if (event.kind == Command) {
            outstanding += event.text == "move.opr.enough" ? 0 : 1;
        } else if (event.kind == Result) {
            found.forbid(silent && !falseResults, "a result of no motion was passed over in silence");
            belongs = outstanding > 0;
            silent = !belongs;
            outstanding = std::max(0, outstanding - 1);
        } else if (event.kind == Activity) {
            // Somebody has run something inside the notification, before the executor heard of the result.
            belongs = false;
        } else if (event.kind == Zone) {
            ++zones;
        } else if (event.kind == Dropped && !falseResults) {
            const bool unexpected = event.text.startsWith("unexpected");
            found.forbid(unexpected && belongs,
                         "the result of a motion was taken for one that nobody asked for");
            found.forbid(!unexpected && zones == 0,
                         "a result was passed over, though no wait has ended in a zone");
        }
        silent &= event.kind != Dropped;
        found.forbid(ended && !ended->disturbed && !falseResults && outstanding > zones,
                     "a run has come to its end with motions that were not awaited");
    });
}

/// A run goes through its lines once, upwards, from the line it was asked for; a pause leaves the line that
/// it interrupted for the resume.
void checkLines(const Steps& steps, Findings& found) {
    int line = -1;        // the last one of the run under way, -1: none yet
    int action = 0;       // the pause that is to leave it, 0: none
    bool edited = false;  // somebody edited the program in this run
    each(steps, found, [&](const Step& step, const Event& event) {
        // The line that a run leaves behind follows its statement through edits: it need not be the last one.
        const bool edits = event.text.startsWith("edit");
        line = step.begun ? -1 : line;
        action = step.begun || edits ? 0 : action;
        edited = edits || (edited && !step.begun);
        const bool walks = step.current && step.current->asked.kind == Start && !edited;
        if (event.kind == Line && walks) {
            found.forbid(event.value <= line || event.value < step.current->asked.value,
                         QString("a run comes to line %1 after line %2").arg(event.value).arg(line));
            line = event.value;
        } else if (event.kind == Pause && walks && line >= 0) {
            action = event.action;
        } else if (event.kind == Done && event.action == action && action != 0) {
            action = 0;
            found.forbid(
                event[ResumeLine] != line,
                QString("a pause in line %1 leaves line %2 to resume").arg(line).arg(event[ResumeLine]));
        }
    });
}

/// The resume line is one of its program; in the end all is over and off, and every complaint on the way
/// counts.
void checkEnd(const Steps& steps, Findings& found) {
    each(steps, found, [&](const Step& step, const Event& event) {
        found.forbid(event.kind == Complaint, event.text);
        const int line = event[ResumeLine];
        found.forbid(
            (event.kind == End || event.kind == Line) && event[LineCount] >= 0 &&
                (line < 0 || line >= event[LineCount]),
            QString("the resume line %1 is none of its program's %2").arg(line).arg(event[LineCount]));
        if (event.kind == End) {
            found.forbid(!event[Idle] || event[Depth] > 0, "at the end the executor is not idle");
            found.forbid(event[Pending] > 0, "at the end steps are pending");
            found.forbid(!step.on().isEmpty(), "at the end is on, as far as was written: " + step.on());
            found.forbid(step.emitting, "at the end the source emits");
        }
    });
}

/// Follows which deeds of the schedule are on the stack, and which walks, steps and pauses.
Steps follow(const std::vector<Event>& events) {
    struct Deed {
        Event event;
        bool counted;  // it made the depth grow
    };
    std::vector<Deed> deeds;
    std::vector<Run> units;  // of the depth
    const auto isRun = [](const Run& unit) { return unit.asked.kind <= Once; };
    const auto isLoss = [](const Deed& deed) { return deed.event.kind == Power && deed.event.value == 0; };
    int generation = 0;
    bool quits = false;
    Steps steps;
    for (const Event& event : events) {
        Step step{event};
        if (!steps.empty()) {
            const Step& before = steps.back();
            step.outputs = before.outputs;
            step.emitting = before.event.kind == Emission ? before.event.value != 0 : before.emitting;
            if (before.event.kind == Write) {
                step.outputs[before.event.port] = before.event.value;
            }
        }
        const auto returned = std::find_if(deeds.begin(), deeds.end(), [&event](const Deed& deed) {
            return event.kind == Done && deed.event.action == event.action;
        });
        if (returned != deeds.end()) {
            if (returned->event.kind <= Once && !returned->counted) {
                step.refused = returned->event;
            }
            deeds.erase(returned);
        }
        bool disturbs = event.kind == Pause || event.kind == Quit || step.isPowerLoss();
        if (event.kind <= Act) {
            deeds.push_back({event, false});
        }
        // A run or a pause that the innermost deed asked for, or the pause of a run after a motion error.
        while (event.kind == Activity && int(units.size()) < event[Depth]) {
            const bool answers = !deeds.empty() && !deeds.back().counted;
            units.push_back({answers ? deeds.back().event : Event{Pause}, generation});
            if (isRun(units.back())) {
                step.begun = units.back();
            } else {
                disturbs = true;
            }
            if (answers) {
                deeds.back().counted = true;
            }
        }
        while (event.kind == Activity && int(units.size()) > event[Depth]) {
            if (isRun(units.back())) {
                step.ended = units.back();
            }
            units.pop_back();
        }
        for (Run& unit : units) {
            unit.disturbed |= disturbs;
            step.current = isRun(unit) ? unit : step.current;
            step.runs += isRun(unit) ? 1 : 0;
        }
        generation += event.kind == Replace ? 1 : 0;
        quits |= event.kind == Quit;
        step.inPower = quits || std::any_of(deeds.begin(), deeds.end(), isLoss);
        step.asking = !deeds.empty() && !deeds.back().counted && deeds.back().event.kind <= Once;
        steps.push_back(step);
    }
    return steps;
}

}  // namespace

QString Step::on() const {
    QStringList names;
    for (const Port port : {GAS, WIRE, PULLBACK, LASER, POWER, FREQUENCY, DUTY_CYCLE}) {
        if (outputs[port] > 0) {
            names << nameOf(port);
        }
    }
    return names.join(' ');
}

Findings check(const std::vector<Event>& events) {
    const Steps steps = follow(events);
    Findings found;
    for (const auto rule : {checkStops, checkRest, checkStarts, checkWalk, checkPauses, checkGas,
                            checkMotions, checkLines, checkLaser, checkEnd}) {
        rule(steps, found);
    }
    return found;
}

}  // namespace campaign
