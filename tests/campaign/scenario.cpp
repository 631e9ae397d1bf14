#include "campaign/scenario.h"

#include "campaign/names.h"

#include <QStringList>

#include <algorithm>

namespace campaign {

namespace {

QString hookName(const Moment& moment) {
    switch (moment.hook) {
        case Event::Kind::Write:
            return QStringLiteral("write of ") +
                   (moment.port < 0 ? QStringLiteral("any port") : nameOfPort(moment.port));
        case Event::Kind::Activity:
            return QStringLiteral("change of activity");
        case Event::Kind::State:
            return QStringLiteral("write of the state");
        case Event::Kind::Line:
            return QStringLiteral("write of the line");
        case Event::Kind::Statement:
            return QStringLiteral("beginning of statement");
        case Event::Kind::WeldFlag:
            return QStringLiteral("write of the weld flag");
        case Event::Kind::Param:
            return QStringLiteral("change of the parameter set");
        case Event::Kind::Node:
            return QStringLiteral("write of");
        case Event::Kind::Output:
            return QStringLiteral("output statement");
        case Event::Kind::Command:
            return QStringLiteral("command");
        case Event::Kind::Result:
            return QStringLiteral("result");
        case Event::Kind::Robot:
            return QStringLiteral("change of the robot's state to");
        default:
            return QStringLiteral("event");
    }
}

QString onOff(bool on) {
    return on ? QStringLiteral("on") : QStringLiteral("off");
}

}  // namespace

QString Moment::toText() const {
    switch (kind) {
        case Kind::At:
            return QStringLiteral("at %1 ms").arg(ms);
        case Kind::After:
            return QStringLiteral("%1 ms after the one before").arg(ms);
        case Kind::InWait:
            return QStringLiteral("%1 ms after wait %2 #%3 %4%5")
                .arg(ms)
                .arg(text)
                .arg(nth)
                .arg(fromDue ? QStringLiteral("is due") : QStringLiteral("begins"),
                     behind ? QStringLiteral(", behind polls") : QString());
        case Kind::Inside:
            return QStringLiteral("inside %1 %2 #%3%4")
                .arg(hookName(*this), text)
                .arg(nth)
                .arg(early ? QStringLiteral(", before the executor hears") : QString());
    }
    return QString();
}

QString Action::toText() const {
    switch (kind) {
        case Kind::Start:
            return QStringLiteral("start line %1 mode %2").arg(number).arg(mode);
        case Kind::Resume:
            return QStringLiteral("resume");
        case Kind::Once:
            return QStringLiteral("once line %1%2").arg(number).arg(on ? "" : " without a sender");
        case Kind::Pause:
            return QStringLiteral("pause");
        case Kind::Power:
            return QStringLiteral("power ") + onOff(on);
        case Kind::Mode:
            return on ? QStringLiteral("mode auto") : QStringLiteral("mode manual");
        case Kind::Weld:
            return QStringLiteral("weld switch ") + onOff(on);
        case Kind::HandWeld:
            return QStringLiteral("hand weld switch ") + onOff(on);
        case Kind::Input:
            return QStringLiteral("input %1 %2").arg(text, onOff(on));
        case Kind::Fail:
            return QStringLiteral("motion error %1").arg(number);
        case Kind::Quirk:
            return QStringLiteral("quirk %1 %2").arg(text, onOff(on));
        case Kind::Replace:
            return QStringLiteral("replace the %1 program").arg(on ? "hand" : "station");
        case Kind::Edit:
            return QStringLiteral("edit %1 at line %2").arg(number).arg(mode);
        case Kind::Result:
            return QStringLiteral("result %1 on %2").arg(number).arg(text);
        case Kind::Param:
            return QStringLiteral("set %1 %2 = %3").arg(number).arg(text).arg(mode);
        case Kind::Fault:
            return QStringLiteral("fault %1 %2").arg(text, onOff(on));
        case Kind::Answer:
            return QStringLiteral("messages are answered");
        case Kind::Hand:
            return QStringLiteral("hand: %1 (%2, %3, %4)").arg(text).arg(number).arg(mode).arg(onOff(on));
        case Kind::Reply:
            return QStringLiteral("reply %1, entering %2").arg(text).arg(number);
        case Kind::Port:
            return QStringLiteral("port %1 %2").arg(nameOfPort(number), text);
        case Kind::Panel:
            return on ? QStringLiteral("page made anew") : QStringLiteral("page closed");
        case Kind::Quit:
            return QStringLiteral("quit");
    }
    return QString();
}

QJsonObject Moment::toJson() const {
    return {{"kind", nameOf(kind)}, {"ms", ms},       {"nth", nth},   {"fromDue", fromDue},
            {"behind", behind},     {"early", early}, {"text", text}, {"hook", nameOf(hook)},
            {"port", port}};
}

QJsonObject Action::toJson() const {
    return {{"kind", nameOf(kind)},
            {"number", number},
            {"mode", mode},
            {"on", on},
            {"text", text},
            {"moment", moment.toJson()},
            {"words", toText() + QStringLiteral(", ") + moment.toText()}};
}

bool Scenario::quits() const {
    return std::any_of(actions.begin(), actions.end(),
                       [](const Action& action) { return action.kind == Action::Kind::Quit; });
}

QJsonObject Scenario::toJson() const {
    QJsonArray disabled;
    for (const int port : disabledPorts) {
        disabled.append(nameOfPort(port));
    }
    QJsonArray schedule;
    for (const Action& action : actions) {
        schedule.append(action.toJson());
    }
    return {{"seed", static_cast<double>(seed)},
            {"stage", nameOf(stage)},
            {"dt", dtMs},
            {"axes", axes},
            {"writeMulti", writeMulti},
            {"automatic", automatic},
            {"weld", weld},
            {"handWeld", handWeld},
            {"disabledPorts", disabled},
            {"endExecutor", endExecutor},
            {"endMs", endMs},
            {"projectOpen", projectOpen},
            {"stations", stations},
            {"projects", projects},
            {"actions", schedule},
            {"sets", sets},
            {"program", program},
            {"otherProgram", otherProgram}};
}

}  // namespace campaign
