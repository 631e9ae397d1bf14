#pragma once

#include "mendo/slotlist.h"

#include <QHash>
#include <QStringView>

#include <memory>

namespace mendo {

/// The children of one node and what kind of container they make.
struct Branch {
    enum class Kind : quint8 { Plain, Map, List };

    Branch() = default;
    explicit Branch(Kind branchKind) : kind(branchKind) {}

    int size() const { return entries.size(); }
    /// Position of a child by name, -1 without one. Elements of a list that have no name yet are not found.
    int find(QStringView name);
    /// Position of a child's object.
    int positionOf(const ModuleObject* object);
    /// `name` of the slot must be free; it may be null in a list.
    void insert(int position, Slot&& slot);
    Slot take(int position);
    /// Name of a child; an element of a list gets one now if it has none.
    QString nameAt(int position);
    /// A name that is free, was given to no child before, and will not be given again.
    QString freshName();
    /// To be called after `entries` were changed directly.
    void forgetIndex();

    SlotList entries;
    Kind kind = Kind::Plain;

private:
    // Where a name was last seen, less the drift. The text is the slot's own, so that a search
    // compares addresses.
    struct Place {
        const void* text;
        int hint;
    };
    struct Names {
        QHash<QStringView, Place> places;  // the keys look at the names in the slots
        quint64 next = 1;
        int drift = 0;  // how far the last name found was from its hint
        bool complete = false;
    };
    Names& names();
    void buildIndex();
    void note(const QString& name, int position);
    void noteGenerated(const QString& name);
    template <typename Matches>
    int search(int from, Matches matches);

    // Steps searched since hints were renewed. A renewal costs as many as there are children.
    int searched_ = 0;
    std::unique_ptr<Names> names_;
};

/// The shared copy of a map key, so that equal keys of a million records are one string.
QString sharedKey(const QString& name);

/// The number behind the first character; -1 when there is anything but digits.
int numberOfElement(QStringView element);

/// N of the path element "#N"; -1 for anything else.
inline int positionOfElement(QStringView element) {
    return element.size() < 2 || element.front() != QLatin1Char('#') ? -1 : numberOfElement(element);
}

/// Cuts the first element off a dotted path; `more` tells whether another one follows.
inline QStringView takeElement(QStringView& path, bool& more) {
    qsizetype end = 0;  // elements are short: looking by hand takes less than a call
    while (end < path.size() && path[end] != QLatin1Char('.')) {
        ++end;
    }
    more = end < path.size();
    const QStringView element = path.left(end);
    path = more ? path.mid(end + 1) : QStringView();
    return element;
}

}  // namespace mendo
