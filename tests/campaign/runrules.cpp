#include "campaign/rules.h"
#include "devices/ports.h"

#include <algorithm>
#include <utility>

namespace campaign {

using Kind = Event::Kind;

// --- After a loss of power -------------------------------------------------------------------------

void StopRule::on(const Event& event, const Outputs& outputs, const Runs& runs) {
    // A pause that comes inside the stop itself is a part of it.
    if ((event.kind == Kind::Pause && action_ == 0) || runs.begun()) {
        stopped_ = false;
    }
    const QStringList on = outputs.on();
    if (event.kind == Kind::Power && event.value == 0) {
        // Idle, with nothing on and nothing to come, a loss of power asks for nothing.
        if (!event.facts.idle || event.facts.pending > 0 || !on.isEmpty()) {
            stopped_ = true;
            action_ = action_ == 0 ? event.action : action_;  // one inside another is a part of that
        }
    }
    const bool returns = event.kind == Kind::Done && event.action == action_;
    if (returns) {
        action_ = 0;
    }
    if (!stopped_) {
        return;
    }
    if (returns && !on.isEmpty()) {
        broken(QStringLiteral("the loss of power has left on: ") + on.join(QStringLiteral(", ")));
    }
    if (event.kind == Kind::Write && event.value > std::max(0, outputs.value(event.port))) {
        broken(QStringLiteral("%1 is raised to %2 after a loss of power")
                   .arg(nameOfPort(event.port))
                   .arg(event.value));
    }
    if (event.kind == Kind::Output) {
        broken(QStringLiteral("a statement sets %1 after a loss of power").arg(event.text));
    }
    if (event.kind == Kind::Command && event.text != QLatin1String("move.stop")) {
        broken(QStringLiteral("%1 is commanded after a loss of power").arg(event.text));
    }
}

// --- At rest ---------------------------------------------------------------------------------------

void RestRule::on(const Event& event, const Outputs& outputs, const Runs& runs) {
    const Facts& facts = event.facts;
    // A shutdown tells of its dropped steps before it switches off.
    const bool says = (event.kind == Kind::Done || event.kind == Kind::Activity) && !runs.inPower();
    if (!says || !facts.idle || facts.depth > 0 || facts.pending > 0) {
        return;
    }
    if (!outputs.on().isEmpty()) {
        broken(QStringLiteral("the executor rests with something on: ") +
               outputs.on().join(QStringLiteral(", ")));
    } else if (outputs.emitting() && !outputs.byHand(DO_LASER_ENABLE)) {
        broken(QStringLiteral("the executor rests while the laser source emits"));
    }
}

// --- Starts ----------------------------------------------------------------------------------------

void StartRule::on(const Event& event, const Outputs&, const Runs& runs) {
    quits_ |= event.kind == Kind::Quit;
    if (runs.begun()) {
        onBegun(*runs.begun(), runs);
    }
    if (runs.ended()) {
        onEnded(*runs.ended(), event);
    }
    if (runs.refused()) {
        onRefused(*runs.refused(), event);
    }
    switch (event.kind) {
        case Kind::State:
        case Kind::Line:
        case Kind::Statement:
        case Kind::WeldFlag:
        case Kind::Param:
        case Kind::Node:
        case Kind::Write:
        case Kind::Output:
        case Kind::Command:
            if (runs.asking()) {
                broken(QStringLiteral("a start that was not accepted caused: ") + event.toText().trimmed());
            }
            break;
        default:
            break;
    }
}

void StartRule::onBegun(const Run& run, const Runs& runs) {
    const Facts& before = run.asked.facts;
    if (runs.count() > 1) {
        broken(QStringLiteral("a run was accepted while another one is on the stack"));
    }
    if (!before.idle || before.depth > 0) {
        broken(QStringLiteral("a run was accepted while the executor was not idle"));
    }
    if (!before.powered || !before.robotIdle || !run.asked.lineExists) {
        broken(QStringLiteral("a run was accepted without power, with the robot moving or without a line"));
    }
}

void StartRule::onEnded(const Run& run, const Event& event) {
    if (!event.facts.idle) {
        broken(QStringLiteral("a run is over, but the state is not idle"));
    }
    if (!run.disturbed && run.asked.kind == Kind::Start && event.facts.weldOpen) {
        broken(QStringLiteral("a run has come to its end and leaves the weld open"));
    }
}

void StartRule::onRefused(const Event& asked, const Event& done) {
    if (quits_) {
        return;  // a start while the application ends its loops is passed over in silence
    }
    const Facts& before = asked.facts;
    if (done.facts.boxes == 0) {
        broken(QStringLiteral("a start was refused without a message"));
    }
    if (before.idle && before.depth == 0 && before.powered && before.robotIdle && asked.lineExists &&
        !asked.mayBeRefused) {
        broken(QStringLiteral("a start was refused for no reason"));
    }
}

// --- The walk --------------------------------------------------------------------------------------

void WalkRule::on(const Event& event, const Outputs&, const Runs& runs) {
    onPause(event, runs);
    switch (event.kind) {
        case Kind::Quirk:
            falseResults_ = true;
            break;
        case Kind::Command:
            if (event.text == QLatin1String("move.reset")) {
                results_.clear();
                walked_ = 0;
                unanswered_ = 0;
                afterMove_ = false;
                begun_ = false;
            } else if (!begun_ && event.text == QLatin1String("move.l")) {
                --unanswered_;  // the way back to where a weld stopped is no statement's
            }
            break;
        case Kind::Result:
            results_.append(event.value);
            break;
        case Kind::Zone:
            inZone_ = true;
            if (event.value > 0) {
                broken(QStringLiteral("a wait ended in the zone, but the tool is %1 µm outside")
                           .arg(event.value));
            }
            break;
        case Kind::Statement:
            onStatement(event);
            break;
        default:
            break;
    }
}

void WalkRule::onStatement(const Event& event) {
    // An arc that is taken up queues nothing when nothing is left of it.
    if (!std::exchange(begun_, true) && event.text.startsWith(QLatin1String("moveC"))) {
        ++unanswered_;
    }
    const int answered = walked_ - unanswered_;
    if (afterMove_ && !inZone_ && !falseResults_ && answered > 0) {
        if (results_.size() < answered) {
            broken(QStringLiteral("the walk is ahead of the robot: after motion %1 only %2 results have come")
                       .arg(answered)
                       .arg(results_.size()));
        } else if (results_.at(answered - 1) < 0) {
            broken(QStringLiteral("the walk goes on after a motion error"));
        }
    }
    static const QStringList moves{QStringLiteral("moveJ"), QStringLiteral("moveL"), QStringLiteral("moveC"),
                                   QStringLiteral("moveCC")};
    afterMove_ = moves.contains(event.text);
    inZone_ = false;
    walked_ += afterMove_ ? 1 : 0;
}

void WalkRule::onPause(const Event& event, const Runs& runs) {
    if (event.kind == Kind::Command) {
        outstanding_ = event.text == QLatin1String("move.reset") || event.text == QLatin1String("move.stop")
                           ? 0
                           : outstanding_ + (event.text == QLatin1String("move.opr.enough") ? 0 : 1);
        stopDue_ = event.text == QLatin1String("move.stop") ? 0 : stopDue_;
    } else if (event.kind == Kind::Result) {
        // After an error the robot has dropped the rest.
        outstanding_ = event.value < 0 ? 0 : qMax(0, outstanding_ - 1);
    } else if (event.kind == Kind::Pause && !runs.inPower() && (outstanding_ > 0 || !event.facts.robotIdle)) {
        stopDue_ = event.action;
    } else if (event.kind == Kind::Done && stopDue_ != 0 && event.action == stopDue_) {
        broken(QStringLiteral("a pause did not stop the robot"));
        stopDue_ = 0;
    }
}

}  // namespace campaign
