#pragma once

#include "mendo/slotlist.h"

#include <QHash>
#include <QStringView>

#include <memory>

namespace mendo {

/// The children of one node, and whether they are a map or a list.
struct Branch {
    enum class Kind : quint8 { Plain, Map, List };

    Branch() = default;
    explicit Branch(Kind branchKind) : kind(branchKind) {}

    int size() const { return entries.size(); }
    /// Position of a child by name; -1 when there is none. Unnamed list elements are not found.
    int find(QStringView name);
    /// Position of a child's object.
    int positionOf(const ModuleObject* object);
    /// The slot's name must be unused; in a list it may be null.
    void insert(int position, Slot&& slot);
    Slot take(int position);
    /// Name of a child; an unnamed list element gets one now.
    QString nameAt(int position);
    /// A generated name that no child has or had and that is not generated again.
    QString freshName();
    /// Call it after changing `entries` directly.
    void forgetIndex();

    SlotList entries;
    Kind kind = Kind::Plain;

private:
    // Position where a name was last found, minus the drift then. `text` is the data of the slot's own
    // name, so that a search compares addresses.
    struct IndexEntry {
        const void* text;
        int hint;
    };
    struct Names {
        QHash<QStringView, IndexEntry> index;  // keys are views of the slots' names
        quint64 next = 1;
        int drift = 0;  // distance of the last name found from its hint
        bool complete = false;
    };
    Names& names();
    void buildIndex();
    void addToIndex(const QString& name, int position);
    void reserveGenerated(const QString& name);
    template <typename Matches>
    int search(int from, Matches matches);

    // Search steps since the hints were renewed. A renewal costs size() steps.
    int searched_ = 0;
    std::unique_ptr<Names> names_;
};

/// A shared copy of a map key, so that equal keys of many records share memory.
QString sharedKey(const QString& name);

/// The number after the first character; -1 when there are other characters than digits.
int numberOfElement(QStringView element);

/// N of the path element "#N"; -1 for anything else.
inline int positionOfElement(QStringView element) {
    return element.size() < 2 || element.front() != QLatin1Char('#') ? -1 : numberOfElement(element);
}

/// Removes the first element from a dotted path and returns it. `more`: another element follows.
inline QStringView takeElement(QStringView& path, bool& more) {
    qsizetype end = 0;  // elements are short: a loop is faster than a call of indexOf()
    while (end < path.size() && path[end] != QLatin1Char('.')) {
        ++end;
    }
    more = end < path.size();
    const QStringView element = path.left(end);
    path = more ? path.mid(end + 1) : QStringView();
    return element;
}

}  // namespace mendo
