#include "runner/scenario.h"

#include "simulator/controller.h"

#include <QDir>

#include <algorithm>
#include <cmath>
#include <limits>

namespace run {

namespace {

/// What a key of an entry may hold.
enum class Kind { Any, Flag, Integer, Negative, Text, OnOff, ModeWord, Input, PendantKey, Equipment, Quirk };

struct Key {
    const char* name;
    Kind kind;
};

struct ActionRow {
    const char* word;
    Action action;
    std::vector<Key> keys;
};

const std::vector<ActionRow>& actionRows() {
    static const std::vector<ActionRow> rows = {
        {"start", Action::Start, {{"line0", Kind::Integer}}},
        {"once", Action::Once, {{"line0", Kind::Integer}}},
        {"resume", Action::Resume, {}},
        {"pause", Action::Pause, {}},
        {"power", Action::Power, {{"value", Kind::OnOff}}},
        {"mode", Action::Mode, {{"value", Kind::ModeWord}}},
        {"weld", Action::Weld, {{"value", Kind::Flag}}},
        {"handWeld", Action::HandWeld, {{"value", Kind::Flag}}},
        {"input", Action::Input, {{"name", Kind::Input}, {"value", Kind::Flag}}},
        {"set", Action::Set, {{"path", Kind::Text}, {"value", Kind::Any}}},
        {"key", Action::Key, {{"name", Kind::PendantKey}, {"value", Kind::Flag}}},
        {"monitor", Action::Monitor, {{"value", Kind::Flag}}},
        {"load", Action::Load, {{"file", Kind::Text}}},
        {"motionError", Action::MotionError, {{"code", Kind::Negative}}},
        {"fault", Action::Fault, {{"name", Kind::Equipment}, {"value", Kind::Flag}}},
        {"quirk", Action::Quirk, {{"name", Kind::Quirk}, {"value", Kind::Flag}}},
    };
    return rows;
}

const ActionRow* findAction(const QString& word) {
    const auto& rows = actionRows();
    const auto found = std::find_if(
        rows.begin(), rows.end(), [&word](const ActionRow& row) { return word == QLatin1String(row.word); });
    return found == rows.end() ? nullptr : &*found;
}

bool isInteger(const QJsonValue& value) {
    const double number = value.toDouble();
    return value.isDouble() && number == std::trunc(number) &&
           std::abs(number) <= std::numeric_limits<int>::max();
}

QString noneOf(const QJsonValue& value, const QStringList& words) {
    if (value.isString() && words.contains(value.toString()))
        return {};
    return QStringLiteral("is none of ") + words.join(QStringLiteral(", "));
}

/// Why a value is not of a kind; empty when it is.
QString kindFault(Kind kind, const QJsonValue& value, const QStringList& inputs) {
    sim::Quirk quirk;
    switch (kind) {
        case Kind::Any:
            return {};
        case Kind::Flag:
            return value.isBool() ? QString() : QStringLiteral("is neither true nor false");
        case Kind::Integer:
            return isInteger(value) ? QString() : QStringLiteral("is no whole number");
        case Kind::Negative:
            return isInteger(value) && value.toDouble() < 0 ? QString()
                                                            : QStringLiteral("is no negative whole number");
        case Kind::Text:
            return value.isString() && !value.toString().isEmpty() ? QString() : QStringLiteral("is no text");
        case Kind::OnOff:
            return noneOf(value, {QStringLiteral("on"), QStringLiteral("off")});
        case Kind::ModeWord:
            return noneOf(value, {QStringLiteral("auto"), QStringLiteral("manual")});
        case Kind::Input:
            return value.isString() && inputs.contains(value.toString()) ? QString()
                                                                         : QStringLiteral("names no input");
        case Kind::PendantKey:
            return noneOf(value, {QStringLiteral("next"), QStringLiteral("last"), QStringLiteral("center"),
                                  QStringLiteral("enter"), QStringLiteral("delete")});
        case Kind::Equipment:
            return noneOf(value, {QStringLiteral("laser"), QStringLiteral("head"), QStringLiteral("chiller"),
                                  QStringLiteral("gas"), QStringLiteral("temperature")});
        case Kind::Quirk:
            return value.isString() && sim::Controller::quirkFromName(value.toString(), &quirk)
                       ? QString()
                       : QStringLiteral("names no quirk");
    }
    return {};
}

/// What is wrong with an entry, and the key that it concerns.
struct Fault {
    QString key;
    QString reason;
};

std::optional<Fault> entryFault(const QJsonObject& entry, const QStringList& inputs) {
    const QString at = QStringLiteral("at");
    const QString verb = QStringLiteral("do");
    for (const QString& key : {at, verb}) {
        if (!entry.contains(key))
            return Fault{QString(), QStringLiteral("the key \"%1\" is missing").arg(key)};
    }
    if (!isInteger(entry.value(at)) || entry.value(at).toDouble() < 0)
        return Fault{at, QStringLiteral("\"at\" is no whole number from 0")};
    const ActionRow* row = findAction(entry.value(verb).toString());
    if (!row)
        return Fault{verb, QStringLiteral("unknown \"do\" \"%1\"").arg(entry.value(verb).toString())};
    QStringList known = {at, verb};
    for (const Key& key : row->keys) {
        const QString name = QLatin1String(key.name);
        known.append(name);
        if (!entry.contains(name))
            return Fault{QString(), QStringLiteral("the key \"%1\" is missing").arg(name)};
        const QString fault = kindFault(key.kind, entry.value(name), inputs);
        if (!fault.isEmpty())
            return Fault{name, QStringLiteral("\"%1\" %2").arg(name, fault)};
    }
    for (const QString& key : entry.keys()) {
        if (!known.contains(key))
            return Fault{key, QStringLiteral("\"%1\" has no key \"%2\"").arg(QLatin1String(row->word), key)};
    }
    return std::nullopt;
}

}  // namespace

std::optional<Scenario> Scenario::read(const QString& file, const QString& shown, const QStringList& inputs,
                                       Problem* problem) {
    const std::optional<JsonText> text = JsonText::read(file, shown, problem);
    return text ? fromText(*text, inputs, problem) : std::nullopt;
}

std::optional<Scenario> Scenario::fromText(const JsonText& text, const QStringList& inputs,
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
        const std::optional<Fault> fault = entryFault(entry, inputs);
        if (fault) {
            *problem = fault->key.isEmpty() ? text.problemAt(i, who + fault->reason)
                                            : text.problemAt(i, fault->key, who + fault->reason);
            return std::nullopt;
        }
        scenario.entries_.push_back({entry.value(QStringLiteral("at")).toInt(),
                                     findAction(entry.value(QStringLiteral("do")).toString())->action, entry,
                                     text.compact(i)});
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
        if (entry.action == Action::Load)
            names.append(QDir(folder).absoluteFilePath(entry.keys.value(QStringLiteral("file")).toString()));
    }
    return names;
}

}  // namespace run
