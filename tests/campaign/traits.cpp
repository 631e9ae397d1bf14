#include "campaign/names.h"
#include "campaign/statistics.h"

#include <algorithm>

namespace campaign {

namespace {

/// Types of statements that no program should have, points that are missing, and the like.
bool isOdd(const QJsonObject& line) {
    static const QStringList types{QStringLiteral("moveJ"),  QStringLiteral("moveL"), QStringLiteral("moveC"),
                                   QStringLiteral("moveCC"), QStringLiteral("open"),  QStringLiteral("close"),
                                   QStringLiteral("param"),  QStringLiteral("delay"), QStringLiteral("setDO"),
                                   QStringLiteral("waitDI")};
    const QString type = line["type"].toString();
    const bool moves = type.startsWith(QLatin1String("move"));
    return !types.contains(type) ||
           (moves && (line["point"].toObject().isEmpty() || line["speed"].toInt() <= 0));
}

bool has(const Scenario& scenario, Action::Kind kind) {
    return std::any_of(scenario.actions.begin(), scenario.actions.end(),
                       [kind](const Action& action) { return action.kind == kind; });
}

bool opensWeld(const QJsonArray& program) {
    return std::any_of(program.begin(), program.end(), [](const QJsonValue& line) {
        return line.toObject()["type"].toString() == QLatin1String("open");
    });
}

}  // namespace

QStringList traitsOf(const Scenario& scenario) {
    QStringList traits{QStringLiteral("stage: ") + nameOf(scenario.stage)};
    const auto add = [&traits](bool holds, const char* trait) {
        if (holds) {
            traits << QString::fromLatin1(trait);
        }
    };
    add(opensWeld(scenario.program), "program welds");
    add(std::any_of(scenario.program.begin(), scenario.program.end(),
                    [](const QJsonValue& line) { return isOdd(line.toObject()); }),
        "program has an odd line");
    add(!scenario.disabledPorts.isEmpty(), "ports disabled");
    add(!scenario.writeMulti, "controller without write_multi");
    add(scenario.axes == 7, "seven axes");
    add(scenario.dtMs != 20, "odd ramp step");
    add(!scenario.automatic, "begins in manual mode");
    add(scenario.endExecutor, "ends with the executor deleted");
    const std::pair<Action::Kind, const char*> kinds[] = {
        {Action::Kind::Quirk, "controller quirk"},         {Action::Kind::Fail, "motion error"},
        {Action::Kind::Result, "result nobody asked for"}, {Action::Kind::Power, "power loss"},
        {Action::Kind::Replace, "program replaced"},       {Action::Kind::Edit, "statement edited"},
        {Action::Kind::Hand, "work at the page"},          {Action::Kind::Panel, "page closed"},
        {Action::Kind::Quit, "application quits"}};
    for (const auto& kind : kinds) {
        add(has(scenario, kind.first), kind.second);
    }
    return traits;
}

}  // namespace campaign
