#pragma once

#include <QJsonValue>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringView>
#include <QVariant>

#include <memory>

namespace mendo {

struct Branch;
class NodeRef;
class Slot;

/// A node of the observable data tree: a name, a value and, as a map or a list, children.
///
/// Lookups never return a null pointer: what is not there is the one null node, which ignores writes
/// and whose children are itself. Paths are dotted; the element "#3" is the fourth child of a node.
/// Every write carries a sender and emits `changed` on the node written, and on no other node, also
/// when the new value equals the old one.
///
/// Ownership: a node owns its children. A node without a parent node belongs to whoever made it.
/// Other objects with a node as QObject parent end with it, before anything of the tree comes apart.
/// Nodes that were removed or replaced live on, detached, until nobody on the stack can hold them
/// (see ModuleManager::setOutermostLoop). Children that nobody has asked for are kept as plain
/// records; the QObject is made at the first lookup. GUI thread only.
class ModuleObject : public QObject {
    Q_OBJECT
public:
    /// A node with a node as parent becomes its last child (in a list under a unique name).
    explicit ModuleObject(const QString& name = QString(), ModuleObject* parent = nullptr);
    ~ModuleObject() override;

    /// The one null node of the process.
    static ModuleObject* null();
    virtual bool isNull() const;

    // --- Looking up ---------------------------------------------------------------------------

    /// Direct child by its whole name (a name may hold dots) or, in any node, by "#N".
    /// With `recursive`, where there is none, the first descendant of that name, depth first.
    ModuleObject* c(const QString& name, bool recursive = false) const;
    /// Child by position; the null node for positions outside.
    ModuleObject* c(int index) const;
    /// Node at a relative dotted path; the empty path is the node itself.
    ModuleObject* r(const QString& path) const;
    ModuleObject* cmobj(const QString& name, bool recursive = false) const { return c(name, recursive); }
    ModuleObject* cmobj(int index) const { return c(index); }
    ModuleObject* rmobj(const QString& path) const { return r(path); }
    /// Children in their order; with `recursive` all descendants, depth first.
    QList<ModuleObject*> cmobjs(bool recursive = false) const;
    int cmobjCount() const;
    bool hasCmobj(const QString& name, bool recursive = false) const;
    bool hasRmobj(const QString& path) const;

    QString name() const;
    /// Number of children.
    int size() const { return cmobjCount(); }
    bool isList() const;
    /// Position in the parent, constant time; -1 without a parent.
    int indexInPmobj() const;
    /// Parent node; the null node for a root or detached node.
    ModuleObject* pmobj() const;
    /// Next or previous sibling in constant time; the null node at either end.
    ModuleObject* prevBmobj() const;
    ModuleObject* nextBmobj() const;
    /// Dotted path from the outermost ancestor's child down (a tree root's own name is left out);
    /// elements of lists appear as "#N".
    QString path() const;

    /// The number N of a path whose last section is "#N"; 0 for anything else.
    static int indexOfRname(const QString& name);
    /// A name that no child of the list has and none had; never empty, never starting with '#'.
    static QString generateId(ModuleObject* list);

    // --- Values -------------------------------------------------------------------------------

    /// Own value; invalid for null and for a plain map or list.
    QVariant value() const;
    /// Typed values. Text and numbers convert both ways ("500" is 500, "60.0" is 60), an integer of a
    /// number with a fraction is cut off toward zero, "true" and "false" are booleans in any letter
    /// case and any number but 0 is true. What does not convert, a missing value, infinity,
    /// not-a-number, an integer out of range and the null node give `def`.
    int getInt(int def = 0) const;
    double getDouble(double def = 0.0) const;
    bool getBool(bool def = false) const;
    QString getString(const QString& def = QString()) const;

    // --- Writing ------------------------------------------------------------------------------

    /// Replaces the own value and emits `changed`; children stay.
    virtual void setValue(QObject* sender, QVariant value);
    /// Sets the value at a relative path. With `create`, missing elements are made: maps on the way,
    /// lists where the next element is "#N"; of a list only the next position can be created. Emits
    /// `added` on the parent of what it made, then `changed` on the node. Returns this node.
    ModuleObject* set(QObject* sender, const QString& path, const QVariant& value, bool create = true);
    /// Adds an empty child and returns it. What has no children yet becomes a list by a child without
    /// a name (or "#0"), otherwise a map; that holds for `insert` too. In a map an existing child of that
    /// name is returned; in a list an empty or taken name is replaced by a generated one. The null node adds
    /// nothing.
    ModuleObject* append(QObject* sender, const QString& name = QString());
    /// Takes `node` (out of its parent, if it has one) as a child at `index`, -1 for the end. In a
    /// map an existing child of the same name is replaced, in a list the newcomer is renamed.
    /// Refused (false) for the null node, a node into itself or into its own descendant.
    /// `notify`: emit `added`.
    virtual bool insert(QObject* sender, ModuleObject* node, bool notify = true, int index = -1);
    /// Removes a child by name or "#N"; false when there is none. `removed` is emitted while the
    /// child still knows its position; afterwards it is detached and disposed of later.
    virtual bool remove(QObject* sender, const QString& name, bool notify = true);
    /// Removes all children; a list stays a list. `notify`: one `changed`. `alsoValue`: the own
    /// value goes too.
    void clear(QObject* sender, bool notify = true, bool alsoValue = false);
    /// Moves the child at `from` to position `to` and emits one `changed` on this node. Positions
    /// outside change nothing.
    void reorder(QObject* sender, int from, int to);
    /// Deep copy of value and children. The null node as source empties. Children of a map that
    /// both have stay the same objects, in the source's order; list elements are new and unnamed.
    /// `merge`: children and values that the source lacks stay (list elements are matched by
    /// position). `notify`: one `changed` on this node. A tree is at most 1024 levels deep: what
    /// lies deeper is left out with a warning, here and in every operation that adds nodes.
    void copyFrom(QObject* sender, const ModuleObject* source, bool notify = true, bool merge = false);
    /// Replaces the content with a JSON value, with the rules of `copyFrom`. `{}` or null on a list
    /// empties it and keeps it a list; an undefined value changes nothing. `keepValue`: the own value stays
    /// beside loaded children.
    virtual void loadJson(QObject* sender, const QJsonValue& value, bool notify = true, bool merge = false,
                          bool keepValue = false);
    /// The node as JSON: children if it has any or is a list or a map without a value, else the value
    /// (null for what JSON cannot hold: pointers, not-a-number). Names of list elements are dropped.
    /// `withNulls` false leaves out map entries that are null.
    QJsonValue exportToJson(bool withNulls = true) const;
    /// Emits `changed(value, value, nullptr)` without a write.
    void trigger();

signals:
    void changed(const QVariant& newValue, const QVariant& oldValue, QObject* sender);
    /// The child is in place.
    void added(const QString& name, QObject* sender);
    /// The child can still be asked for its position.
    void removed(const QString& name, QObject* sender);

protected:
    void connectNotify(const QMetaMethod& signal) override;

private:
    friend struct Branch;
    friend class Graveyard;
    friend class NodeRef;

    /// The object of a record, whose value and children it takes over.
    ModuleObject(Slot& slot, ModuleObject* parent, int position);

    int find(QStringView element) const;
    ModuleObject* follow(const QString& path);
    ModuleObject* childAt(int position) const;
    ModuleObject* descendant(const QString& name) const;
    bool isInside(const ModuleObject* node) const;
    int depth() const;
    Branch& ensureBranch();
    void make(QObject* sender, const NodeRef& parent, QStringView rest, const QString& path,
              const QVariant& value);
    void endOwned();
    void announceAdded(int position, QObject* sender);
    void announceRemoved(int position, QObject* sender);
    ModuleObject* detach(int position);
    void takeOut(QObject* sender, int position, bool notify);
    bool leave(QObject* sender, bool notify);
    bool makeRoom(QObject* sender, const ModuleObject* newcomer, bool notify);
    void place(ModuleObject* node, int index);
    void replaceContent(QObject* sender, Slot& content, bool notify, bool merge, bool keepValue);

    QString name_;
    QVariant value_;
    std::unique_ptr<Branch> branch_;
    ModuleObject* parent_ = nullptr;
    mutable int hint_ = -1;  // position when last seen, or the place among the removed nodes
    bool heard_ = false;     // somebody has connected to `changed`
    bool removed_ = false;
    bool dying_ = false;
};

}  // namespace mendo
