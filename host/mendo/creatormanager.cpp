#include "mendo/creatormanager.h"

#include "gantu/bmodule.h"

#include <QDebug>

namespace mendo {

void CreatorManager::regist(const QString& key, const ModuleCreator& creator) {
    values_.remove(key);
    modules_.insert(key, creator);
}

void CreatorManager::regist(const QString& key, const ValueCreator& creator) {
    modules_.remove(key);
    values_.insert(key, creator);
}

bool CreatorManager::contains(const QString& key) const {
    return modules_.contains(key) || values_.contains(key);
}

gantu::BModule* CreatorManager::create(const QString& key, QObject* parent) const {
    const ModuleCreator creator = modules_.value(key);
    return creator ? creator(parent) : nullptr;
}

int CreatorManager::value(const QString& key, int def) const {
    const ValueCreator creator = values_.value(key);
    return creator ? creator() : def;
}

// The registries are created by the first registration (before main() or while a package is loaded) and
// never destroyed.

CreatorManager& pluginManager() {
    static auto* manager = new CreatorManager;
    return *manager;
}

}  // namespace mendo

mendo::CreatorManager& bfactory() {
    static auto* manager = new mendo::CreatorManager;
    return *manager;
}

mendo::CreatorManager& ver() {
    static auto* manager = new mendo::CreatorManager;
    return *manager;
}

int ver(const QString& name, bool logUnknown) {
    if (logUnknown && !ver().contains(name)) {
        qDebug().noquote() << "no version is registered for" << name;
    }
    return ver().value(name);
}
