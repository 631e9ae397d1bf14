#include "runner/scenario.h"

#include <QDir>

#include <algorithm>

namespace run {

std::optional<Scenario> Scenario::read(const QString& file, const QString& shown, const QStringList& inputs,
                                       Problem* problem) {
    const std::optional<InputArray> text = InputArray::read(file, shown, problem);
    return text ? fromText(*text, inputs, problem) : std::nullopt;
}

std::optional<Scenario> Scenario::fromText(const InputArray& text, const QStringList& inputs,
                                           Problem* problem) {
    Scenario scenario;
    for (int i = 0; i < text.array().size(); ++i) {
        const QJsonValue value = text.array().at(i);
        const QString who = QStringLiteral("entry %1: ").arg(i + 1);
        if (!value.isObject()) {
            *problem = text.problemAt(i, who + QStringLiteral("is no object"));
            return std::nullopt;
        }
        const QJsonObject entry = value.toObject();
        const std::optional<EntryFault> fault = findEntryFault(entry, inputs);
        const std::optional<Action> action = actionFrom(entry.value(QStringLiteral("do")).toString());
        if (fault || !action) {
            *problem = fault->path.isEmpty() ? text.problemAt(i, who + fault->reason)
                                             : text.problemAt(i, fault->path, who + fault->reason);
            return std::nullopt;
        }
        scenario.entries_.push_back(
            {entry.value(QStringLiteral("at")).toInt(), *action, entry, text.compact(i)});
    }
    std::stable_sort(scenario.entries_.begin(), scenario.entries_.end(),
                     [](const ScenarioEntry& a, const ScenarioEntry& b) { return a.atMs < b.atMs; });
    return scenario;
}

bool Scenario::has(Action action) const {
    return std::any_of(entries_.begin(), entries_.end(),
                       [action](const ScenarioEntry& entry) { return entry.action == action; });
}

QStringList Scenario::files(const QString& folder) const {
    QStringList names;
    for (const ScenarioEntry& entry : entries_) {
        const QJsonValue name = entry.action == Action::Station
                                    ? entry.keys.value(QStringLiteral("set"))[QStringLiteral("filePath")]
                                    : entry.keys.value(QStringLiteral("file"));
        if (!name.toString().isEmpty()) {
            names.append(QDir(folder).absoluteFilePath(name.toString()));
        }
    }
    return names;
}

}  // namespace run
