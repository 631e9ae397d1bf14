#include "campaign/shrinker.h"

#include "campaign/scenarioreader.h"

#include <algorithm>
#include <cmath>

namespace campaign {

namespace {

/// What is worth shortening first, since it saves the most of the run; the rest in any order.
QStringList membersOf(const QJsonObject& object) {
    QStringList names = object.keys();
    int front = 0;
    for (const char* first : {"actions", "program", "otherProgram", "sets"}) {
        const int found = names.indexOf(QLatin1String(first));
        if (found >= 0) {
            names.move(found, front++);
        }
    }
    return names;
}

QJsonArray without(const QJsonArray& list, int from, int to) {
    QJsonArray rest;
    for (int i = 0; i < list.size(); ++i) {
        if (i < from || i >= to) {
            rest.append(list[i]);
        }
    }
    return rest;
}

/// The value with another one at the path in it.
QJsonValue replaced(const QJsonValue& whole, const QStringList& path, const QJsonValue& replacement) {
    if (path.isEmpty()) {
        return replacement;
    }
    const QStringList rest = path.mid(1);
    if (whole.isArray()) {
        QJsonArray list = whole.toArray();
        const int index = path.first().toInt();
        list[index] = replaced(list[index], rest, replacement);
        return list;
    }
    QJsonObject object = whole.toObject();
    object[path.first()] = replaced(object[path.first()], rest, replacement);
    return object;
}

}  // namespace

Shrinker::Shrinker(std::function<bool(const QJsonObject&)> fails, int limit)
    : fails_(std::move(fails)), limit_(limit) {}

QJsonValue Shrinker::at(const QStringList& path) const {
    QJsonValue value = current_;
    for (const QString& name : path) {
        value = value.isArray() ? value.toArray()[name.toInt()] : value.toObject()[name];
    }
    return value;
}

/// Takes the replacement over when the schedule still fails. One that makes no other schedule is no trial.
bool Shrinker::accept(const QStringList& path, const QJsonValue& replacement) {
    Scenario scenario;
    QString problem;
    const QJsonObject candidate = replaced(current_, path, replacement).toObject();
    if (trials_ >= limit_ || !scenarioFromJson(candidate, &scenario, &problem) ||
        scenario.toJson() == current_) {
        return false;
    }
    ++trials_;
    if (!fails_(scenario.toJson())) {
        return false;
    }
    current_ = scenario.toJson();
    return true;
}

QJsonObject Shrinker::shrunk(const QJsonObject& failing) {
    current_ = failing;
    QJsonObject before;
    while (before != current_ && trials_ < limit_) {
        before = current_;
        shrink({});
    }
    return current_;
}

void Shrinker::shrink(const QStringList& path) {
    const QJsonValue value = at(path);
    if (value.isArray()) {
        shrinkList(path);
    } else if (value.isObject()) {
        shrinkObject(path);
    } else if (value.isDouble()) {
        shrinkNumber(path);
    } else if (value.toBool()) {
        accept(path, false);
    }
}

/// Leaves out parts of the list, from the whole down to single elements, the last ones first: what comes
/// after the fault is not needed. A list of numbers is one value, a position.
void Shrinker::shrinkList(const QStringList& path) {
    if (at(path).toArray().first().isDouble()) {
        return;
    }
    for (int part = at(path).toArray().size(); part > 0; part /= 2) {
        for (int to = at(path).toArray().size(); to > 0; to -= part) {
            accept(path, without(at(path).toArray(), std::max(0, to - part), to));
        }
    }
    for (int i = 0; i < at(path).toArray().size(); ++i) {
        shrink(path + QStringList(QString::number(i)));
    }
}

void Shrinker::shrinkObject(const QStringList& path) {
    for (const QString& name : membersOf(at(path).toObject())) {
        QJsonObject rest = at(path).toObject();
        rest.remove(name);
        // The seed says where the schedule comes from.
        if (name != QLatin1String("seed") && !accept(path, rest)) {
            shrink(path + QStringList(name));
        }
    }
}

/// Plainer values, the plainest first.
void Shrinker::shrinkNumber(const QStringList& path) {
    const double number = at(path).toDouble();
    for (const double plain : {0.0, 1.0, std::trunc(number / 2)}) {
        if (plain != number && std::abs(plain) < std::abs(number) && accept(path, plain)) {
            return;
        }
    }
}

}  // namespace campaign
