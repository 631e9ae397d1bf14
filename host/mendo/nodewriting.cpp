// The writing operations of ModuleObject. A handler of any signal may change the tree or delete a node,
// this one included. So everything is checked again after each signal.

#include "mendo/branch.h"
#include "mendo/deferreddeletion.h"
#include "mendo/observer.h"
#include "mendo/pathcache.h"

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

/// Whether a child `element` can be made: a name, or the next position of a list or of a node without
/// children.
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

/// Copies `value` to an empty variant. An int is copied in its own width: QVariant would read the whole
/// 64-bit union just after 32 bits of it were written, which costs a failed store forwarding (a tenth of
/// the time of a notification).
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
    if (!observed_ && !Observer::current()) {
        value_ = std::move(value);
        return;
    }
    const QVariant oldValue(std::move(value_));
    copyInto(value_, value);
    const Observed scope([&](Observer* observer) { observer->valueSet(this, {}, value, sender); });
    emit changed(value, oldValue, sender);
}

void ModuleObject::connectNotify(const QMetaMethod& signal) {
    static const QMetaMethod changedSignal = QMetaMethod::fromSignal(&ModuleObject::changed);
    observed_ = observed_ || signal == changedSignal;
}

void ModuleObject::trigger() {
    if (!isNull()) {
        const QVariant current = value_;
        const Observed scope([this](Observer* observer) { observer->announced(this); });
        emit changed(current, current, nullptr);
    }
}

ModuleObject* ModuleObject::set(QObject* sender, const QString& path, const QVariant& value, bool create) {
    if (isNull()) {
        return this;
    }
    if (ModuleObject* known = path.isEmpty() ? this : PathCache::find(this, path)) {
        known->setValue(sender, value);
        return this;
    }
    const QStringView cacheable = PathCache::cacheablePart(path);
    QStringView rest;
    NodeRef node(PathCache::start(this, path, cacheable, &rest));
    for (bool more = true; more;) {
        const QStringView missing = rest;
        const int position = node.find(takeElement(rest, more));
        if (position < 0) {
            if (create) {
                createPath(sender, node, missing, path, value);
            }
            return this;
        }
        node = node.child(position);
        if (node.object()) {
            PathCache::store(this, cacheable, path.size() - rest.size() - (more ? 1 : 0), node.object());
        }
    }
    if (node.object()) {
        node.object()->setValue(sender, value);
    } else {
        node.value() = value;  // a record has no listeners
        const Observed scope([&](Observer* observer) { observer->valueSet(this, path, value, sender); });
    }
    return this;
}

void ModuleObject::createPath(QObject* sender, const NodeRef& parent, QStringView rest, const QString& path,
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
    const bool observed = object && object->isSignalConnected(signal);
    if (!observed) {
        leaf->value = value;
    }
    Branch& branch = parent.ensureBranch();
    becomeContainer(branch, isListElement(first));
    branch.insert(branch.size(), std::move(top));
    if (!observed) {
        const Observed scope([&](Observer* observer) { observer->valueSet(this, path, value, sender); });
        return;
    }
    const QPointer<ModuleObject> self(this);
    const QVariant newValue = value;
    {
        const Observed scope(
            [&](Observer* observer) { observer->inserted(object, branch.size() - 1, sender); });
        object->announceAdded(branch.size() - 1, sender);
    }
    if (self) {
        set(sender, path, newValue, false);
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
    const Observed scope([&](Observer* observer) { observer->inserted(this, branch.size() - 1, sender); });
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

void ModuleObject::removeChild(QObject* sender, int position, bool notify) {
    const Observed scope([&](Observer* observer) { observer->removing(this, position, sender); });
    static const QMetaMethod signal = QMetaMethod::fromSignal(&ModuleObject::removed);
    if (notify && isSignalConnected(signal)) {
        const QPointer<ModuleObject> self(this);
        const QPointer<ModuleObject> child(childAt(position));
        announceRemoved(position, sender);
        if (!self || !child || child->parent_ != this) {
            return;  // a handler has removed the child
        }
        position = child->indexInPmobj();
    }
    if (ModuleObject* child = detach(position)) {
        DeferredDeletion::instance().add(child);
    }
}

bool ModuleObject::remove(QObject* sender, const QString& name, bool notify) {
    const int position = find(name);
    if (position < 0) {
        return false;
    }
    removeChild(sender, position, notify);
    return true;
}

/// Detaches this node from its parent, if any; false when a handler has moved or deleted it.
bool ModuleObject::leaveParent(QObject* sender, bool notify) {
    if (!parent_) {
        return true;
    }
    const QPointer<ModuleObject> self(this);
    const ModuleObject* const parent = parent_;
    const Observed scope([&](Observer* observer) { observer->removing(parent, indexInPmobj(), sender); });
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
    if (!node->leaveParent(sender, notify)) {
        return false;
    }
    if (!self || !makeRoom(sender, node, notify)) {
        // A handler has moved or deleted one of the nodes. A node from the tree has no owner now.
        if (moved && guard && !node->parent_ && !node->removed_) {
            DeferredDeletion::instance().add(node);
        }
        return false;
    }
    attach(node, index);
    const Observed scope([&](Observer* observer) { observer->inserted(this, node->indexInPmobj(), sender); });
    if (notify) {
        announceAdded(node->indexInPmobj(), sender);
    }
    return true;
}

/// Removes a map's child with the name of the new one; false when a handler has made the insertion
/// impossible.
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
    removeChild(sender, position, notify);
    return self && guard && !newcomer->parent_ && !isInside(newcomer) && taken() < 0;
}

void ModuleObject::attach(ModuleObject* node, int index) {
    DeferredDeletion::instance().remove(node);
    Branch& branch = ensureBranch();
    becomeContainer(branch, node->name_.isEmpty());
    if (branch.kind == Kind::Map) {
        if (node->name_.isEmpty()) {
            node->name_ = branch.freshName();
        }
    } else if (node->name_.isEmpty() || node->name_.startsWith(QLatin1Char('#')) ||
               branch.find(node->name_) >= 0) {
        node->name_ = QString();  // name() generates another one
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
    const Observed scope([&](Observer* observer) { observer->contentSet(this, sender); });
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
    const Observed scope([&](Observer* observer) { observer->moved(this, from, to, sender); });
    emit changed(current, current, sender);
}

}  // namespace mendo
