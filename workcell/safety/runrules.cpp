// How runs begin, walk over their program and end.

#include "program/words.h"
#include "workcell/safety/rulebook.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace workcell::safety {

namespace {

/// Whether a start may be accepted.
bool isPossible(const Event& asked) {
    const bool lineExists = asked.value >= 0 && asked.value < asked.lineCount;
    return asked.idle && asked.depth == 0 && asked.powered && asked.robotIdle && lineExists;
}

bool isMove(const QString& type) {
    return type == prog::statement::moveJ || type == prog::statement::moveL ||
           type == prog::statement::moveC || type == prog::statement::moveCC;
}

}  // namespace

/// A run begins only when nothing else runs, with power, on a standing robot, at a line that exists. It is
/// over when the state is idle.
void oneRunAtATime(const Steps& steps, Findings& found) {
    each(steps, found, [&](const Step& step) {
        found.forbid(step.begun && !isPossible(step.begun->asked),
                     "a run was accepted in another run, without power, of a moving robot or of no line");
        found.forbid(step.ended && !step.idle, "a run is over, but the state is not idle");
    });
}

/// A refused start shows a message and changes nothing else. No start is refused without a reason.
void refusalsAreTold(const Steps& steps, Findings& found) {
    bool quits = false;
    each(steps, found, [&](const Step& step) {
        quits |= step.kind == Kind::Quit;
        if (step.refused && !quits) {  // while the application quits, a start has no message
            found.forbid(step.boxes == 0, "a start was refused without a message");
            found.forbid(isPossible(*step.refused) && !step.refused->mayBeRefused,
                         "a start was refused for no reason");
        }
        found.forbid(step.asking && step.kind >= Kind::State && step.kind <= Kind::Command,
                     QStringLiteral("a start that was not accepted caused: ") + wordOf(step.kind));
    });
}

/// A run that reached its end leaves no weld open.
void noWeldOutlivesItsProgram(const Steps& steps, Findings& found) {
    each(steps, found, [&](const Step& step) {
        found.forbid(step.ended && !step.ended->disturbed && step.ended->isWalk() && step.weldOpen,
                     "a run has come to its end and leaves the weld open");
    });
}

/// The program is never ahead of the robot: the statement after a move begins when the move's result was
/// written or the tool is in its zone. Nothing follows a failed move.
void programWaitsForTheRobot(const Steps& steps, Findings& found) {
    int results = 0;         // since the last reset
    int failed = 0;          // number of the first of them that was an error, 0 for none
    int walked = 0;          // moves begun since the last reset
    int unanswered = 0;      // moves among them that have no result
    bool begun = false;      // a statement has begun since the last reset
    bool afterMove = false;  // the previous statement was a move
    bool inZone = false;     // the tool has entered that move's zone
    each(steps, found, [&](const Step& step) {
        if (step.commands(prog::command::reset)) {
            results = failed = walked = unanswered = 0;
            afterMove = begun = false;
        } else if ((step.commands(prog::command::moveL) || step.commands(prog::command::moveC)) && !begun) {
            --unanswered;  // the way back to where a weld stopped belongs to no statement
        } else if (step.kind == Kind::Result) {
            ++results;
            failed = step.value < 0 && failed == 0 ? results : failed;
        } else if (step.kind == Kind::Zone) {
            inZone = true;
        } else if (step.kind == Kind::Statement) {
            // A resumed arc of which nothing is left queues no motion.
            unanswered += !begun && step.text.startsWith(prog::statement::moveC) ? 1 : 0;
            const int answered = walked - unanswered;
            found.forbid(afterMove && !inZone && results < answered, "the walk is ahead of the robot");
            // The failed move itself may begin: its result can come together with the one before.
            found.forbid(failed > 0 && answered >= failed, "the walk goes on after a motion error");
            begun = true;
            inZone = false;
            afterMove = isMove(step.text);
            walked += afterMove ? 1 : 0;
        }
    });
}

/// Every queued motion is awaited, or the log says that its result is ignored because the wait had ended in
/// the zone.
void resultsAreCounted(const Steps& steps, Findings& found) {
    int outstanding = 0;   // queued motions without a result
    int zones = 0;         // motions whose wait ended in the zone since the last reset
    bool belongs = false;  // the last result belonged to a queued motion
    each(steps, found, [&](const Step& step) {
        if (step.commands(prog::command::reset) || step.commands(prog::command::stop)) {
            outstanding = zones = 0;
        } else if (step.kind == Kind::Command) {
            outstanding += step.text == prog::command::enough ? 0 : 1;
        } else if (step.kind == Kind::Result) {
            belongs = outstanding > 0;
            outstanding = step.value < 0 ? 0 : std::max(0, outstanding - 1);
        } else if (step.kind == Kind::Zone) {
            ++zones;
        } else if (step.kind == Kind::Dropped) {
            const bool unexpected = step.text.startsWith(QLatin1String("unexpected"));
            found.forbid(unexpected ? belongs : zones == 0,
                         QStringLiteral("the result of a motion was passed over: ") + step.text);
        }
        found.forbid(step.ended && !step.ended->disturbed && outstanding > zones,
                     "a run has come to its end with motions that were not awaited");
    });
}

/// A run executes its lines once, in order, from the requested line to the last; where it takes up a weld
/// with an overlap, from an earlier line. When lines were edited in
/// the run, the line that it leaves at its end is that of the edited program.
void linesComeInOrder(const Steps& steps, Findings& found) {
    int line = -1;              // the last line of the current run, -1 for none
    std::optional<int> coming;  // the line written last, not judged yet
    bool edited = false;
    each(steps, found, [&](const Step& step) {
        line = step.begun ? -1 : line;
        edited = !step.begun && (edited || step.kind == Kind::Edit || step.kind == Kind::Replace);
        if (!step.current || !step.current->isWalk()) {
            return;
        }
        if (step.kind == Kind::Line) {
            coming = step.value;
        }
        if (!coming || step.kind != (edited ? Kind::Statement : Kind::Line)) {
            return;
        }
        const Event& asked = step.current->asked;
        const bool isInRange = *coming >= asked.value || (asked.weldOpen && step.overlaps);
        const bool comesNext = *coming > line && isInRange;
        found.forbid(!comesNext || *coming >= asked.lineCount,
                     QStringLiteral("a run comes to line %1 after line %2, its program has %3")
                         .arg(*coming)
                         .arg(line)
                         .arg(asked.lineCount));
        line = *std::exchange(coming, std::nullopt);
    });
}

/// A pause keeps the interrupted line for the resume. When lines were edited in the run, the line follows its
/// statement.
void pauseKeepsItsLine(const Steps& steps, Findings& found) {
    int line = -1;  // the last line of the current run, -1 for none
    int pause = 0;  // action number of the pause that has to keep it, 0 for none
    bool edited = false;
    each(steps, found, [&](const Step& step) {
        const bool replaced = step.kind == Kind::Replace;  // resets the resume data
        line = step.begun ? -1 : line;
        pause = step.begun || replaced ? 0 : pause;
        edited = !step.begun && (edited || replaced || step.kind == Kind::Edit);
        const bool walks = step.current && step.current->isWalk();
        if (step.kind == Kind::Line && walks) {
            line = step.value;
        } else if (step.kind == Kind::Pause && walks && line >= 0) {
            pause = step.action;
        } else if (step.kind == Kind::Done && step.action == pause) {
            pause = 0;
            found.forbid(!edited && step.resumeLine != line,
                         QStringLiteral("a pause leaves another line than %1").arg(line));
        }
    });
}

}  // namespace workcell::safety
