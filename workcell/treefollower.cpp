#include "workcell/treefollower.h"

#include "kord/kordservice.h"
#include "mendo/modulemanager.h"
#include "program/words.h"

#include <algorithm>
#include <iterator>

namespace workcell {

using mendo::ModuleObject;

namespace {

constexpr QLatin1String packagePaths[] = {prog::key::execute, prog::key::current, prog::key::curParam,
                                          prog::key::count, prog::key::processTime};

bool isBelow(const QString& path, QLatin1String root) {
    return path.startsWith(root) && path.mid(root.size()).startsWith(QLatin1Char('.'));
}

/// Whether a path is one of the followed ones or below one.
bool isFollowed(const QString& path) {
    return isBelow(path, prog::key::robot) ||
           std::any_of(std::begin(packagePaths), std::end(packagePaths),
                       [&path](QLatin1String root) { return path == root || isBelow(path, root); });
}

}  // namespace

bool Change::byExecutor() const {
    return sender && sender->inherits("LumoExecutor");
}

TreeFollower::TreeFollower(QObject* parent) : QObject(parent) {
    kordservice();  // makes the robot's nodes
    connect(m(prog::key::robot), &ModuleObject::added, this, &TreeFollower::onAdded);
    for (ModuleObject* node : m(prog::key::robot)->cmobjs()) {
        follow(node);
    }
    connect(m()->root(), &ModuleObject::added, this, &TreeFollower::onRootAdded);
    followPackage();
}

void TreeFollower::onRootAdded(const QString& name) {
    if (name != prog::key::lumo) {
        return;
    }
    // The node is empty now; its content is written in one piece.
    connect(m(prog::key::lumo), &ModuleObject::changed, this, &TreeFollower::followPackage);
    connect(m(prog::key::lumo), &ModuleObject::added, this, &TreeFollower::followPackage);
}

void TreeFollower::followPackage() {
    for (const QLatin1String path : packagePaths) {
        follow(m(path));
    }
    for (const QLatin1String path : {prog::key::weldSwitch, prog::key::handWeldSwitch}) {
        if (!m(path)->isNull()) {
            connect(m(path), &ModuleObject::changed, this, &TreeFollower::switchWritten,
                    Qt::UniqueConnection);
        }
    }
}

void TreeFollower::follow(ModuleObject* node, Elements elements) {
    if (node->isNull()) {
        return;
    }
    connect(node, &ModuleObject::changed, this, &TreeFollower::onChanged, Qt::UniqueConnection);
    connect(node, &ModuleObject::added, this, &TreeFollower::onAdded, Qt::UniqueConnection);
    if (node->isList() && elements == Elements::Skip) {
        return;
    }
    for (ModuleObject* child : node->cmobjs()) {
        follow(child, elements);
    }
}

void TreeFollower::followElement(const QString& path) {
    QString there = path;
    while (isFollowed(there) && m(there)->isNull()) {
        there.truncate(there.lastIndexOf(QLatin1Char('.')));
    }
    if (isFollowed(there)) {
        follow(m(there));
    }
}

void TreeFollower::onChanged(const QVariant& value, const QVariant& oldValue, QObject* from) {
    auto* node = qobject_cast<ModuleObject*>(sender());
    const QString path = node->path();
    if (!isFollowed(path)) {
        return;  // removed from the tree meanwhile
    }
    if (!value.isValid()) {
        follow(node);
    }
    emit changed({path, node, value, oldValue, from});
}

// A new node is announced before its value is written. It was added by itself, not as part of a copied point.
void TreeFollower::onAdded(const QString& name) {
    ModuleObject* node = qobject_cast<ModuleObject*>(sender())->c(name);
    if (isFollowed(node->path())) {
        follow(node, Elements::Follow);
    }
}

}  // namespace workcell
