#include "undo/change.h"

#include "program/words.h"

#include <QJsonObject>

#include <algorithm>
#include <limits>
#include <memory>

using namespace prog;

namespace lumo {

namespace {

bool isContainer(const QJsonValue& value) {
    return value.isObject() || value.isArray();
}

/// Whether a key can be an element of a path.
bool isPathElement(const QString& key) {
    return !key.isEmpty() && !key.startsWith(QLatin1Char('#')) && !key.contains(QLatin1Char('.'));
}

/// Whether both are maps with the same keys, which can be compared one by one.
bool areAlike(const QJsonObject& before, const QJsonObject& after) {
    const QStringList keys = before.keys();
    return keys == after.keys() && std::all_of(keys.begin(), keys.end(), isPathElement);
}

/// A JSON value as the tree keeps it: whole numbers as int.
QVariant variantOf(const QJsonValue& value) {
    if (value.isNull()) {
        return {};
    }
    if (value.isDouble()) {
        const double number = value.toDouble();
        const bool isInt = number >= std::numeric_limits<int>::min() &&
                           number <= std::numeric_limits<int>::max() && number == int(number);
        return isInt ? QVariant(int(number)) : QVariant(number);
    }
    return value.toVariant();
}

bool write(QObject* sender, ModuleObject* row, const Change& change, const QJsonValue& value) {
    if (row->isNull() || (!change.path.isEmpty() && !row->hasRmobj(change.path))) {
        return false;
    }
    if (!isContainer(change.before) && !isContainer(change.after)) {
        row->set(sender, change.path, variantOf(value), false);
        return true;
    }
    ModuleObject* const node = row->r(change.path);
    node->loadJson(sender, value, false);
    if (node->exportToJson() != value) {
        node->loadJson(sender, 0, false);  // a list stays one when it gets an empty map
    }
    node->loadJson(sender, value);
    return true;
}

bool insertRow(QObject* sender, ModuleObject* list, int row, const QJsonValue& content) {
    if (row > list->size()) {
        return false;
    }
    auto node = std::make_unique<ModuleObject>();
    node->loadJson(sender, content, false);
    if (!list->insert(sender, node.get(), true, row)) {
        return false;
    }
    node.release();
    return true;
}

}  // namespace

ModuleObject* listOf(EditedList which) {
    constexpr QLatin1String paths[] = {key::program, key::port, key::param, key::signalsConfig};
    return m(paths[static_cast<int>(which)]);
}

void appendWrites(Changes* changes, const Change& place, const QJsonValue& before, const QJsonValue& after) {
    if (before == after) {
        return;
    }
    Change below = place;
    const QJsonObject map = before.toObject();
    if (before.isObject() && after.isObject() && areAlike(map, after.toObject())) {
        for (auto field = map.begin(); field != map.end(); ++field) {
            below.path = mName(place.path, field.key());
            appendWrites(changes, below, field.value(), after.toObject().value(field.key()));
        }
        return;
    }
    const QJsonArray list = before.toArray();
    if (before.isArray() && after.isArray() && list.size() == after.toArray().size()) {
        for (int i = 0; i < list.size(); ++i) {
            below.path = mName(place.path, mIndex(i));
            appendWrites(changes, below, list[i], after.toArray()[i]);
        }
        return;
    }
    below.before = before;
    below.after = after;
    changes->push_back(below);
}

void appendRows(Changes* changes, EditedList which, const QJsonArray& before, const QJsonArray& after) {
    const int most = std::min(before.size(), after.size());
    int first = 0;
    while (first < most && before[first] == after[first]) {
        ++first;
    }
    int behind = 0;  // rows alike at the end
    while (behind < most - first && before[before.size() - 1 - behind] == after[after.size() - 1 - behind]) {
        ++behind;
    }
    const int old = before.size() - behind, fresh = after.size() - behind;
    if (old == fresh) {
        for (int row = first; row < old; ++row) {
            appendWrites(changes, Change::ofRow(which, Change::Kind::Write, row), before[row], after[row]);
        }
        return;
    }
    for (int row = first; row < old; ++row) {
        Change change = Change::ofRow(which, Change::Kind::Remove, first);
        change.before = before[row];
        changes->push_back(change);
    }
    for (int row = first; row < fresh; ++row) {
        Change change = Change::ofRow(which, Change::Kind::Insert, row);
        change.after = after[row];
        changes->push_back(change);
    }
}

bool carryOut(QObject* sender, const Change& change, bool forward) {
    ModuleObject* const list = listOf(change.list);
    switch (change.kind) {
        case Change::Kind::Write:
            return write(sender, list->c(change.row), change, forward ? change.after : change.before);
        case Change::Kind::Insert:
            return forward ? insertRow(sender, list, change.row, change.after)
                           : list->remove(sender, mIndex(change.row));
        case Change::Kind::Remove:
            return forward ? list->remove(sender, mIndex(change.row))
                           : insertRow(sender, list, change.row, change.before);
        case Change::Kind::Move:
            break;
    }
    return false;
}

int shownRow(const Change& change, bool forward) {
    const int row = change.kind == Change::Kind::Move && forward ? change.to : change.row;
    return std::min(row, listOf(change.list)->size() - 1);
}

}  // namespace lumo
