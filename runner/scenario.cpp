#include "runner/scenario.h"

#include "runner/project.h"
#include "simulator/controller.h"

#include <QDir>
#include <QJsonArray>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace run {

namespace {

/// What the value of a key may be.
enum class Kind {
    Any,
    Flag,
    Integer,
    Index,
    Negative,
    Percent,
    Text,
    Word,    ///< a text that may be empty
    Digits,  ///< a whole number from 0, or its text
    Triple,
    OnOff,
    ModeWord,
    Input,
    PendantKey,
    Equipment,
    Device,
    Quirk,
    Statement,
    Station,
    Register,
};

struct Key {
    const char* name;
    Kind kind;
    bool optional = false;
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
        {"insert", Action::Insert, {{"line0", Kind::Index}, {"statement", Kind::Statement}}},
        {"remove", Action::Remove, {{"line0", Kind::Index}}},
        {"move", Action::Move, {{"line0", Kind::Index}, {"to0", Kind::Index}}},
        {"enable", Action::Enable, {{"line0", Kind::Index}, {"value", Kind::Flag}}},
        {"place", Action::Place, {{"trans", Kind::Triple}, {"rot", Kind::Triple, true}}},
        {"device",
         Action::Device,
         {{"name", Kind::Device},
          {"value", Kind::Flag},
          {"power", Kind::Percent, true},
          {"frequency", Kind::Percent, true},
          {"dutyCycle", Kind::Percent, true},
          {"wireSpeed", Kind::Percent, true}}},
        {"port", Action::Port, {{"row", Kind::Index}, {"enable", Kind::Flag}}},
        {"station", Action::Station, {{"row", Kind::Index}, {"set", Kind::Station}}},
        {"quit", Action::Quit, {}},
        {"motionError", Action::MotionError, {{"code", Kind::Negative}}},
        {"fault", Action::Fault, {{"name", Kind::Equipment}, {"value", Kind::Flag}}},
        {"quirk", Action::Quirk, {{"name", Kind::Quirk}, {"value", Kind::Flag}}},
    };
    return rows;
}

const ActionRow* findRow(const QString& word) {
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

/// A whole number, or the digits of one.
bool isDigits(const QJsonValue& value) {
    bool isNumber = isInteger(value);
    const int number = value.isString() ? value.toString().toInt(&isNumber) : value.toInt();
    return isNumber && number >= 0;
}

bool isPercent(const QJsonValue& value) {
    constexpr double wholePercent = 100;
    return value.isDouble() && value.toDouble() >= 0 && value.toDouble() <= wholePercent;
}

bool isTriple(const QJsonValue& value) {
    const QJsonArray numbers = value.toArray();
    return numbers.size() == 3 && std::all_of(numbers.begin(), numbers.end(),
                                              [](const QJsonValue& number) { return number.isDouble(); });
}

QString unless(bool right, const char* reason) {
    return right ? QString() : QString::fromLatin1(reason);
}

QString noneOf(const QJsonValue& value, const QStringList& words) {
    if (value.isString() && words.contains(value.toString())) {
        return {};
    }
    return QStringLiteral("is none of ") + words.join(QStringLiteral(", "));
}

/// Why a value is not of a kind; empty when it is. Statements and stations need only be objects here.
QString kindFault(Kind kind, const QJsonValue& value, const QStringList& inputs) {
    sim::Quirk quirk;
    const QString text = value.toString();
    switch (kind) {
        case Kind::Any:
            return {};
        case Kind::Flag:
            return unless(value.isBool(), "is neither true nor false");
        case Kind::Integer:
            return unless(isInteger(value), "is no whole number");
        case Kind::Index:
            return unless(isInteger(value) && value.toInt() >= 0, "is no whole number from 0");
        case Kind::Negative:
            return unless(isInteger(value) && value.toDouble() < 0, "is no negative whole number");
        case Kind::Percent:
            return unless(isPercent(value), "is no number from 0 to 100");
        case Kind::Text:
            return unless(!text.isEmpty(), "is no text");
        case Kind::Word:
            return unless(value.isString(), "is no text");
        case Kind::Digits:
            return unless(isDigits(value), "is no whole number from 0");
        case Kind::Triple:
            return unless(isTriple(value), "is no list of three numbers");
        case Kind::OnOff:
            return noneOf(value, {QStringLiteral("on"), QStringLiteral("off")});
        case Kind::ModeWord:
            return noneOf(value, {QStringLiteral("auto"), QStringLiteral("manual")});
        case Kind::Input:
            return unless(value.isString() && inputs.contains(text), "names no input");
        case Kind::PendantKey:
            return noneOf(value, {QStringLiteral("next"), QStringLiteral("last"), QStringLiteral("center"),
                                  QStringLiteral("enter"), QStringLiteral("delete")});
        case Kind::Equipment:
            return noneOf(value, {QStringLiteral("laser"), QStringLiteral("head"), QStringLiteral("chiller"),
                                  QStringLiteral("gas"), QStringLiteral("temperature")});
        case Kind::Device:
            return noneOf(value, {QStringLiteral("laserLock"), QStringLiteral("laser"),
                                  QStringLiteral("pilot"), QStringLiteral("gasLock"), QStringLiteral("gas"),
                                  QStringLiteral("wireLock"), QStringLiteral("wire")});
        case Kind::Quirk:
            return unless(value.isString() && sim::Controller::quirkFromName(text, &quirk), "names no quirk");
        case Kind::Statement:
        case Kind::Station:
        case Kind::Register:
            return unless(value.isObject(), "is no object");
    }
    return {};
}

/// The fields of a station's record, or of the register of one of its signals.
const std::vector<Key>& fieldsOf(Kind kind) {
    static const std::vector<Key> station = {
        {"stationname", Kind::Word}, {"filePath", Kind::Word}, {"time", Kind::Digits},
        {"type", Kind::Word},        {"type2", Kind::Word},    {"status", Kind::Word},
        {"DI", Kind::Word},          {"DI_type", Kind::Word},  {"DI_reg", Kind::Register},
        {"DI2", Kind::Word},         {"DI2_type", Kind::Word}, {"DI2_reg", Kind::Register},
        {"DO", Kind::Word},          {"DO_type", Kind::Word},  {"DO_reg", Kind::Register},
        {"DO2", Kind::Word},         {"DO2_type", Kind::Word}, {"DO2_reg", Kind::Register},
    };
    static const std::vector<Key> reg = {{"name", Kind::Word}, {"type", Kind::Word}, {"bias", Kind::Digits}};
    return kind == Kind::Register ? reg : station;
}

/// A fault inside a statement or inside the fields of a station.
std::optional<EntryFault> innerFault(const QString& path, Kind kind, const QJsonObject& value) {
    if (kind == Kind::Statement) {
        if (const auto fault = prog::old::findTypeFault(value)) {
            return EntryFault{path + QLatin1Char('.') + fault->path, findingText(*fault)};
        }
    }
    if (kind != Kind::Station && kind != Kind::Register) {
        return std::nullopt;
    }
    const std::vector<Key>& fields = fieldsOf(kind);
    for (auto entry = value.begin(); entry != value.end(); ++entry) {
        const auto field = std::find_if(fields.begin(), fields.end(), [&entry](const Key& key) {
            return entry.key() == QLatin1String(key.name);
        });
        const QString place = path + QLatin1Char('.') + entry.key();
        const QString fault = field == fields.end() ? QStringLiteral("is no field of a station")
                                                    : kindFault(field->kind, entry.value(), {});
        if (!fault.isEmpty()) {
            return EntryFault{place, QStringLiteral("\"%1\" %2").arg(place, fault)};
        }
        if (const auto inner = innerFault(place, field->kind, entry.value().toObject())) {
            return inner;
        }
    }
    return std::nullopt;
}

std::optional<EntryFault> keyFault(const Key& key, const QJsonObject& entry, const QStringList& inputs) {
    const QString name = QLatin1String(key.name);
    if (!entry.contains(name)) {
        if (key.optional) {
            return std::nullopt;
        }
        return EntryFault{QString(), QStringLiteral("the key \"%1\" is missing").arg(name)};
    }
    const QString fault = kindFault(key.kind, entry.value(name), inputs);
    if (!fault.isEmpty()) {
        return EntryFault{name, QStringLiteral("\"%1\" %2").arg(name, fault)};
    }
    return innerFault(name, key.kind, entry.value(name).toObject());
}

}  // namespace

std::optional<Action> actionFrom(const QString& word) {
    const ActionRow* row = findRow(word);
    return row ? std::optional<Action>(row->action) : std::nullopt;
}

std::optional<EntryFault> findEntryFault(const QJsonObject& entry, const QStringList& inputs) {
    const QString at = QStringLiteral("at");
    const QString verb = QStringLiteral("do");
    for (const QString& key : {at, verb}) {
        if (!entry.contains(key)) {
            return EntryFault{QString(), QStringLiteral("the key \"%1\" is missing").arg(key)};
        }
    }
    if (!isInteger(entry.value(at)) || entry.value(at).toDouble() < 0) {
        return EntryFault{at, QStringLiteral("\"at\" is no whole number from 0")};
    }
    const ActionRow* row = findRow(entry.value(verb).toString());
    if (!row) {
        return EntryFault{verb, QStringLiteral("unknown \"do\" \"%1\"").arg(entry.value(verb).toString())};
    }
    QStringList known = {at, verb};
    for (const Key& key : row->keys) {
        known.append(QLatin1String(key.name));
        if (const auto fault = keyFault(key, entry, inputs)) {
            return fault;
        }
    }
    for (const QString& key : entry.keys()) {
        if (!known.contains(key)) {
            return EntryFault{key,
                              QStringLiteral("\"%1\" has no key \"%2\"").arg(QLatin1String(row->word), key)};
        }
    }
    return std::nullopt;
}

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
