#include "params/setuse.h"

#include "program/words.h"
#include "undo/edit.h"

#include <QStringList>

#include <algorithm>
#include <memory>

using namespace prog;

namespace lumo {

namespace {

constexpr int noSet = -1;

bool usesSets(const ModuleObject* statement) {
    const QString type = statement->c(field::type)->getString();
    return type == statement::open || type == statement::param;
}

/// Where each set was before a change of the list and is now; -1 for one that was deleted.
using SetPlaces = QVector<int>;

/// Every set where it is.
SetPlaces presentPlaces() {
    SetPlaces places;
    for (int set = 0; set < m(key::param)->cmobjCount(); ++set) {
        places.append(set);
    }
    return places;
}

void followAll(QObject* sender, const SetPlaces& places) {
    const QList<ModuleObject*> lines = m(key::program)->cmobjs();
    for (ModuleObject* line : lines) {
        const int set = line->c(field::index)->getInt();
        if (usesSets(line) && set >= 0 && set < places.size() && places[set] != set) {
            Edit::touch(line);
            line->set(sender, field::index, places[set]);
        }
    }
    const int inForce = m(key::curParam)->getInt(noSet);
    if (inForce >= 0 && inForce < places.size() && places[inForce] != inForce) {
        m(key::curParam)->setValue(sender, places[inForce]);
    }
}

}  // namespace

QVector<QList<int>> linesOfAllSets() {
    QVector<QList<int>> used(m(key::param)->cmobjCount());
    const QList<ModuleObject*> lines = m(key::program)->cmobjs();
    for (int line = 0; line < lines.size(); ++line) {
        const int set = lines[line]->c(field::index)->getInt();
        if (usesSets(lines[line]) && set >= 0 && set < used.size()) {
            used[set].append(line);
        }
    }
    return used;
}

QList<int> linesUsing(int set) {
    return linesOfAllSets().value(set);
}

QString lineNumbers(const QList<int>& lines) {
    QStringList numbers;
    for (const int line : lines) {
        numbers.append(QString::number(line + 1));
    }
    return numbers.join(QStringLiteral(", "));
}

ModuleObject* setOf(const ModuleObject* statement) {
    ModuleObject* const set = m(key::param)->c(statement->c(field::index)->getInt());
    return usesSets(statement) && !set->isNull() ? set : nullptr;
}

void useSet(QObject* sender, ModuleObject* statement, const ModuleObject* set) {
    const bool isThere = set && set->pmobj() == m(key::param);
    if (isThere || setOf(statement)) {
        statement->set(sender, field::index, isThere ? set->indexInPmobj() : noSet);
    }
}

void moveSet(QObject* sender, int from, int to) {
    SetPlaces places = presentPlaces();
    if (from < 0 || from >= places.size() || to < 0 || to >= places.size()) {
        return;
    }
    SetPlaces order = places;
    order.move(from, to);
    for (int place = 0; place < order.size(); ++place) {
        places[order[place]] = place;
    }
    m(key::param)->reorder(sender, from, to);
    followAll(sender, places);
}

void removeSet(QObject* sender, int set) {
    SetPlaces places = presentPlaces();
    if (set < 0 || set >= places.size()) {
        return;
    }
    places[set] = noSet;
    for (int behind = set + 1; behind < places.size(); ++behind) {
        places[behind] = behind - 1;
    }
    m(key::param)->remove(sender, mIndex(set, QString()));
    followAll(sender, places);
}

void duplicateSet(QObject* sender, int set) {
    auto copy = std::make_unique<ModuleObject>();
    copy->copyFrom(sender, m(key::param)->c(set));
    copy->set(sender, field::name, freeSetName(copy->c(field::name)->getString()));
    if (m(key::param)->insert(sender, copy.get())) {
        copy.release();
    }
}

bool isSetName(const QString& name) {
    const QList<ModuleObject*> sets = m(key::param)->cmobjs();
    return std::any_of(sets.begin(), sets.end(),
                       [&name](const ModuleObject* set) { return set->c(field::name)->getString() == name; });
}

QString freeSetName(const QString& name) {
    QString free = name;
    for (int number = 2; isSetName(free); ++number) {
        free = QStringLiteral("%1 (%2)").arg(name).arg(number);
    }
    return free;
}

QList<int> refreshCopies(QObject* sender, int set) {
    constexpr std::pair<QLatin1String, QLatin1String> copies[] = {{field::laserPower, field::power},
                                                                  {field::laserDutyCycle, field::ratio}};
    const ModuleObject* const values = m(key::param)->c(set);
    QList<int> lines;
    for (const int line : linesUsing(set)) {
        ModuleObject* const statement = m(key::program)->c(line);
        if (statement->c(field::type)->getString() == statement::open) {
            Edit::touch(statement);
            for (const auto& [copy, original] : copies) {
                statement->set(sender, copy, values->c(original)->getDouble());
            }
            lines.append(line);
        }
    }
    return lines;
}

}  // namespace lumo
