#include "campaign/rules.h"
#include "devices/ports.h"

#include <algorithm>

namespace campaign {

using Kind = Event::Kind;

// --- Gas -------------------------------------------------------------------------------------------

void GasRule::on(const Event& event, const Outputs& outputs, const Runs& runs) {
    const bool laserOn = outputs.value(DO_LASER_ENABLE) != 0;
    if (gasOffMs_ >= 0 && event.ms > gasOffMs_) {
        if (laserOn) {
            broken(QStringLiteral("the laser is enabled and the gas is off since %1 ms").arg(gasOffMs_));
        }
        gasOffMs_ = -1;
    }
    postFlowMs_ = std::min(postFlowMs_, event.facts.postFlowMs);
    if (laserOn) {
        laserOffMs_ = event.ms;
    }
    if (laserOn && !closing_) {
        postFlowMs_ = event.facts.postFlowMs;
    }
    // The pull-back's port may not be in use.
    closing_ |= (event.kind == Kind::Write && event.port == DO_WIRE_PULLBACK && event.value != 0) ||
                (event.kind == Kind::Permission && !event.facts.permitted && laserOn);
    unused_ |= !event.facts.gasUsed;
    if (event.kind == Kind::Result && event.value < 0) {
        failedMs_ = event.ms;  // behind its zone it stops the run inside another wait, as a pause does
    }
    if (event.kind == Kind::Pause) {
        pausedMs_ = event.ms;
        postFlowMs_ = event.facts.postFlowMs;
    } else if (event.kind == Kind::Write && event.port == DO_GAS) {
        if (event.value != 0) {
            closing_ = false;
            unused_ = false;
            pausedMs_ = -1;
            failedMs_ = -1;
            laserOffMs_ = -1;
        } else if (outputs.value(DO_GAS) != 0) {
            onGasOff(event, outputs, runs);
        }
    } else if (event.kind == Kind::Write && event.port == DO_LASER_ENABLE && event.value != 0 &&
               event.facts.gasUsed && !unused_ && outputs.written(DO_GAS) == 0) {
        broken(QStringLiteral("the laser is enabled without gas"));
    }
}

void GasRule::onGasOff(const Event& event, const Outputs& outputs, const Runs& runs) {
    if (outputs.value(DO_LASER_ENABLE) != 0) {
        gasOffMs_ = event.ms;
    }
    if (runs.inPower() || (failedMs_ >= 0 && event.ms >= failedMs_ + postFlowMs_)) {
        return;
    }
    const qint64 from = std::max(pausedMs_, pausedMs_ < 0 ? laserOffMs_ : qint64(-1));
    if (from >= 0 && event.ms < from + postFlowMs_) {
        broken(
            QStringLiteral("the gas goes off at %1 ms, %2 ms after %3, before its post-flow of %4 ms is over")
                .arg(event.ms)
                .arg(event.ms - from)
                .arg(pausedMs_ < 0 ? "the laser" : "the pause")
                .arg(postFlowMs_));
    }
}

// --- Motions ---------------------------------------------------------------------------------------

void MotionRule::on(const Event& event, const Outputs&, const Runs& runs) {
    switch (event.kind) {
        case Kind::Quirk:
            falseResults_ = true;
            break;
        case Kind::Start:
        case Kind::Once:
            // Inside a result that the executor has not heard of yet, and then takes for one of the new run.
            falseResults_ |= belongs_;
            break;
        case Kind::Command:
            if (event.text == QLatin1String("move.reset") || event.text == QLatin1String("move.stop")) {
                outstanding_ = 0;
                zones_ = 0;
                belongs_ = false;
            } else if (event.text != QLatin1String("move.opr.enough")) {
                ++outstanding_;
            }
            break;
        case Kind::Result:
            onResult();
            break;
        case Kind::Activity:
            // Somebody has run something inside the notification, before the executor heard of the result.
            belongs_ = false;
            break;
        case Kind::Zone:
            ++zones_;
            break;
        case Kind::Dropped:
            onDropped(event);
            break;
        default:
            break;
    }
    if (runs.ended() && !runs.ended()->disturbed && !falseResults_ && outstanding_ > zones_) {
        broken(QStringLiteral("a run has come to its end with %1 motions that were not awaited")
                   .arg(outstanding_ - zones_));
    }
}

void MotionRule::onResult() {
    if (silent_ && !falseResults_) {
        broken(QStringLiteral("a result that belongs to no motion was passed over in silence"));
    }
    belongs_ = outstanding_ > 0;
    silent_ = !belongs_;
    outstanding_ = std::max(0, outstanding_ - 1);
}

void MotionRule::onDropped(const Event& event) {
    const bool unexpected = event.text.startsWith(QLatin1String("unexpected"));
    silent_ = false;
    if (unexpected && belongs_ && !falseResults_) {
        broken(QStringLiteral("the result of a motion was taken for one that nobody asked for"));
    }
    if (!unexpected && zones_ == 0 && !falseResults_) {
        broken(QStringLiteral("a result was passed over, though no wait has ended in a zone"));
    }
}

// --- Resume ----------------------------------------------------------------------------------------

void ResumeRule::on(const Event& event, const Outputs&, const Runs& runs) {
    if (runs.begun()) {
        line_ = -1;
        action_ = 0;
        edited_ = false;
    }
    // The line that a run leaves behind follows its statement through edits: it need not be the last one.
    if (event.text.startsWith(QLatin1String("edit"))) {
        edited_ = true;
        action_ = 0;
    }
    const Run* const run = runs.current();
    const bool walks = run && run->asked.kind == Kind::Start && !edited_;
    if (event.kind == Kind::Line && walks) {
        if (event.value <= line_ || event.value < run->asked.value) {
            broken(QStringLiteral("a run from line %1 comes to line %2 after line %3")
                       .arg(run->asked.value)
                       .arg(event.value)
                       .arg(line_));
        }
        line_ = event.value;
    }
    if (event.kind == Kind::Pause && walks && line_ >= 0) {
        action_ = event.action;
    } else if (event.kind == Kind::Done && event.action == action_ && action_ != 0) {
        action_ = 0;
        if (event.facts.resumeLine != line_) {
            broken(QStringLiteral("a pause in line %1 leaves line %2 for the resume")
                       .arg(line_)
                       .arg(event.facts.resumeLine));
        }
    }
}

}  // namespace campaign
