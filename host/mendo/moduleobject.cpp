#include "mendo/moduleobject.h"

#include "mendo/branch.h"
#include "mendo/convert.h"
#include "mendo/deferreddeletion.h"
#include "mendo/pathcache.h"

#include <QDebug>
#include <QMetaMethod>
#include <QPointer>
#include <QStringList>

#include <algorithm>
#include <vector>

namespace mendo {

namespace {

void collect(const ModuleObject* node, bool recursive, QList<ModuleObject*>* found) {
    for (int i = 0; i < node->cmobjCount(); ++i) {
        ModuleObject* child = node->c(i);
        found->append(child);
        if (recursive) {
            collect(child, true, found);
        }
    }
}

/// Positions from `node` to its first descendant of that name (depth first), in reverse order.
bool findDescendant(const NodeRef& node, const QString& name, std::vector<int>* positions) {
    for (int i = 0; i < node.size(); ++i) {
        const QString& childName = node.branch()->entries[i].name;
        if ((!childName.isNull() && childName == name) || findDescendant(node.child(i), name, positions)) {
            positions->push_back(i);
            return true;
        }
    }
    return false;
}

/// The null node has no children and ignores every write.
class NullNode final : public ModuleObject {
public:
    bool isNull() const override { return true; }
    void setValue(QObject*, QVariant) override {}
    bool insert(QObject*, ModuleObject*, bool, int) override { return false; }
    bool remove(QObject*, const QString&, bool) override { return false; }
    void loadJson(QObject*, const QJsonValue&, bool, bool, bool) override {}

protected:
    /// Such a connection would never hear anything.
    void connectNotify(const QMetaMethod& signal) override {
        qCritical().noquote() << "connected to" << signal.methodSignature()
                              << "of the null node: the node looked up does not exist";
    }
};

}  // namespace

ModuleObject::ModuleObject(const QString& name, ModuleObject* parent) : name_(name) {
    if (parent) {
        parent->insert(nullptr, this);
    }
}

ModuleObject::ModuleObject(Slot& slot, ModuleObject* parent, int position)
    : name_(slot.name),
      value_(std::move(slot.value)),
      branch_(slot.takeBranch()),
      parent_(parent),
      hint_(position) {
    slot.value = QVariant();
    slot.setObject(this);
}

ModuleObject::~ModuleObject() {
    dying_ = true;
    deleteOwnedObjects();
    if (parent_) {
        parent_->announceRemoved(indexInPmobj(), nullptr);
    }
    if (parent_) {
        parent_->detach(indexInPmobj());
    }
    DeferredDeletion::instance().remove(this);

    // Detach the children first: none may be reached through a half-destroyed parent.
    const std::unique_ptr<Branch> branch = std::move(branch_);
    PathCache::invalidate();
    std::vector<QPointer<ModuleObject>> children;
    for (int i = 0; branch && i < branch->size(); ++i) {
        if (ModuleObject* child = branch->entries[i].object()) {
            child->parent_ = nullptr;
            if (!child->dying_) {
                children.emplace_back(child);
            }
        }
    }
    for (const QPointer<ModuleObject>& child : children) {
        delete child;
    }
}

/// Deletes other objects in the subtree (an executor, a timer) while the tree can still be read and
/// written.
void ModuleObject::deleteOwnedObjects() {
    for (int i = 0; i < cmobjCount(); ++i) {
        ModuleObject* const child = branch_->entries[i].object();
        if (child && !child->dying_) {
            child->deleteOwnedObjects();
        }
    }
    const QList<QObject*> objects = children();
    const std::vector<QPointer<QObject>> owned(objects.begin(), objects.end());
    for (const QPointer<QObject>& object : owned) {
        delete object;
    }
}

ModuleObject* ModuleObject::null() {
    // Never destroyed: lookups may return it until the process ends.
    static auto* node = new NullNode;
    return node;
}

bool ModuleObject::isNull() const {
    return false;
}

// --- Looking up ---------------------------------------------------------------------------------

int ModuleObject::find(QStringView element) const {
    return NodeRef(const_cast<ModuleObject*>(this)).find(element);
}

ModuleObject* ModuleObject::childAt(int position) const {
    Slot& slot = branch_->entries[position];
    if (ModuleObject* object = slot.object()) {
        object->hint_ = position;
        return object;
    }
    return new ModuleObject(slot, const_cast<ModuleObject*>(this), position);
}

ModuleObject* ModuleObject::descendant(const QString& name) const {
    std::vector<int> positions;
    auto* node = const_cast<ModuleObject*>(this);
    if (!findDescendant(NodeRef(node), name, &positions)) {
        return null();
    }
    std::for_each(positions.rbegin(), positions.rend(),
                  [&node](int position) { node = node->childAt(position); });
    return node;
}

ModuleObject* ModuleObject::c(const QString& name, bool recursive) const {
    const int position = find(name);
    if (position >= 0) {
        return childAt(position);
    }
    return recursive ? descendant(name) : null();
}

ModuleObject* ModuleObject::c(int index) const {
    return index >= 0 && index < cmobjCount() ? childAt(index) : null();
}

ModuleObject* ModuleObject::r(const QString& path) const {
    auto* const self = const_cast<ModuleObject*>(this);
    if (path.isEmpty()) {
        return self;
    }
    ModuleObject* const known = PathCache::find(this, path);
    return known ? known : self->resolve(path);
}

ModuleObject* ModuleObject::resolve(const QString& path) {
    const QStringView cacheable = PathCache::cacheablePart(path);
    QStringView rest;
    ModuleObject* node = PathCache::start(this, path, cacheable, &rest);
    for (bool more = true; more;) {
        const int position = node->find(takeElement(rest, more));
        if (position < 0) {
            return null();
        }
        node = node->childAt(position);
        PathCache::store(this, cacheable, path.size() - rest.size() - (more ? 1 : 0), node);
    }
    return node;
}

QList<ModuleObject*> ModuleObject::cmobjs(bool recursive) const {
    QList<ModuleObject*> found;
    found.reserve(cmobjCount());
    collect(this, recursive, &found);
    return found;
}

int ModuleObject::cmobjCount() const {
    return branch_ ? branch_->size() : 0;
}

bool ModuleObject::hasCmobj(const QString& name, bool recursive) const {
    std::vector<int> positions;
    return find(name) >= 0 ||
           (recursive && findDescendant(NodeRef(const_cast<ModuleObject*>(this)), name, &positions));
}

bool ModuleObject::hasRmobj(const QString& path) const {
    NodeRef node(const_cast<ModuleObject*>(this));
    QStringView rest(path);
    for (bool more = !rest.isEmpty(); more;) {
        const int position = node.find(takeElement(rest, more));
        if (position < 0) {
            return false;
        }
        node = node.child(position);
    }
    return !isNull();
}

QString ModuleObject::name() const {
    if (name_.isNull() && parent_) {
        const_cast<ModuleObject*>(this)->name_ = parent_->branch_->nameAt(indexInPmobj());
    }
    return name_;
}

bool ModuleObject::isList() const {
    return branch_ && branch_->kind == Branch::Kind::List;
}

int ModuleObject::indexInPmobj() const {
    return parent_ ? parent_->branch_->positionOf(this) : -1;
}

ModuleObject* ModuleObject::pmobj() const {
    return parent_ ? parent_ : null();
}

ModuleObject* ModuleObject::prevBmobj() const {
    return parent_ ? parent_->c(indexInPmobj() - 1) : null();
}

ModuleObject* ModuleObject::nextBmobj() const {
    return parent_ ? parent_->c(indexInPmobj() + 1) : null();
}

QString ModuleObject::path() const {
    QStringList elements;
    for (const ModuleObject* node = this; node->parent_; node = node->parent_) {
        elements.prepend(node->parent_->isList() ? QLatin1Char('#') + QString::number(node->indexInPmobj())
                                                 : node->name());
    }
    return elements.join(QLatin1Char('.'));
}

bool ModuleObject::isInside(const ModuleObject* node) const {
    for (const ModuleObject* ancestor = this; ancestor; ancestor = ancestor->parent_) {
        if (ancestor == node) {
            return true;
        }
    }
    return false;
}

int ModuleObject::depth() const {
    int levels = 0;
    for (const ModuleObject* node = parent_; node; node = node->parent_) {
        ++levels;
    }
    return levels;
}

int ModuleObject::indexOfRname(const QString& name) {
    return std::max(0, positionOfElement(QStringView(name).mid(name.lastIndexOf(QLatin1Char('.')) + 1)));
}

QString ModuleObject::generateId(ModuleObject* list) {
    static Branch orphans;
    return !list || list->isNull() ? orphans.freshName() : list->ensureBranch().freshName();
}

// --- Values -------------------------------------------------------------------------------------

QVariant ModuleObject::value() const {
    return value_;
}

int ModuleObject::getInt(int def) const {
    return toInt(value_, def);
}

double ModuleObject::getDouble(double def) const {
    return toDouble(value_, def);
}

bool ModuleObject::getBool(bool def) const {
    return toBool(value_, def);
}

QString ModuleObject::getString(const QString& def) const {
    return toText(value_, def);
}

}  // namespace mendo
