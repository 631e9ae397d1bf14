#include "workcell/treefollower.h"

#include "kord/kordservice.h"
#include "mendo/modulemanager.h"

namespace workcell {

using mendo::ModuleObject;

namespace {

const QString packageName = QStringLiteral("lumo");
const QString robotPath = QStringLiteral("kord.r");

const QStringList& packagePaths() {
    static const QStringList paths = {QStringLiteral("lumo.execute"), QStringLiteral("lumo.current"),
                                      QStringLiteral("lumo.cur_param"), QStringLiteral("lumo.count"),
                                      QStringLiteral("lumo.processTime")};
    return paths;
}

/// Whether a path is one of the followed ones or lies under one.
bool isFollowed(const QString& path) {
    if (path.startsWith(robotPath + QLatin1Char('.'))) {
        return true;
    }
    for (const QString& root : packagePaths()) {
        if (path == root || path.startsWith(root + QLatin1Char('.'))) {
            return true;
        }
    }
    return false;
}

}  // namespace

bool Change::byExecutor() const {
    return sender && sender->inherits("LumoExecutor");
}

TreeFollower::TreeFollower(QObject* parent) : QObject(parent) {
    kordservice();  // makes the robot's nodes
    connect(m(robotPath), &ModuleObject::added, this, &TreeFollower::onAdded);
    for (ModuleObject* node : m(robotPath)->cmobjs()) {
        follow(node);
    }
    connect(m()->root(), &ModuleObject::added, this, &TreeFollower::onRootAdded);
    followPackage();
}

void TreeFollower::onRootAdded(const QString& name) {
    if (name != packageName) {
        return;
    }
    // Its content comes in one piece.
    connect(m(packageName), &ModuleObject::changed, this, &TreeFollower::followPackage);
    connect(m(packageName), &ModuleObject::added, this, &TreeFollower::followPackage);
}

void TreeFollower::followPackage() {
    for (const QString& path : packagePaths()) {
        follow(m(path));
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
        return;  // taken out of the tree since
    }
    if (!value.isValid()) {
        follow(node);
    }
    emit changed({path, node, value, oldValue, from});
}

// What was made is told before its value is written. It came alone, not with a copied point.
void TreeFollower::onAdded(const QString& name) {
    ModuleObject* node = qobject_cast<ModuleObject*>(sender())->c(name);
    if (isFollowed(node->path())) {
        follow(node, Elements::Follow);
    }
}

}  // namespace workcell
