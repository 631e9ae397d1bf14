#include "runner/replay/script.h"

#include "program/words.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace run::replay {

using flight::Record;
using prog::operator""_l1;
using By = Record::By;
using Inside = Record::Inside;
using Kind = Record::Kind;
using Tree = Record::Tree;

namespace {

/// After the last thing that the package did, to see whether it does more.
constexpr qint64 restMs = 1000;

/// What the package writes by itself in a replay, too, and what concerns no run.
constexpr QLatin1String leftOut[] = {prog::key::processTime, prog::key::count, prog::key::keypad,
                                     prog::key::defaults, "lumo.dialog"_l1};

bool isLeftOut(const QString& path) {
    return std::any_of(std::begin(leftOut), std::end(leftOut), [&path](QLatin1String root) {
        return path == root || (path.startsWith(root) && path.mid(root.size()).startsWith(QLatin1Char('.')));
    });
}

bool isState(const Record& record) {
    return record.kind == Kind::Opened || record.kind == Kind::Section || record.kind == Kind::KeyFrame;
}

/// Whether a write of others is repeated. What they write inside of a write or command of the executor they
/// write in the replay by themselves.
bool isAct(const Record& record) {
    return record.kind != Kind::Command && record.inside != Inside::Executor &&
           record.inside != Inside::Command &&
           !isLeftOut(record.object().value(QStringLiteral("p")).toString());
}

bool isInput(const Record& record) {
    if (record.tree == Tree::Pendant) {
        return false;  // keys teach points and move the selection
    }
    return record.by == By::Cell || isAct(record);
}

bool isSameValue(const QJsonValue& a, const QJsonValue& b);

bool isSameList(const QJsonArray& a, const QJsonArray& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), isSameValue);
}

bool isSameObject(const QJsonObject& a, const QJsonObject& b) {
    return a.size() == b.size() && a.keys() == b.keys() &&
           std::equal(a.begin(), a.end(), b.begin(), isSameValue);
}

bool isSameValue(const QJsonValue& a, const QJsonValue& b) {
    constexpr double tolerance = 1e-6;
    if (a.isDouble() && b.isDouble()) {
        const double size = std::max({1.0, std::abs(a.toDouble()), std::abs(b.toDouble())});
        return std::abs(a.toDouble() - b.toDouble()) <= tolerance * size;
    }
    if (a.isArray() && b.isArray()) {
        return isSameList(a.toArray(), b.toArray());
    }
    return a.isObject() && b.isObject() ? isSameObject(a.toObject(), b.toObject()) : a == b;
}

QString jsonText(const QJsonValue& value) {
    const QByteArray list = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(list.mid(1, list.size() - 2));
}

}  // namespace

Script scriptOf(const flight::Recording& recording, const flight::RecordedRun& first,
                const flight::RecordedRun& last) {
    Script script;
    script.startMs = first.startMs;
    bool isInCommand = false;   // the last input was
    bool isOfExecutor = false;  // the last command was
    std::size_t end = first.first;
    for (; end < last.end && recording.records[end].kind != Kind::Quitting; ++end) {
        const Record& record = recording.records[end];
        if (isState(record)) {
            continue;
        }
        if (record.kind == Kind::Command) {
            isOfExecutor = record.isByExecutor();
            script.handCommands += record.by == By::Operator ? 1 : 0;
        }
        if (record.isByExecutor()) {
            script.outputs.push_back(&record);
            continue;
        }
        if (!isInput(record)) {
            continue;
        }
        const bool isBelow = record.inside == Inside::Cell && isInCommand;
        isInCommand = (record.inside == Inside::Command && isOfExecutor) || isBelow;
        script.inputs.push_back({&record, script.outputs.size(), isInCommand});
    }
    // Behind the run stands the next one, or what another process has recorded, which has a clock of its own.
    const bool isFollowed = end < recording.records.size() && recording.records[end].kind != Kind::Opened;
    script.endMs = recording.records[isFollowed ? end : end - 1].ms;
    const qint64 lastOutputMs = script.outputs.empty() ? script.startMs : script.outputs.back()->ms;
    script.stopMs =
        std::max(lastOutputMs, std::min(script.endMs, std::max(lastOutputMs, last.endMs) + restMs));
    return script;
}

QString textOf(const Record& record) {
    constexpr int mostCharacters = 400;
    const QJsonObject body = record.object();
    const QString value = jsonText(body.value(QStringLiteral("v")));
    const QString path = body.value(QStringLiteral("p")).toString();
    QString text;
    switch (record.kind) {
        case Kind::Command:
            text = body.value(QStringLiteral("name")).toString() + QLatin1Char(' ') +
                   jsonText(body.value(QStringLiteral("args")));
            break;
        case Kind::Inserted:
            text = QStringLiteral("%1: inserted %2").arg(path, value);
            break;
        case Kind::Removed:
            text = QStringLiteral("%1: removed #%2").arg(path).arg(body.value(QStringLiteral("i")).toInt());
            break;
        case Kind::Announced:
            text = path + QStringLiteral(": announced");
            break;
        default:
            text = QStringLiteral("%1 = %2").arg(path, value);
    }
    return text.size() <= mostCharacters ? text : text.left(mostCharacters) + QStringLiteral("…");
}

bool isSame(const Record& a, const Record& b) {
    return a.kind == b.kind && a.tree == b.tree && (a.body == b.body || isSameObject(a.object(), b.object()));
}

}  // namespace run::replay
