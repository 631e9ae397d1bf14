#pragma once

#include "mendo/moduleobject.h"

#include <QHash>
#include <QString>
#include <QStringView>
#include <QVariant>

#include <memory>
#include <vector>

namespace mendo {

/// One child in its parent: a plain record of name, value and children or, after the first lookup, the
/// child's object, which then holds value and children.
///
/// The name of a list element is null until it is asked for. A slot does not own its object: the caller
/// of Branch::take() has to.
class Slot {
public:
    Slot() = default;
    explicit Slot(const QString& slotName) : name(slotName) {}
    Slot(Slot&& other) noexcept;
    Slot& operator=(Slot&& other) noexcept;
    ~Slot();

    /// Children of a record; null for an object and for a record without children.
    Branch* branch() const { return content_ & objectTag ? nullptr : reinterpret_cast<Branch*>(content_); }
    /// The record's branch, made if missing.
    Branch& ensureBranch();
    std::unique_ptr<Branch> takeBranch();

    /// Null for a record.
    ModuleObject* object() const {
        return content_ & objectTag ? reinterpret_cast<ModuleObject*>(content_ & ~objectTag) : nullptr;
    }
    void setObject(ModuleObject* object);

    QString name;
    QVariant value;

private:
    static constexpr quintptr objectTag = 1;
    void drop();
    quintptr content_ = 0;  // 0, a Branch*, or a ModuleObject* with the lowest bit set
};

/// The children of one node, and whether they are a map or a list.
struct Branch {
    enum class Kind : quint8 { Plain, Map, List };

    Branch() = default;
    explicit Branch(Kind branchKind) : kind(branchKind) {}

    int size() const { return static_cast<int>(entries.size()); }
    /// Position of a child by name; -1 when there is none. Unnamed list elements are not found.
    int find(QStringView name);
    /// Position of a child's object.
    int positionOf(const ModuleObject* object);
    /// The slot's name must be unused; in a list it may be null.
    void insert(int position, Slot&& slot);
    Slot take(int position);
    /// Name of a child; an unnamed list element gets one now.
    QString nameAt(int position);
    /// Gives all unnamed list elements their names, without an index of them.
    void nameAll();
    /// A generated name that no child has or had and that is not generated again.
    QString freshName();
    /// Call it after changing `entries` directly.
    void forgetIndex();

    std::vector<Slot> entries;
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

/// Value and children of a node that is an object or still a record; makes no object. Valid until the tree
/// changes.
class NodeRef {
public:
    explicit NodeRef(Slot& slot) : object_(slot.object()), slot_(object_ ? nullptr : &slot) {}
    explicit NodeRef(ModuleObject* object) : object_(object) {}

    QVariant& value() const { return object_ ? object_->value_ : slot_->value; }
    /// Null for a node that never had children.
    Branch* branch() const { return object_ ? object_->branch_.get() : slot_->branch(); }
    Branch& ensureBranch() const { return object_ ? object_->ensureBranch() : slot_->ensureBranch(); }
    /// Null for a record.
    ModuleObject* object() const { return object_; }

    Branch::Kind kind() const { return branch() ? branch()->kind : Branch::Kind::Plain; }
    int size() const { return branch() ? branch()->size() : 0; }
    /// Position of a child by an element of a path: a name or "#N"; -1 without one.
    int find(QStringView element) const;
    NodeRef child(int position) const { return NodeRef(branch()->entries[position]); }
    /// Detaches the children that are objects and leaves them to DeferredDeletion; deletes the records.
    void dropChildren() const;

private:
    ModuleObject* object_ = nullptr;
    Slot* slot_ = nullptr;
};

/// Depth limit of a tree, which makes recursion safe.
constexpr int deepest = 1024;
/// Levels below the node, counted no further than `limit`.
int heightOf(const NodeRef& node, int limit);

}  // namespace mendo
