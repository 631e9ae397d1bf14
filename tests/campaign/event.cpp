#include "campaign/event.h"

#include "devices/ports.h"

namespace campaign {

namespace {

QString words(const Event& event) {
    switch (event.kind) {
        case Event::Kind::Start:
            return QStringLiteral("> start line %1 mode %2").arg(event.value).arg(event.mode);
        case Event::Kind::Once:
            return QStringLiteral("> once line %1").arg(event.value);
        case Event::Kind::Pause:
            return QStringLiteral("> pause");
        case Event::Kind::Power:
            return QStringLiteral("> power %1").arg(event.value ? "on" : "off");
        case Event::Kind::Quit:
            return QStringLiteral("> quit");
        case Event::Kind::Replace:
        case Event::Kind::Quirk:
        case Event::Kind::Act:
            return QStringLiteral("> ") + event.text;
        case Event::Kind::Done:
            return QStringLiteral("< done");
        case Event::Kind::Activity:
            return QStringLiteral("activity depth %1 pending %2 %3 %4")
                .arg(event.facts.depth)
                .arg(event.facts.pending)
                .arg(event.facts.wait.isEmpty() ? QStringLiteral("-") : event.facts.wait, event.text);
        case Event::Kind::State:
            return QStringLiteral("state ") + event.text;
        case Event::Kind::Line:
            return QStringLiteral("line %1").arg(event.value);
        case Event::Kind::Statement:
            return QStringLiteral("statement ") + event.text;
        case Event::Kind::WeldFlag:
            return QStringLiteral("weld flag %1").arg(event.value);
        case Event::Kind::Param:
            return QStringLiteral("parameter set %1").arg(event.value);
        case Event::Kind::Node:
            return QStringLiteral("node ") + event.text;
        case Event::Kind::Write:
            return QStringLiteral("write %1 %2").arg(nameOfPort(event.port)).arg(event.value);
        case Event::Kind::Foreign:
            return QStringLiteral("by hand %1 %2").arg(nameOfPort(event.port)).arg(event.value);
        case Event::Kind::Dropped:
            return QStringLiteral("log: ") + event.text;
        case Event::Kind::Output:
            return QStringLiteral("output %1 %2").arg(event.text).arg(event.value);
        case Event::Kind::Command:
            return event.text;
        case Event::Kind::Result:
            return QStringLiteral("result %1 %2").arg(event.text).arg(event.value);
        case Event::Kind::Zone:
            return QStringLiteral("in zone, %1 µm outside").arg(event.value);
        case Event::Kind::Permission:
            return QStringLiteral("permission %1").arg(event.facts.permitted);
        case Event::Kind::Robot:
            return QStringLiteral("robot ") + event.text;
        case Event::Kind::Emission:
            return QStringLiteral("laser emits %1").arg(event.value);
        case Event::Kind::Complaint:
            return QStringLiteral("complaint: ") + event.text;
    }
    return QString();
}

}  // namespace

QString Event::toText() const {
    QString line = QStringLiteral("%1  %2").arg(ms, 7).arg(words(*this));
    if (action > 0) {
        line += QStringLiteral("  [%1]").arg(action);
    }
    return line;
}

QString nameOfPort(int port) {
    switch (port) {
        case DO_GAS:
            return QStringLiteral("GAS");
        case DO_WIRE_ENABLE:
            return QStringLiteral("WIRE");
        case DO_LASER_ENABLE:
            return QStringLiteral("LASER");
        case DO_WIRE_PULLBACK:
            return QStringLiteral("PULLBACK");
        case AO_WIRE_SPEED:
            return QStringLiteral("WIRE_SPEED");
        case AO_LASER_POWER:
            return QStringLiteral("POWER");
        case AO_LASER_FREQUENCY:
            return QStringLiteral("FREQUENCY");
        case AO_LASER_DUTY_CYCLE:
            return QStringLiteral("DUTY_CYCLE");
        default:
            return QStringLiteral("PORT%1").arg(port);
    }
}

}  // namespace campaign
