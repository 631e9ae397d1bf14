#include "campaign/rules.h"

namespace campaign {

namespace {

/// After a loss of power that finds something under way everything is off at once, and stays off until
/// the next start, step or pause.
class StopRule : public Rule {
public:
    void on(const Event& event, const Outputs& outputs, const Runs& runs) override {
        // A pause that comes inside the stop itself is a part of it.
        if ((event.kind == Pause && action_ == 0) || runs.begun) {
            stopped_ = false;
        }
        const QString on = outputs.on();
        // Idle, with nothing on and nothing to come, a loss of power asks for nothing.
        if (Runs::isPowerLoss(event) && (!event[Idle] || event[Pending] > 0 || !on.isEmpty())) {
            stopped_ = true;
            action_ = action_ == 0 ? event.action : action_;  // one inside another is a part of that
        }
        const bool returns = event.kind == Done && event.action == action_;
        action_ = returns ? 0 : action_;
        if (!stopped_) {
            return;
        }
        forbid(returns && !on.isEmpty(), "the loss of power has left on: " + on);
        forbid(event.kind == Write && event.value > std::max(0, outputs.values[event.port]),
               QString("%1 is raised after a loss of power").arg(event.text));
        forbid(event.kind == Output, "a statement sets an output after a loss of power");
        forbid(event.kind == Command && event.text != "move.stop",
               event.text + " is commanded after a loss of power");
    }

private:
    bool stopped_ = false;
    int action_ = 0;  ///< the loss of power that is on the stack, 0: none
};

/// Nothing is on when the executor says that it rests.
class RestRule : public Rule {
public:
    void on(const Event& event, const Outputs& outputs, const Runs& runs) override {
        // A shutdown tells of its dropped steps before it switches off.
        const bool says = (event.kind == Done || event.kind == Activity) && !runs.inPower();
        if (says && event[Idle] && event[Depth] == 0 && event[Pending] == 0) {
            const QString on = outputs.on();
            forbid(!on.isEmpty(), "the executor rests with something on: " + on);
            forbid(outputs.emitting, "the executor rests while the laser source emits");
        }
    }
};

/// One run at a time; a start that is refused says so and changes nothing else; a run that came to its
/// end leaves no weld open.
class StartRule : public Rule {
public:
    void on(const Event& event, const Outputs&, const Runs& runs) override {
        quits_ |= event.kind == Quit;
        if (runs.begun) {
            const Event& asked = runs.begun->asked;
            forbid(runs.count() > 1, "a run was accepted while another one is on the stack");
            forbid(!asked[Idle] || asked[Depth] > 0, "a run was accepted while the executor was not idle");
            forbid(!isPossible(asked),
                   "a run was accepted without power, with the robot moving or without a line");
        }
        if (runs.ended) {
            forbid(!event[Idle], "a run is over, but the state is not idle");
            forbid(!runs.ended->disturbed && runs.ended->asked.kind == Start && event[WeldOpen],
                   "a run has come to its end and leaves the weld open");
        }
        if (runs.refused && !quits_) {  // while the application ends its loops a start is passed over
            const Event& asked = *runs.refused;
            forbid(event[Boxes] == 0, "a start was refused without a message");
            forbid(asked[Idle] && asked[Depth] == 0 && isPossible(asked) && !asked[MayBeRefused],
                   "a start was refused for no reason");
        }
        if (event.kind >= State && event.kind <= Command) {
            forbid(runs.asking(), "a start that was not accepted caused: " + event.toText().simplified());
        }
    }

private:
    static bool isPossible(const Event& asked) {
        return asked[Powered] && asked[RobotIdle] && asked[LineExists];
    }
    bool quits_ = false;
};

/// The walk is never ahead of the robot: what follows a move begins when its result has come or the
/// tool is in its zone, and nothing follows a move that failed. A pause leaves no motion to the robot.
class WalkRule : public Rule {
public:
    void on(const Event& event, const Outputs&, const Runs& runs) override {
        onPause(event, runs);
        falseResults_ |= event.kind == Quirk;
        if (event.kind == Command && event.text == "move.reset") {
            results_.clear();
            walked_ = 0;
            unanswered_ = 0;
            afterMove_ = false;
            begun_ = false;
        } else if (event.kind == Command && event.text == "move.l" && !begun_) {
            --unanswered_;  // the way back to where a weld stopped is no statement's
        } else if (event.kind == Result) {
            results_.push_back(event.value);
        } else if (event.kind == Zone) {
            inZone_ = true;
            forbid(event.value > 0, "a wait ended in the zone, but the tool is outside");
        } else if (event.kind == Statement) {
            onStatement(event);
        }
    }

private:
    void onStatement(const Event& event) {
        // An arc that is taken up queues nothing when nothing is left of it.
        if (!std::exchange(begun_, true) && event.text.startsWith("moveC")) {
            ++unanswered_;
        }
        const int answered = walked_ - unanswered_;
        if (afterMove_ && !inZone_ && !falseResults_ && answered > 0) {
            const int results = int(results_.size());
            forbid(results < answered, "the walk is ahead of the robot");
            forbid(results >= answered && results_[answered - 1] < 0,
                   "the walk goes on after a motion error");
        }
        afterMove_ = QStringList{"moveJ", "moveL", "moveC", "moveCC"}.contains(event.text);
        inZone_ = false;
        walked_ += afterMove_ ? 1 : 0;
    }

    void onPause(const Event& event, const Runs& runs) {
        if (event.kind == Command) {
            const bool empties = event.text == "move.reset" || event.text == "move.stop";
            outstanding_ = empties ? 0 : outstanding_ + (event.text == "move.opr.enough" ? 0 : 1);
            stopDue_ = event.text == "move.stop" ? 0 : stopDue_;
        } else if (event.kind == Result) {
            // After an error the robot has dropped the rest.
            outstanding_ = event.value < 0 ? 0 : std::max(0, outstanding_ - 1);
        } else if (event.kind == Pause && !runs.inPower() && (outstanding_ > 0 || !event[RobotIdle])) {
            stopDue_ = event.action;
        } else if (event.kind == Done && stopDue_ != 0 && event.action == stopDue_) {
            forbid(true, "a pause did not stop the robot");
            stopDue_ = 0;
        }
    }

    std::vector<int> results_;   ///< since the last reset
    int walked_ = 0;             ///< moves begun since then
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
    void on(const Event& event, const Outputs& outputs, const Runs& runs) override {
        const bool laserOn = outputs.values[LASER] != 0;
        if (gasOffMs_ >= 0 && event.ms > gasOffMs_) {
            forbid(laserOn, QString("the laser is enabled and the gas is off since %1 ms").arg(gasOffMs_));
            gasOffMs_ = -1;
        }
        postFlowMs_ = laserOn && !closing_ ? event[PostFlowMs] : std::min(postFlowMs_, event[PostFlowMs]);
        laserOffMs_ = laserOn ? event.ms : laserOffMs_;
        // The pull-back's port may not be in use.
        closing_ |= (event.kind == Write && event.port == PULLBACK && event.value != 0) ||
                    (event.kind == Permission && !event[Permitted] && laserOn);
        if (event.kind == Result && event.value < 0) {
            failedMs_ = event.ms;  // behind its zone it stops the run inside another wait, as a pause does
        } else if (event.kind == Pause) {
            pausedMs_ = event.ms;
            postFlowMs_ = event[PostFlowMs];
        } else if (event.kind == Write && event.port == GAS && event.value != 0) {
            closing_ = false;
            pausedMs_ = failedMs_ = laserOffMs_ = -1;
        } else if (event.kind == Write && event.port == GAS && outputs.values[GAS] != 0) {
            gasOffMs_ = laserOn ? event.ms : gasOffMs_;
            onGasOff(event, runs);
        } else if (event.kind == Write && event.port == LASER && event.value != 0) {
            forbid(event[GasUsed] && outputs.values[GAS] == 0, "the laser is enabled without gas");
        }
    }

private:
    void onGasOff(const Event& event, const Runs& runs) {
        const qint64 from = pausedMs_ < 0 ? laserOffMs_ : pausedMs_;
        const bool mayStop = runs.inPower() || (failedMs_ >= 0 && event.ms >= failedMs_ + postFlowMs_);
        forbid(!mayStop && from >= 0 && event.ms < from + postFlowMs_,
               QString("the gas goes off at %1 ms, %2 ms after %3, before its post-flow of %4 ms is over")
                   .arg(event.ms)
                   .arg(event.ms - from)
                   .arg(pausedMs_ < 0 ? "the laser" : "the pause")
                   .arg(postFlowMs_));
    }

    bool closing_ = false;    ///< a closing has begun since the gas came on
    qint64 pausedMs_ = -1;    ///< the last pause since the gas came on
    qint64 failedMs_ = -1;    ///< the last motion error since then
    qint64 laserOffMs_ = -1;  ///< when the laser was on last
    int postFlowMs_ = 0;      ///< shortest post-flow in force since then
    qint64 gasOffMs_ = -1;    ///< the gas went off while the laser was on
};

/// Every motion that was handed over is awaited, or its result passed over for a reason that is logged.
class MotionRule : public Rule {
public:
    void on(const Event& event, const Outputs&, const Runs& runs) override {
        // A run that begins inside a result that the executor has not heard of yet takes it for its own.
        falseResults_ |= event.kind == Quirk || (event.kind <= Once && belongs_);
        if (event.kind == Command && (event.text == "move.reset" || event.text == "move.stop")) {
            outstanding_ = 0;
            zones_ = 0;
            belongs_ = false;
        } else if (event.kind == Command) {
            outstanding_ += event.text == "move.opr.enough" ? 0 : 1;
        } else if (event.kind == Result) {
            forbid(silent_ && !falseResults_,
                   "a result that belongs to no motion was passed over in silence");
            belongs_ = outstanding_ > 0;
            silent_ = !belongs_;
            outstanding_ = std::max(0, outstanding_ - 1);
        } else if (event.kind == Activity) {
            // Somebody has run something inside the notification, before the executor heard of the result.
            belongs_ = false;
        } else if (event.kind == Zone) {
            ++zones_;
        } else if (event.kind == Dropped) {
            const bool unexpected = event.text.startsWith("unexpected");
            silent_ = false;
            forbid(unexpected && belongs_ && !falseResults_,
                   "the result of a motion was taken for one that nobody asked for");
            forbid(!unexpected && zones_ == 0 && !falseResults_,
                   "a result was passed over, though no wait has ended in a zone");
        }
        if (runs.ended && !runs.ended->disturbed && !falseResults_) {
            forbid(outstanding_ > zones_, "a run has come to its end with motions that were not awaited");
        }
    }

private:
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
    void on(const Event& event, const Outputs&, const Runs& runs) override {
        // The line that a run leaves behind follows its statement through edits: it need not be the last one.
        const bool edits = event.text.startsWith("edit");
        line_ = runs.begun ? -1 : line_;
        action_ = runs.begun || edits ? 0 : action_;
        edited_ = edits || (edited_ && !runs.begun);
        const Run* const run = runs.current();
        const bool walks = run && run->asked.kind == Start && !edited_;
        if (event.kind == Line && walks) {
            forbid(event.value <= line_ || event.value < run->asked.value,
                   QString("a run comes to line %1 after line %2").arg(event.value).arg(line_));
            line_ = event.value;
        } else if (event.kind == Pause && walks && line_ >= 0) {
            action_ = event.action;
        } else if (event.kind == Done && event.action == action_ && action_ != 0) {
            action_ = 0;
            forbid(event[ResumeLine] != line_,
                   QString("a pause in line %1 leaves line %2 to resume").arg(line_).arg(event[ResumeLine]));
        }
    }

private:
    int line_ = -1;        ///< the last one of the run under way, -1: none yet
    int action_ = 0;       ///< the pause that is to leave it, 0: none
    bool edited_ = false;  ///< somebody edited the program in this run
};

/// In the end all is over, off and gone, and every complaint on the way counts.
class EndRule : public Rule {
public:
    void on(const Event& event, const Outputs& outputs, const Runs&) override {
        forbid(event.kind == Complaint, event.text);
        if (event.kind != End) {
            return;
        }
        forbid(!event[Idle] || event[Depth] > 0, "at the end the executor is not idle");
        forbid(event[Pending] > 0, "at the end steps are pending");
        forbid(event[Boxes] > 0, "at the end messages are left");
        forbid(event[ObjectsMore] > 0, QString("at the end %1 objects are left").arg(event[ObjectsMore]));
        forbid(event[TimersMore] > 0, QString("at the end %1 timers are left").arg(event[TimersMore]));
        forbid(event[QuitTookMs] > 0, "the application did not quit at once");
        forbid(!event.text.isEmpty(), "at the end is on at the controller: " + event.text);
        forbid(!outputs.on().isEmpty(), "at the end is on, as far as was written: " + outputs.on());
        forbid(outputs.emitting, "at the end the source emits");
        const int line = event[ResumeLine];
        forbid(event[LineCount] >= 0 && (line < 0 || line >= event[LineCount]),
               QString("the resume line %1 is none of its program's %2").arg(line).arg(event[LineCount]));
    }
};

}  // namespace

std::vector<std::unique_ptr<Rule>> makeOtherRules() {
    std::vector<std::unique_ptr<Rule>> rules;
    rules.push_back(std::make_unique<StopRule>());
    rules.push_back(std::make_unique<RestRule>());
    rules.push_back(std::make_unique<StartRule>());
    rules.push_back(std::make_unique<WalkRule>());
    rules.push_back(std::make_unique<GasRule>());
    rules.push_back(std::make_unique<MotionRule>());
    rules.push_back(std::make_unique<ResumeRule>());
    rules.push_back(std::make_unique<EndRule>());
    return rules;
}

}  // namespace campaign
