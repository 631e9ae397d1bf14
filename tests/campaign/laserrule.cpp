#include "campaign/rules.h"
#include "devices/ports.h"

#include <algorithm>

namespace campaign {

using Kind = Event::Kind;

void LaserRule::on(const Event& event, const Outputs& outputs, const Runs& runs) {
    const bool laserOn = outputs.value(DO_LASER_ENABLE) != 0;
    if (laserOn && deadline_ >= 0 && event.ms > deadline_) {
        broken(QStringLiteral("the laser is enabled at %1 ms; after %2 it has to be off by %3 ms")
                   .arg(event.ms)
                   .arg(why_)
                   .arg(deadline_));
        deadline_ = -1;
    }
    onRun(event, runs);
    onCloseStatement(event, runs);
    switch (event.kind) {
        case Kind::Statement:
            announced_ = event.text == QLatin1String("open");
            if (event.text == QLatin1String("close") && event.facts.permitted && laserOn) {
                closeWithin(event, event.facts.decreaseMs + 1, QStringLiteral("a close statement"));
            }
            break;
        case Kind::Param:
            if (announced_) {
                beginOpening(event);
            }
            break;
        case Kind::Pause:
            closeNow(event, outputs, QStringLiteral("a pause"));
            break;
        case Kind::Power:
            if (event.value == 0) {
                closeNow(event, outputs, QString());
                if (laserOn) {
                    closeWithin(event, 0, QStringLiteral("a loss of power"));
                }
            }
            break;
        case Kind::Quit:
            quits_ = true;
            closeNow(event, outputs, QString());
            if (laserOn) {
                closeWithin(event, 0, QStringLiteral("the request to quit"));
            }
            break;
        case Kind::Permission:
            onPermission(event, laserOn);
            break;
        case Kind::Activity:
            if (event.value != 0 && event.facts.wait == QLatin1String("rampdown")) {
                closeNow(event, outputs, QStringLiteral("a closing"));
            }
            break;
        case Kind::Write:
            onWrite(event, outputs);
            break;
        case Kind::Emission:
            if (event.value != 0 && !laserOn && !outputs.byHand(DO_LASER_ENABLE)) {
                broken(QStringLiteral("the source emits, though the laser was not enabled"));
            }
            break;
        default:
            break;
    }
}

void LaserRule::onRun(const Event& event, const Runs& runs) {
    if (const auto& run = runs.begun()) {
        // A weld may be continued by hand, in the program in which it was left open by hand.
        announced_ = run->asked.kind == Kind::Start && run->asked.facts.weldOpen && run->asked.mode == 0 &&
                     weldMode_ == 0 && weldGeneration_ == run->generation;
    }
    if (event.kind == Kind::WeldFlag && event.value != 0 && runs.current()) {
        weldMode_ = runs.current()->asked.mode;
        weldGeneration_ = runs.current()->generation;
    }
    if (event.kind == Kind::Activity && event.facts.depth == 0) {
        announced_ = false;
        armed_ = false;
    }
}

/// A close statement whose closing has begun closes the weld, so that no start opens it again.
void LaserRule::onCloseStatement(const Event& event, const Runs& runs) {
    if (closeBegun_ && (event.kind == Kind::Statement || runs.ended())) {
        if (event.facts.weldOpen) {
            broken(QStringLiteral("the weld counts as open behind its close statement"));
        }
        closeBegun_ = false;
    }
    const bool pullsBack = event.kind == Kind::Write && event.port == DO_WIRE_PULLBACK && event.value != 0;
    if (event.kind == Kind::Statement) {
        closeAhead_ = event.text == QLatin1String("close") && event.facts.permitted;
    } else if (event.kind == Kind::Pause || event.kind == Kind::Power || event.kind == Kind::Permission) {
        closeAhead_ = false;
    } else if (closeAhead_ && pullsBack) {
        closeAhead_ = false;
        closeBegun_ = true;
    }
}

void LaserRule::onPermission(const Event& event, bool laserOn) {
    const bool lost = permitted_ && !event.facts.permitted;
    permitted_ = event.facts.permitted;
    if (!lost || !(armed_ || laserOn)) {
        return;
    }
    armed_ = false;
    if (laserOn) {
        closeWithin(event, event.facts.decreaseMs + 1, QStringLiteral("the loss of the welding permission"));
    }
    closingSince_ = closingSince_ < 0 ? event.ms : closingSince_;
}

void LaserRule::beginOpening(const Event& event) {
    announced_ = false;
    armed_ = event.facts.permitted;
    closingSince_ = -1;
    deadline_ = -1;
    if (!armed_) {
        broken(QStringLiteral("an opening goes on though welding is not permitted"));
    }
}

void LaserRule::closeWithin(const Event& event, int ms, const QString& why) {
    if (deadline_ < 0 || event.ms + ms < deadline_) {
        deadline_ = event.ms + ms;
        why_ = why;
    }
}

/// What ends every weld has come; a second time, when the closing is under way already, it ends it.
void LaserRule::closeNow(const Event& event, const Outputs& outputs, const QString& why) {
    const bool closing = closingSince_ >= 0 && event.ms > closingSince_;
    const bool isCause = event.kind == Kind::Pause;
    if (isCause && outputs.value(DO_LASER_ENABLE) != 0) {
        closeWithin(event, closing ? 0 : event.facts.decreaseMs + 1,
                    closing ? QStringLiteral("a pause in a closing") : why);
    }
    closingSince_ = closingSince_ < 0 ? event.ms : closingSince_;
    announced_ = false;
    armed_ = false;
}

void LaserRule::onWrite(const Event& event, const Outputs& outputs) {
    if (quits_) {
        return;  // what is due in the same turn is undone in it
    }
    const bool laserOn = outputs.value(DO_LASER_ENABLE) != 0;
    const bool switchesOn = event.value != 0;
    if (announced_ && switchesOn && (event.port == DO_GAS || event.port == DO_LASER_ENABLE)) {
        beginOpening(event);
    }
    if (event.port == DO_WIRE_PULLBACK && switchesOn) {
        closeNow(event, outputs, QStringLiteral("a closing"));
    } else if (event.port == DO_GAS && switchesOn && !armed_) {
        broken(QStringLiteral("the gas is switched on outside an opening"));
    } else if (event.port == AO_LASER_POWER && laserOn && !armed_ &&
               event.value > std::max(0, outputs.written(AO_LASER_POWER))) {
        broken(QStringLiteral("a closing raises the laser power from %1 to %2")
                   .arg(outputs.written(AO_LASER_POWER))
                   .arg(event.value));
    } else if (event.port == DO_LASER_ENABLE && switchesOn) {
        if (!armed_) {
            broken(QStringLiteral("the laser is enabled outside a permitted opening"));
        } else if (!event.facts.permitted) {
            broken(QStringLiteral("the laser is enabled though welding is not permitted"));
        }
    } else if (event.port == DO_LASER_ENABLE) {
        if (!armed_ && laserOn && outputs.written(AO_LASER_POWER) > 0) {
            broken(QStringLiteral("a closing disables the laser at power %1, not 0")
                       .arg(outputs.written(AO_LASER_POWER)));
        }
        deadline_ = -1;
    }
}

}  // namespace campaign
