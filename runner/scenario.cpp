#include "runner/scenario.h"

#include "mendo/modulemanager.h"
#include "program/check.h"
#include "program/words.h"
#include "simulator/controller.h"
#include "workcell/safety/event.h"

#include <QDir>
#include <QFileInfo>
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
    Cue,
    CueWord,
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
        {"start", Action::Start, {{"line0", Kind::Integer}, {"station", Kind::Flag, true}}},
        {"once", Action::Once, {{"line0", Kind::Integer}, {"sender", Kind::Flag, true}}},
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

/// The kinds of cues that are no events: the entry before it, and that everything has come to rest.
const QString entryCue = QStringLiteral("entry");
const QString endCue = QStringLiteral("end");

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

/// A whole number of 64 bits.
std::optional<qint64> wholeNumber(const QJsonValue& value) {
    const QVariant number = value.toVariant();
    if (number.userType() == QMetaType::LongLong) {
        return number.toLongLong();
    }
    const double real = value.toDouble();
    if (!value.isDouble() || real != std::trunc(real) || std::abs(real) >= std::ldexp(1.0, 63)) {
        return std::nullopt;
    }
    return qint64(real);
}

/// Why the value of "at" is no time; empty when it is one.
QString timeFault(const QJsonValue& value) {
    const double real = value.toDouble();
    if (!value.isDouble() || real < 0 || real != std::trunc(real)) {
        return QStringLiteral("\"at\" is no whole number from 0");
    }
    return wholeNumber(value)
               ? QString()
               : QStringLiteral("\"at\" is too large: at most %1").arg(std::numeric_limits<qint64>::max());
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
        case Kind::CueWord:
            return noneOf(value, workcell::safety::cueWords() << entryCue << endCue);
        case Kind::Statement:
        case Kind::Station:
        case Kind::Register:
        case Kind::Cue:
            return unless(value.isObject(), "is no object");
    }
    return {};
}

/// The fields of a station's record, of the register of one of its signals, or of a cue.
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
    static const std::vector<Key> cue = {{"kind", Kind::CueWord},
                                         {"name", Kind::Word, true},
                                         {"nth", Kind::Index, true},
                                         {"ms", Kind::Integer, true},
                                         {"due", Kind::Flag, true}};
    return kind == Kind::Register ? reg : kind == Kind::Cue ? cue : station;
}

using EntryFaults = std::vector<EntryFault>;

void findKeyFault(const Key& key, const QString& path, const QJsonValue& value, const QStringList& inputs,
                  EntryFaults* faults);

/// Faults inside a statement or inside the fields of a station.
void findInnerFaults(const QString& path, Kind kind, const QJsonObject& value, EntryFaults* faults) {
    if (kind == Kind::Statement) {
        if (const auto fault = prog::typeFault(value)) {
            prog::Finding finding;
            finding.fault = *fault;
            finding.arguments = {value.value(prog::field::type).toString()};
            faults->push_back({path + QLatin1Char('.') + prog::field::type, prog::englishText(finding),
                               prog::Fault::ActionUnknown});
        }
    }
    if (kind == Kind::Cue && !value.contains(QStringLiteral("kind"))) {
        faults->push_back({path, QStringLiteral("the key \"%1.kind\" is missing").arg(path)});
    }
    if (kind != Kind::Station && kind != Kind::Register && kind != Kind::Cue) {
        return;
    }
    const std::vector<Key>& fields = fieldsOf(kind);
    for (auto entry = value.begin(); entry != value.end(); ++entry) {
        const auto field = std::find_if(fields.begin(), fields.end(), [&entry](const Key& key) {
            return entry.key() == QLatin1String(key.name);
        });
        const QString place = path + QLatin1Char('.') + entry.key();
        if (field == fields.end()) {
            const QString what =
                kind == Kind::Cue ? QStringLiteral("is no key") : QStringLiteral("is no field of a station");
            faults->push_back({place, QStringLiteral("\"%1\" %2").arg(place, what)});
        } else {
            findKeyFault(*field, place, entry.value(), {}, faults);
        }
    }
}

void findKeyFault(const Key& key, const QString& path, const QJsonValue& value, const QStringList& inputs,
                  EntryFaults* faults) {
    const QString fault = kindFault(key.kind, value, inputs);
    if (fault.isEmpty()) {
        findInnerFaults(path, key.kind, value.toObject(), faults);
        return;
    }
    const bool namesInput = key.kind == Kind::Input && value.isString();
    faults->push_back({path, QStringLiteral("\"%1\" %2").arg(path, fault),
                       namesInput ? prog::Fault::EntryInput : prog::Fault::EntryWrong});
}

/// The nodes right below the package's subtree that a scenario may set or make.
constexpr QLatin1String subtrees[] = {
    prog::key::defaults,
    prog::key::port,
    prog::key::param,
    prog::key::signalsConfig,
    prog::key::curParam,
    prog::key::program,
    prog::key::toolset,
    prog::key::stationProgram,
    prog::key::count,
    prog::key::current,
    prog::key::execute,
    prog::key::processTime,
    prog::key::keypad,
    QLatin1String("lumo.dialog"),
    QLatin1String("lumo.allWeldBtnstatus"),
};

/// Whether the tree has, or the package makes, what a path names.
bool isPath(const QString& path) {
    const QString top = path.section(QLatin1Char('.'), 0, 1);
    if (!path.startsWith(prog::key::lumo + QLatin1Char('.'))) {
        return !m(path.section(QLatin1Char('.'), 0, 0))->isNull();
    }
    return std::any_of(std::begin(subtrees), std::end(subtrees),
                       [&top](QLatin1String subtree) { return top == subtree; });
}

/// The project file that an entry loads or binds to a station; empty without one.
QString fileOf(Action action, const QJsonObject& entry) {
    switch (action) {
        case Action::Station:
            return entry.value(QStringLiteral("set"))[prog::field::filePath].toString();
        case Action::Load:
            return entry.value(QStringLiteral("file")).toString();
        default:
            return {};
    }
}

}  // namespace

std::optional<Action> actionFrom(const QString& word) {
    const ActionRow* row = findRow(word);
    return row ? std::optional<Action>(row->action) : std::nullopt;
}

std::vector<EntryFault> findEntryFaults(const QJsonObject& entry, const QStringList& inputs) {
    const QString at = QStringLiteral("at");
    const QString verb = QStringLiteral("do");
    EntryFaults faults;
    for (const QString& key : {at, verb}) {
        if (!entry.contains(key)) {
            faults.push_back({QString(), QStringLiteral("the key \"%1\" is missing").arg(key)});
        }
    }
    const QString late = entry.contains(at) ? timeFault(entry.value(at)) : QString();
    if (!late.isEmpty()) {
        faults.push_back({at, late});
    }
    if (!entry.contains(verb)) {
        return faults;
    }
    const ActionRow* row = findRow(entry.value(verb).toString());
    if (!row) {
        faults.push_back({verb, QStringLiteral("unknown \"do\" \"%1\"").arg(entry.value(verb).toString()),
                          prog::Fault::ActionUnknown});
        return faults;
    }
    QStringList known = {at, verb};
    std::vector<Key> keys = row->keys;
    keys.push_back({"on", Kind::Cue, true});
    for (const Key& key : keys) {
        const QString name = QLatin1String(key.name);
        known.append(name);
        if (entry.contains(name)) {
            findKeyFault(key, name, entry.value(name), inputs, &faults);
        } else if (!key.optional) {
            faults.push_back({QString(), QStringLiteral("the key \"%1\" is missing").arg(name)});
        }
    }
    for (const QString& key : entry.keys()) {
        if (!known.contains(key)) {
            faults.push_back(
                {key, QStringLiteral("\"%1\" has no key \"%2\"").arg(QLatin1String(row->word), key)});
        }
    }
    return faults;
}

std::optional<Scenario> Scenario::read(const QString& file, const QString& shown, const QStringList& inputs,
                                       const QString& folder, Problem* problem) {
    const std::optional<InputArray> text = InputArray::read(file, shown, problem);
    return text ? std::make_optional(fromText(*text, inputs, folder)) : std::nullopt;
}

Scenario Scenario::fromText(const InputArray& text, const QStringList& inputs, const QString& folder) {
    Scenario scenario;
    scenario.text_ = text;
    for (int i = 0; i < text.elementCount(); ++i) {
        scenario.check(i, text.element(i).toObject(), inputs, folder);
    }
    std::stable_sort(scenario.entries_.begin(), scenario.entries_.end(),
                     [](const ScenarioEntry& a, const ScenarioEntry& b) { return a.atMs < b.atMs; });
    return scenario;
}

/// Takes an entry over that can be played.
void Scenario::check(int element, const QJsonObject& entry, const QStringList& inputs,
                     const QString& folder) {
    prog::Finding finding;
    finding.document = prog::Document::Scenario;
    finding.element = element;
    const auto tell = [this, &finding](prog::Fault fault, const QString& path, const QString& argument) {
        finding.fault = fault;
        finding.severity = prog::severityOf(fault);
        finding.path = path;
        finding.arguments = {argument};
        findings_.push_back(finding);
    };
    if (!text_->element(element).isObject()) {
        tell(prog::Fault::NoRecord, {}, {});
        return;
    }
    const EntryFaults faults = findEntryFaults(entry, inputs);
    for (const EntryFault& fault : faults) {
        tell(fault.fault, fault.path, fault.reason);
    }
    const std::optional<Action> action = actionFrom(entry.value(QStringLiteral("do")).toString());
    if (!faults.empty() || !action) {
        return;
    }
    const QString path = entry.value(QStringLiteral("path")).toString();
    if (*action == Action::Set && !isPath(path)) {
        tell(prog::Fault::PathUnknown, QStringLiteral("path"), path);
    }
    const QString file = fileOf(*action, entry);
    if (!file.isEmpty() && !QFileInfo::exists(QDir(folder).absoluteFilePath(file))) {
        tell(prog::Fault::FileUnknown,
             *action == Action::Load ? QStringLiteral("file") : QStringLiteral("set.filePath"), file);
    }
    ScenarioEntry checked{wholeNumber(entry.value(QStringLiteral("at"))).value_or(0), *action, entry,
                          text_->compact(element), element};
    const QJsonValue on = entry.value(QStringLiteral("on"));
    if (on.isObject()) {
        checked.cue = Cue::from(on.toObject());
    }
    (checked.cue ? cued_ : entries_).push_back(std::move(checked));
}

Cue Cue::from(const QJsonObject& on) {
    Cue cue;
    cue.kind = on.value(QStringLiteral("kind")).toString();
    cue.name = on.value(QStringLiteral("name")).toString();
    cue.nth = on.value(QStringLiteral("nth")).toInt();
    if (on.contains(QStringLiteral("ms"))) {
        cue.ms = on.value(QStringLiteral("ms")).toInt();
    }
    cue.isDue = on.value(QStringLiteral("due")).toBool();
    return cue;
}

bool Scenario::hasErrors() const {
    return std::any_of(findings_.begin(), findings_.end(), [](const prog::Finding& finding) {
        return finding.severity == prog::Severity::Error;
    });
}

bool Scenario::has(Action action) const {
    const auto does = [action](const ScenarioEntry& entry) { return entry.action == action; };
    return std::any_of(entries_.begin(), entries_.end(), does) ||
           std::any_of(cued_.begin(), cued_.end(), does);
}

QStringList Scenario::files(const QString& folder) const {
    QStringList names;
    std::vector<ScenarioEntry> all = entries_;
    all.insert(all.end(), cued_.begin(), cued_.end());
    for (const ScenarioEntry& entry : all) {
        const QString name = fileOf(entry.action, entry.keys);
        if (!name.isEmpty()) {
            names.append(QDir(folder).absoluteFilePath(name));
        }
    }
    return names;
}

}  // namespace run
