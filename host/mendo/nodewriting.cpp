// The writing operations of ModuleObject. Whatever is announced may run handlers that change the
// tree or delete a node, this one included: after each announcement everything is looked at afresh.

#include "mendo/graveyard.h"
#include "mendo/moduleobject.h"
#include "mendo/noderef.h"
#include "mendo/pathmemory.h"

#include <QDebug>
#include <QMetaMethod>
#include <QPointer>

#include <utility>

namespace mendo {

namespace {

using Kind = Branch::Kind;

bool isListElement(QStringView element) {
    return positionOfElement(element) >= 0;
}

/// Whether a child can be made under `element`: in a list the next position or a name, in a map a name.
/// What has no children yet becomes what the element asks for.
bool canMake(const NodeRef& parent, QStringView element) {
    const int position = positionOfElement(element);
    if (position >= 0) {
        return position == parent.size() && (parent.size() == 0 || parent.kind() == Kind::List);
    }
    return !element.isEmpty() && element.front() != QLatin1Char('#');
}

void becomeContainer(Branch& branch, bool list) {
    if (branch.size() == 0 && branch.kind != Kind::List) {
        branch.kind = list ? Kind::List : Kind::Map;
    }
}

Slot slotFor(QStringView element) {
    return isListElement(element) ? Slot() : Slot(sharedKey(element.toString()));
}

/// Puts a copy of `value` into an empty variant. An integer is read in the width in which it was just
/// written: QVariant reads twice that, which has to wait until the write has reached the cache, as long as
/// a tenth of a whole notification.
void copyInto(QVariant& empty, const QVariant& value) {
    const QVariant::DataPtr& source = value.data_ptr();
    if (source.type == QMetaType::Int) {
        QVariant::DataPtr& target = empty.data_ptr();
        target.data.i = source.data.i;
        target.type = QMetaType::Int;
        target.is_null = source.is_null;
    } else {
        empty = value;
    }
}

void warnTooDeep(const QString& what) {
    qWarning().noquote() << what << "refused: the tree would be deeper than" << deepest << "levels";
}

}  // namespace

Branch& ModuleObject::ensureBranch() {
    if (!branch_) {
        branch_ = std::make_unique<Branch>();
    }
    return *branch_;
}

void ModuleObject::announceAdded(int position, QObject* sender) {
    static const QMetaMethod signal = QMetaMethod::fromSignal(&ModuleObject::added);
    if (isSignalConnected(signal)) {
        const QString childName = branch_->nameAt(position);
        emit added(childName, sender);
    }
}

void ModuleObject::announceRemoved(int position, QObject* sender) {
    static const QMetaMethod signal = QMetaMethod::fromSignal(&ModuleObject::removed);
    if (isSignalConnected(signal)) {
        const QString childName = branch_->nameAt(position);
        emit removed(childName, sender);
    }
}

void ModuleObject::setValue(QObject* sender, QVariant value) {
    if (!heard_) {
        value_ = std::move(value);
        return;
    }
    const QVariant oldValue(std::move(value_));
    copyInto(value_, value);
    emit changed(value, oldValue, sender);
}

void ModuleObject::connectNotify(const QMetaMethod& signal) {
    static const QMetaMethod changedSignal = QMetaMethod::fromSignal(&ModuleObject::changed);
    heard_ = heard_ || signal == changedSignal;
}

void ModuleObject::trigger() {
    if (!isNull()) {
        const QVariant current = value_;
        emit changed(current, current, nullptr);
    }
}

ModuleObject* ModuleObject::set(QObject* sender, const QString& path, const QVariant& value, bool create) {
    if (isNull()) {
        return this;
    }
    if (ModuleObject* known = path.isEmpty() ? this : PathMemory::recall(this, path)) {
        known->setValue(sender, value);
        return this;
    }
    const QStringView kept = PathMemory::kept(path);
    QStringView rest;
    NodeRef node(PathMemory::start(this, path, kept, &rest));
    for (bool more = true; more;) {
        const QStringView missing = rest;
        const int position = node.find(takeElement(rest, more));
        if (position < 0) {
            if (create) {
                make(sender, node, missing, path, value);
            }
            return this;
        }
        node = node.child(position);
        if (node.object()) {
            PathMemory::remember(this, kept, path.size() - rest.size() - (more ? 1 : 0), node.object());
        }
    }
    if (node.object()) {
        node.object()->setValue(sender, value);
    } else {
        node.value() = value;  // nobody has asked for this node, so nobody listens
    }
    return this;
}

void ModuleObject::make(QObject* sender, const NodeRef& parent, QStringView rest, const QString& path,
                        const QVariant& value) {
    bool more = false;
    const QStringView first = takeElement(rest, more);
    if (!canMake(parent, first)) {
        return;
    }
    Slot top = slotFor(first);
    Slot* leaf = &top;
    int level = depth() + static_cast<int>(QStringView(path).count(QLatin1Char('.'))) + 1;
    if (level > deepest) {
        warnTooDeep(QStringLiteral("a path"));
        return;
    }
    while (more) {
        const QStringView element = takeElement(rest, more);
        if (!canMake(NodeRef(*leaf), element)) {
            return;
        }
        Branch& branch = leaf->ensureBranch();
        becomeContainer(branch, isListElement(element));
        branch.insert(0, slotFor(element));
        leaf = &branch.entries[0];
    }

    static const QMetaMethod signal = QMetaMethod::fromSignal(&ModuleObject::added);
    ModuleObject* object = parent.object();
    const bool heard = object && object->isSignalConnected(signal);
    if (!heard) {
        leaf->value = value;
    }
    Branch& branch = parent.ensureBranch();
    becomeContainer(branch, isListElement(first));
    branch.insert(branch.size(), std::move(top));
    if (heard) {
        const QPointer<ModuleObject> self(this);
        const QVariant newValue = value;
        object->announceAdded(branch.size() - 1, sender);
        if (self) {
            set(sender, path, newValue, false);
        }
    }
}

ModuleObject* ModuleObject::append(QObject* sender, const QString& name) {
    const int existing = name.isEmpty() ? -1 : find(name);
    const bool listElement = name.isEmpty() || isListElement(name);
    if (existing >= 0 && (!isList() || listElement)) {
        return childAt(existing);
    }
    if (isNull()) {
        return null();
    }
    if (depth() + 1 > deepest) {
        warnTooDeep(QStringLiteral("a child"));
        return null();
    }
    Branch& branch = ensureBranch();
    becomeContainer(branch, listElement);
    Slot slot;
    if (branch.kind == Kind::Map) {
        slot.name = listElement ? branch.freshName() : sharedKey(name);
    } else if (existing < 0 && !name.startsWith(QLatin1Char('#')) && !name.isEmpty()) {
        slot.name = name;
    }
    branch.insert(branch.size(), std::move(slot));
    const QPointer<ModuleObject> child(childAt(branch.size() - 1));
    announceAdded(branch.size() - 1, sender);
    return child ? child.data() : null();
}

ModuleObject* ModuleObject::detach(int position) {
    const Slot slot = branch_->take(position);
    ModuleObject* child = slot.object();
    if (child) {
        child->name_ = slot.name;
        child->parent_ = nullptr;
        child->hint_ = -1;
    }
    return child;
}

void ModuleObject::takeOut(QObject* sender, int position, bool notify) {
    static const QMetaMethod signal = QMetaMethod::fromSignal(&ModuleObject::removed);
    if (notify && isSignalConnected(signal)) {
        const QPointer<ModuleObject> self(this);
        const QPointer<ModuleObject> child(childAt(position));
        announceRemoved(position, sender);
        if (!self || !child || child->parent_ != this) {
            return;  // a handler was faster
        }
        position = child->indexInPmobj();
    }
    if (ModuleObject* child = detach(position)) {
        Graveyard::instance().bury(child);
    }
}

bool ModuleObject::remove(QObject* sender, const QString& name, bool notify) {
    const int position = find(name);
    if (position < 0) {
        return false;
    }
    takeOut(sender, position, notify);
    return true;
}

/// Takes this node out of its parent, if it has one; false when a handler let it go another way.
bool ModuleObject::leave(QObject* sender, bool notify) {
    if (!parent_) {
        return true;
    }
    const QPointer<ModuleObject> self(this);
    const ModuleObject* const parent = parent_;
    if (notify) {
        parent_->announceRemoved(indexInPmobj(), sender);
    }
    if (!self || parent_ != parent) {
        return false;
    }
    parent_->detach(indexInPmobj());
    return true;
}

bool ModuleObject::insert(QObject* sender, ModuleObject* node, bool notify, int index) {
    if (!node || node->isNull() || node->dying_ || isInside(node)) {
        return false;
    }
    if (depth() + 1 + heightOf(NodeRef(node), deepest) > deepest) {
        warnTooDeep(QStringLiteral("a node"));
        return false;
    }
    const QPointer<ModuleObject> self(this);
    const QPointer<ModuleObject> guard(node);
    const bool moved = node->parent_;
    if (!node->leave(sender, notify)) {
        return false;
    }
    if (!self || !makeRoom(sender, node, notify)) {
        // Handlers have used or ended either node meanwhile. What came out of a tree is nobody's now.
        if (moved && guard && !node->parent_ && !node->removed_) {
            Graveyard::instance().bury(node);
        }
        return false;
    }
    place(node, index);
    if (notify) {
        announceAdded(node->indexInPmobj(), sender);
    }
    return true;
}

/// Removes the child of a map whose name a newcomer has; false when the newcomer can no longer come.
bool ModuleObject::makeRoom(QObject* sender, const ModuleObject* newcomer, bool notify) {
    const auto taken = [this, newcomer] {
        return isList() || !branch_ || newcomer->name_.isEmpty() ? -1 : branch_->find(newcomer->name_);
    };
    const int position = taken();
    if (position < 0) {
        return !isInside(newcomer);
    }
    const QPointer<ModuleObject> self(this);
    const QPointer<const ModuleObject> guard(newcomer);
    takeOut(sender, position, notify);
    return self && guard && !newcomer->parent_ && !isInside(newcomer) && taken() < 0;
}

void ModuleObject::place(ModuleObject* node, int index) {
    Graveyard::instance().release(node);
    Branch& branch = ensureBranch();
    becomeContainer(branch, node->name_.isEmpty());
    if (branch.kind == Kind::Map) {
        if (node->name_.isEmpty()) {
            node->name_ = branch.freshName();
        }
    } else if (node->name_.isEmpty() || node->name_.startsWith(QLatin1Char('#')) ||
               branch.find(node->name_) >= 0) {
        node->name_ = QString();  // named anew when somebody asks
    }
    const int position = index < 0 || index > branch.size() ? branch.size() : index;
    Slot slot(node->name_);
    slot.setObject(node);
    branch.insert(position, std::move(slot));
    node->parent_ = this;
    node->hint_ = position;
}

void ModuleObject::clear(QObject* sender, bool notify, bool alsoValue) {
    if (isNull()) {
        return;
    }
    NodeRef(this).dropChildren();
    const QVariant oldValue = value_;
    if (alsoValue) {
        value_ = QVariant();
    }
    if (notify) {
        const QVariant newValue = value_;
        emit changed(newValue, oldValue, sender);
    }
}

void ModuleObject::reorder(QObject* sender, int from, int to) {
    if (from < 0 || to < 0 || from >= cmobjCount() || to >= cmobjCount()) {
        return;
    }
    Slot slot = branch_->take(from);
    if (const ModuleObject* child = slot.object()) {
        child->hint_ = to;
    }
    branch_->insert(to, std::move(slot));
    const QVariant current = value_;
    emit changed(current, current, sender);
}

}  // namespace mendo
