#pragma once

#include <QJsonValue>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringView>
#include <QVariant>

#include <functional>
#include <memory>

namespace mendo {

struct Branch;
class NodeRef;
class Slot;

/// A node of the observable data tree: a name, a value and, as a map or a list, children.
///
/// Lookups never return a null pointer. Without a match they return the null node, which ignores writes
/// and whose children are itself. Paths are dotted; the element "#3" is the fourth child of a node.
/// Every write has a sender and emits `changed` on the node written only, even when the value is the same.
///
/// Ownership: a node owns its children. A node without a parent belongs to its creator. Other objects with
/// a node as QObject parent are deleted with it, before the nodes of its subtree. Removed or replaced
/// nodes are detached and deleted later, when no function on the stack can use them (see
/// ModuleManager::setOutermostLoop). Children are plain records until the first lookup makes their
/// QObject. GUI thread only.
class ModuleObject : public QObject {
    Q_OBJECT
public:
    /// With a parent, the node becomes its last child (in a list under a unique name).
    explicit ModuleObject(const QString& name = QString(), ModuleObject* parent = nullptr);
    ~ModuleObject() override;

    /// The null node.
    static ModuleObject* null();
    virtual bool isNull() const;

    // --- Looking up ---------------------------------------------------------------------------

    /// Direct child by its whole name (which may contain dots) or by "#N". With `recursive`, otherwise the
    /// first descendant of that name, depth first.
    ModuleObject* c(const QString& name, bool recursive = false) const;
    /// Child by position; the null node for positions out of range.
    ModuleObject* c(int index) const;
    /// Node at a relative dotted path; the node itself for an empty path.
    ModuleObject* r(const QString& path) const;
    ModuleObject* cmobj(const QString& name, bool recursive = false) const { return c(name, recursive); }
    ModuleObject* cmobj(int index) const { return c(index); }
    ModuleObject* rmobj(const QString& path) const { return r(path); }
    /// Children in order; with `recursive` all descendants, depth first.
    QList<ModuleObject*> cmobjs(bool recursive = false) const;
    int cmobjCount() const;
    bool hasCmobj(const QString& name, bool recursive = false) const;
    bool hasRmobj(const QString& path) const;

    QString name() const;
    /// Number of children.
    int size() const { return cmobjCount(); }
    bool isList() const;
    /// Position in the parent, in constant time; -1 without a parent.
    int indexInPmobj() const;
    /// Parent node; the null node for a root or detached node.
    ModuleObject* pmobj() const;
    /// Previous or next sibling, in constant time; the null node at either end.
    ModuleObject* prevBmobj() const;
    ModuleObject* nextBmobj() const;
    /// Dotted path below the root, whose name is left out; list elements appear as "#N".
    QString path() const;

    /// N of a path whose last element is "#N"; 0 for any other path.
    static int indexOfRname(const QString& name);
    /// A name that no child of the list has or had; never empty, never starting with '#'.
    static QString generateId(ModuleObject* list);

    // --- Values -------------------------------------------------------------------------------

    /// Own value; invalid for the null node and for a map or list without a value.
    QVariant value() const;
    /// Typed values, converted as in mendo/convert.h. `def` for a value that does not convert, and for the
    /// null node.
    int getInt(int def = 0) const;
    double getDouble(double def = 0.0) const;
    bool getBool(bool def = false) const;
    QString getString(const QString& def = QString()) const;

    // --- Writing ------------------------------------------------------------------------------

    /// Replaces the own value and emits `changed`; the children stay.
    virtual void setValue(QObject* sender, QVariant value);
    /// Sets the value at a relative path and returns this node. With `create`, missing nodes of the path
    /// are made: lists where the next element is "#N", maps elsewhere; a list can only grow by its next
    /// position. Emits `added` on the parent of the topmost new node, then `changed` on the node.
    ModuleObject* set(QObject* sender, const QString& path, const QVariant& value, bool create = true);
    /// Adds an empty child and returns it. The first child makes the node a list if it has no name (or
    /// "#0"), otherwise a map; so does `insert`. A map returns an existing child of that name. A list
    /// replaces an empty or used name by a generated one. The null node adds nothing.
    ModuleObject* append(QObject* sender, const QString& name = QString());
    /// Moves `node` from its parent, if any, to position `index` here, -1 for the end. A map replaces an
    /// existing child of the same name, a list renames the new one. False for the null node and for a node
    /// that contains this one. `notify`: emit `added`.
    virtual bool insert(QObject* sender, ModuleObject* node, bool notify = true, int index = -1);
    /// Removes a child by name or "#N"; false when there is none. Emits `removed` before it detaches the
    /// child, which is deleted later.
    virtual bool remove(QObject* sender, const QString& name, bool notify = true);
    /// Removes all children; a list stays a list. `notify`: emit `changed` once. `alsoValue`: remove the
    /// own value, too.
    void clear(QObject* sender, bool notify = true, bool alsoValue = false);
    /// Moves the child at `from` to position `to` and emits `changed` once on this node. Does nothing for
    /// positions out of range.
    void reorder(QObject* sender, int from, int to);
    /// Copies value and children; the null node as source clears both. Map children that exist in both
    /// stay the same objects, in the source's order; list elements are new and unnamed. `merge`: children
    /// and values that the source does not have stay; list elements are matched by position. `notify`:
    /// emit `changed` once on this node. A tree has at most 1024 levels: deeper content is left out with a
    /// warning, here and in every operation that adds nodes.
    void copyFrom(QObject* sender, const ModuleObject* source, bool notify = true, bool merge = false);
    /// Replaces the content with a JSON value, by the rules of `copyFrom`. `{}` or null empties a list and
    /// keeps it a list; an undefined value changes nothing. `keepValue`: keep the own value beside loaded
    /// children.
    virtual void loadJson(QObject* sender, const QJsonValue& value, bool notify = true, bool merge = false,
                          bool keepValue = false);
    /// The same with a list of `count` values, which are asked for one after the other: they need not exist
    /// at the same time.
    void loadList(QObject* sender, int count, const std::function<QJsonValue(int)>& element);
    /// The node as JSON: the children of a list, of a node with children or of a map without a value, else
    /// the value (null for pointers and not-a-number). Names of list elements are dropped. `withNulls`
    /// false leaves out map entries that are null.
    QJsonValue exportToJson(bool withNulls = true) const;
    /// Emits `changed(value, value, nullptr)`.
    void trigger();

signals:
    void changed(const QVariant& newValue, const QVariant& oldValue, QObject* sender);
    /// After the child was inserted.
    void added(const QString& name, QObject* sender);
    /// Before the child is detached.
    void removed(const QString& name, QObject* sender);

protected:
    void connectNotify(const QMetaMethod& signal) override;

private:
    friend struct Branch;
    friend class DeferredDeletion;
    friend class NodeRef;

    /// Makes the object of a record and takes over its value and children.
    ModuleObject(Slot& slot, ModuleObject* parent, int position);

    int find(QStringView element) const;
    ModuleObject* resolve(const QString& path);
    ModuleObject* childAt(int position) const;
    ModuleObject* descendant(const QString& name) const;
    bool isInside(const ModuleObject* node) const;
    int depth() const;
    Branch& ensureBranch();
    void createPath(QObject* sender, const NodeRef& parent, QStringView rest, const QString& path,
                    const QVariant& value);
    void deleteOwnedObjects();
    void announceAdded(int position, QObject* sender);
    void announceRemoved(int position, QObject* sender);
    ModuleObject* detach(int position);
    void removeChild(QObject* sender, int position, bool notify);
    bool leaveParent(QObject* sender, bool notify);
    bool makeRoom(QObject* sender, const ModuleObject* newcomer, bool notify);
    void attach(ModuleObject* node, int index);
    void replaceContent(QObject* sender, Slot& content, bool notify, bool merge, bool keepValue);

    QString name_;
    QVariant value_;
    std::unique_ptr<Branch> branch_;
    ModuleObject* parent_ = nullptr;
    mutable int hint_ = -1;  // last known position in the parent, or among the removed nodes
    bool observed_ = false;  // `changed` was connected once
    bool removed_ = false;
    bool dying_ = false;
};

}  // namespace mendo
