#include "campaign/invariants.h"

#include "campaign/rules.h"
#include "devices/ports.h"

namespace campaign {

void Outputs::on(const Event& event) {
    if (event.kind == Event::Kind::Write && event.port >= 0) {
        // The set points of a laser that somebody has lit by hand are theirs, whoever writes them.
        const bool isSetPoint = event.port == AO_LASER_POWER || event.port == AO_LASER_FREQUENCY ||
                                event.port == AO_LASER_DUTY_CYCLE;
        const bool isTheirs = isSetPoint && byHand(DO_LASER_ENABLE);
        values_[static_cast<std::size_t>(event.port)] = isTheirs ? 0 : event.value;
        written_[static_cast<std::size_t>(event.port)] = event.value;
        byHand_[static_cast<std::size_t>(event.port)] &= event.value != 0;
    } else if (event.kind == Event::Kind::Foreign) {
        byHand_[static_cast<std::size_t>(event.port)] = event.value != 0;
        if (event.value == 0) {
            values_[static_cast<std::size_t>(event.port)] = 0;
        }
    } else if (event.kind == Event::Kind::Emission) {
        emitting_ = event.value != 0;
    }
}

QStringList Outputs::on() const {
    QStringList names;
    for (const int port : {DO_GAS, DO_WIRE_ENABLE, DO_WIRE_PULLBACK, DO_LASER_ENABLE}) {
        if (value(port) != 0) {
            names << nameOfPort(port);
        }
    }
    for (const int port : {AO_LASER_POWER, AO_LASER_FREQUENCY, AO_LASER_DUTY_CYCLE}) {
        if (value(port) > 0) {
            names << nameOfPort(port);
        }
    }
    return names;
}

Checker::Checker() {
    rules_.push_back(std::make_unique<LaserRule>());
    rules_.push_back(std::make_unique<StopRule>());
    rules_.push_back(std::make_unique<RestRule>());
    rules_.push_back(std::make_unique<StartRule>());
    rules_.push_back(std::make_unique<WalkRule>());
    rules_.push_back(std::make_unique<GasRule>());
    rules_.push_back(std::make_unique<MotionRule>());
    rules_.push_back(std::make_unique<ResumeRule>());
}

void Checker::on(const Event& event) {
    runs_.on(event);
    for (const auto& rule : rules_) {
        rule->on(event, outputs_, runs_);
        broken_ << rule->takeBroken();
    }
    outputs_.on(event);
    if (event.kind == Event::Kind::Complaint) {
        broken_ << event.text;
    }
}

void Checker::end(const Ending& ending) {
    const auto require = [this](bool holds, const QString& words) {
        if (!holds) {
            broken_ << QStringLiteral("at the end of the schedule ") + words;
        }
    };
    require(ending.idle, QStringLiteral("the executor is not idle"));
    require(ending.depth == 0, QStringLiteral("its depth is %1").arg(ending.depth));
    require(ending.pending == 0, QStringLiteral("%1 steps are pending").arg(ending.pending));
    require(ending.boxes == 0, QStringLiteral("%1 messages are left").arg(ending.boxes));
    require(ending.objectsMore == 0, QStringLiteral("%1 objects are left").arg(ending.objectsMore));
    require(
        ending.quitTookMs == 0,
        QStringLiteral("%1 ms have passed since the application was asked to quit").arg(ending.quitTookMs));
    require(ending.station.isEmpty(), ending.station);
    require(ending.timersMore == 0, QStringLiteral("%1 timers are left").arg(ending.timersMore));
    QStringList outputsOn = ending.outputsOn;
    for (const int port : {DO_GAS, DO_WIRE_ENABLE, DO_LASER_ENABLE, DO_WIRE_PULLBACK, AO_LASER_POWER}) {
        // What was switched on by hand goes off with the application alone, and set points are no danger.
        if (outputs_.byHand(port) && (!ending.quit || port >= AO_WIRE_SPEED)) {
            outputsOn.removeAll(nameOfPort(port));
        }
    }
    require(outputsOn.isEmpty(),
            outputsOn.join(QStringLiteral(", ")) + QStringLiteral(" is on at the controller"));
    require(outputs_.on().isEmpty(),
            outputs_.on().join(QStringLiteral(", ")) + QStringLiteral(" is on, as far as was written"));
    require(!outputs_.emitting() || (outputs_.byHand(DO_LASER_ENABLE) && !ending.quit),
            QStringLiteral("the laser source emits"));
    require(ending.lineCount < 0 || (ending.resumeLine >= 0 && ending.resumeLine < ending.lineCount),
            QStringLiteral("the resume line %1 is none of its program, which has %2 lines")
                .arg(ending.resumeLine)
                .arg(ending.lineCount));
}

}  // namespace campaign
