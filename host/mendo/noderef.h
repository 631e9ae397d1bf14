#pragma once

#include "mendo/branch.h"
#include "mendo/moduleobject.h"

namespace mendo {

/// A node seen alike whether it is an object or still a record: its value and its children, without
/// an object being made. Valid until the tree changes.
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
    /// Detaches the children that are objects and hands them to the graveyard; the records go.
    void dropChildren() const;

private:
    ModuleObject* object_ = nullptr;
    Slot* slot_ = nullptr;
};

/// No node lies deeper than this below the outermost one: walking a tree recursively is safe.
constexpr int deepest = 1024;
/// Levels below the node, counted no further than `limit`.
int heightOf(const NodeRef& node, int limit);

}  // namespace mendo
