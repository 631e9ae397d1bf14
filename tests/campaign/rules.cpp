// What the safety rules promise, held against what happened.

#include "campaign/campaign.h"

#include <algorithm>
#include <array>
#include <optional>

namespace campaign {

namespace {

/// A walk or single step, as the executor's depth shows it.
struct Run {
    Event asked;             ///< the Start or Once that it answers; a Pause's or another's is no run
    bool disturbed = false;  ///< a pause, a motion error or a loss of power came into it
};

/// An event, and how things were before it.
struct Step : Event {
    std::array<int, portCount> outputs{};  ///< what the executor wrote last
    bool inPower = false;                  ///< a loss of power is on the stack, or the end of the application
    bool asking = false;                   ///< the innermost deed is a start neither accepted nor returned
    std::optional<Run> current{};          ///< the innermost run on the stack
    std::optional<Run> begun{}, ended{};   ///< the run that the event shows to be accepted, or to be over
    std::optional<Event> refused{};        ///< the start that it shows to have been refused

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
    std::size_t at = 0;  ///< the event that the rule looks at

    void forbid(bool happens, const QString& words) {
        if (happens) {
            all.emplace(at, words);
        }
    }
};

/// Asks of each event in turn.
template <typename Rule>
void each(const Steps& steps, Findings& found, Rule rule) {
    for (found.at = 0; found.at < steps.size(); ++found.at) {
        rule(steps[found.at]);
    }
}

/// After a loss of power that finds something under way everything is off at once, and stays off until
/// the next start, step or pause.
void checkStops(const Steps& steps, Findings& found) {
    bool stopped = false;
    int losing = 0;  // the loss of power that is on the stack, 0: none
    each(steps, found, [&](const Step& step) {
        // A pause that comes inside the stop itself is a part of it.
        if ((step.kind == Pause && losing == 0) || step.begun) {
            stopped = false;
        }
        // Idle, with nothing on and nothing to come, a loss of power asks for nothing.
        if (step.isPowerLoss() && (!step.idle || step.pending > 0 || !step.on().isEmpty())) {
            stopped = true;
            losing = losing == 0 ? step.action : losing;  // one inside another is a part of that
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

/// One run at a time; a start that is refused says so and changes nothing else; a run that came to its
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
        if (step.refused && !quits) {  // while the application ends its loops a start is passed over
            found.forbid(step.boxes == 0, "a start was refused without a message");
            found.forbid(isPossible(*step.refused) && !step.refused->mayBeRefused,
                         "a start was refused for no reason");
        }
        found.forbid(step.asking && step.kind >= State && step.kind <= Command,
                     "a start that was not accepted caused a " + nameOf(step.kind));
    });
}

/// The walk is never ahead of the robot: what follows a move begins when its result has come or the
/// tool is in its zone, and nothing follows a move that failed.
void checkWalk(const Steps& steps, Findings& found) {
    int results = 0;         // since the last reset
    bool failed = false;     // one of them was an error
    int walked = 0;          // moves begun since then
    int unanswered = 0;      // of these without a result of their own
    bool begun = false;      // a statement has begun since then
    bool afterMove = false;  // the statement before was a move
    bool inZone = false;     // the tool has entered that move's zone
    each(steps, found, [&](const Step& step) {
        if (step.commands("move.reset")) {
            results = walked = unanswered = 0;
            failed = afterMove = begun = false;
        } else if (step.commands("move.l") && !begun) {
            --unanswered;  // the way back to where a weld stopped is no statement's
        } else if (step.kind == Result) {
            ++results;
            failed |= step.value < 0;
        } else if (step.kind == Zone) {
            inZone = true;
        } else if (step.kind == Statement) {
            // An arc that is taken up queues nothing when nothing is left of it.
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

/// A pause leaves no motion to the robot. Every motion that was handed over is awaited, or the log says that
/// its result is passed over because the wait for it ended in the zone.
void checkMotions(const Steps& steps, Findings& found) {
    int outstanding = 0;   // motions that the robot has and has not answered
    int stopDue = 0;       // the pause that has to stop the robot, 0: none
    int zones = 0;         // motions whose wait ended in the zone since the last reset
    bool belongs = false;  // the last result was a motion's that the robot had
    each(steps, found, [&](const Step& step) {
        if (step.commands("move.reset") || step.commands("move.stop")) {
            outstanding = zones = 0;
            stopDue = step.text == "move.stop" ? 0 : stopDue;
        } else if (step.kind == Command) {
            outstanding += step.text == "move.opr.enough" ? 0 : 1;
        } else if (step.kind == Result) {
            belongs = outstanding > 0;
            // After an error the robot has dropped the rest.
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

/// With the gas in use it flows before the laser comes on, and after it has gone off until the post-flow
/// is over; that of a pause counts from the pause, but not before the laser is off.
void checkGas(const Steps& steps, Findings& found) {
    bool closing = false;    // a closing has begun since the gas came on
    qint64 pausedMs = -1;    // the last pause since then
    qint64 failedMs = -1;    // the last motion error since then
    qint64 laserOffMs = -1;  // when the laser was on last
    int postFlowMs = 0;      // shortest post-flow in force since then
    each(steps, found, [&](const Step& step) {
        postFlowMs = step.laserOn() && !closing ? step.postFlowMs : std::min(postFlowMs, step.postFlowMs);
        laserOffMs = step.laserOn() ? step.ms : laserOffMs;
        // The pull-back's port may not be in use.
        closing |= step.switchesOn(PULLBACK) || (step.kind == Permission && !step.permitted);
        if (step.kind == Result && step.value < 0) {
            failedMs = step.ms;  // behind its zone it stops the run inside another wait, as a pause does
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

/// A run goes through its lines once, upwards, from the line it was asked for to the last; a pause leaves the
/// line that it interrupted for the resume.
void checkLines(const Steps& steps, Findings& found) {
    int line = -1;  // the last one of the run under way, -1: none yet
    int pause = 0;  // the pause that is to leave it, 0: none
    each(steps, found, [&](const Step& step) {
        // Where the program is replaced nothing is left to resume.
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

/// The laser is on only from a permitted opening to the end of its closing; a closing takes as long as
/// its ramp, ends at power 0 and never raises the power; a weld is never continued elsewhere.
void checkLaser(const Steps& steps, Findings& found) {
    bool announced = false;    // an opening may begin now
    bool armed = false;        // it has begun with permission, and nothing has ended it
    bool quits = false;        // all is over in the turn in which the application ends
    bool closes = false;       // a close statement is under way
    qint64 closingSince = -1;  // when what ends the weld came, -1: nothing
    qint64 deadline = -1;      // when the laser has to be off, -1: not yet known
    int weldMode = -1;         // run mode of the weld that was left open last, -1: none

    each(steps, found, [&](const Step& step) {
        /// The laser has to be off `ms` from now, or earlier where that was due already.
        const auto closeWithin = [&](int ms) {
            deadline = step.laserOn() && (deadline < 0 || step.ms + ms < deadline) ? step.ms + ms : deadline;
        };
        const auto beginOpening = [&] {
            announced = false;
            armed = step.permitted;
            closingSince = deadline = -1;
            found.forbid(!armed, "an opening goes on though welding is not permitted");
        };
        /// What ends every weld has come.
        const auto close = [&] {
            closingSince = closingSince < 0 ? step.ms : closingSince;
            announced = armed = false;
        };

        if (step.laserOn() && deadline >= 0 && step.ms > deadline) {
            found.forbid(true, QString("the laser is enabled, but had to be off by %1 ms").arg(deadline));
            deadline = -1;
        }
        if (step.begun) {
            // A weld may be continued by hand, in the program in which it was left open by hand.
            const Event& asked = step.begun->asked;
            announced = asked.kind == Start && asked.weldOpen && asked.mode == 0 && weldMode == 0;
        } else if (step.kind == WeldFlag && step.value != 0 && step.current) {
            weldMode = step.current->asked.mode;
        } else if (step.kind == Activity && step.depth == 0) {
            announced = armed = false;
        }

        // A close statement that nothing disturbs closes the weld, so that no start opens it again.
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
            // When the closing is under way already, it ends that at once.
            closeWithin(closingSince >= 0 && step.ms > closingSince ? 0 : step.decreaseMs + 1);
            close();
        } else if ((step.kind == Activity && step.text == "rampdown") || step.switchesOn(PULLBACK)) {
            close();
        } else if (step.kind == Replace) {
            weldMode = -1;
        }

        if (step.kind != Write || quits) {
            return;  // what is due when the application quits is undone in the same turn
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

/// Nothing is on when the executor says that it rests, as it does in the end; every complaint on the way
/// counts.
void checkRest(const Steps& steps, Findings& found) {
    each(steps, found, [&](const Step& step) {
        // A shutdown tells of its dropped steps before it switches off.
        const bool says = (step.kind == Done || step.kind == Activity) && !step.inPower;
        const bool rests = step.idle && step.depth == 0 && step.pending == 0;
        found.forbid((says || step.kind == End) && rests && !step.on().isEmpty(),
                     "the executor rests with something on:" + step.on());
        found.forbid(step.kind == End && !rests, "at the end the executor does not rest");
        found.forbid(step.kind == Complaint, step.text);
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
        if (event.kind == Done) {  // of the innermost deed
            if (deeds.back().event.kind <= Once && !deeds.back().counted) {
                step.refused = deeds.back().event;
            }
            deeds.pop_back();
        } else if (event.kind <= Act) {
            deeds.push_back({event, false});
        }
        bool disturbs = event.kind == Pause || event.kind == Quit || step.isPowerLoss();
        // A run or a pause that the innermost deed asked for, or the pause of a run after a motion error.
        while (event.kind == Activity && int(units.size()) < event.depth) {
            const bool answers = !deeds.empty() && !std::exchange(deeds.back().counted, true);
            units.push_back({answers ? deeds.back().event : Event{Pause}});
            if (isRun(units.back())) {
                step.begun = units.back();
            } else {
                disturbs = true;
            }
        }
        while (event.kind == Activity && int(units.size()) > event.depth) {
            if (isRun(units.back())) {
                step.ended = units.back();
            }
            units.pop_back();
        }
        for (Run& unit : units) {
            unit.disturbed |= disturbs;
            step.current = isRun(unit) ? unit : step.current;
        }
        quits |= event.kind == Quit;
        step.inPower = quits || std::any_of(deeds.begin(), deeds.end(), isLoss);
        step.asking = !deeds.empty() && !deeds.back().counted && deeds.back().event.kind <= Once;
        steps.push_back(step);
    }
    return steps;
}

}  // namespace

std::multimap<std::size_t, QString> check(const std::vector<Event>& events) {
    const Steps steps = follow(events);
    Findings found;
    for (const auto rule :
         {checkStops, checkStarts, checkWalk, checkMotions, checkGas, checkLines, checkLaser, checkRest}) {
        rule(steps, found);
    }
    return found.all;
}

}  // namespace campaign
