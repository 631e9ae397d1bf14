#include "mendo/modulemanager.h"

#include "mendo/graveyard.h"

#include <QStringList>

namespace mendo {

ModuleManager::ModuleManager() : root_(std::make_unique<ModuleObject>()) {}

ModuleManager* ModuleManager::instance() {
    // Never destroyed: packages keep nodes of the tree until the process ends.
    static auto* manager = new ModuleManager;
    return manager;
}

ModuleObject* ModuleManager::root() const {
    return root_.get();
}

ModuleObject* ModuleManager::regist(QObject* owner, const QString& name) {
    return root_->hasCmobj(name) ? root_->c(name) : root_->append(owner, name);
}

void ModuleManager::setOutermostLoop(int level) {
    Graveyard::instance().setOutermostLoop(level);
}

void ModuleManager::purgeRemoved() {
    Graveyard::instance().purge();
}

}  // namespace mendo

mendo::ModuleManager* m() {
    return mendo::ModuleManager::instance();
}

mendo::ModuleObject* m(const QString& path, mendo::ModuleObject* node) {
    return (node ? node : m()->root())->r(path);
}

QString mName(const QString& a, const QString& b) {
    return mName(a, b, QString());
}

QString mName(const QString& a, const QString& b, const QString& c) {
    QString joined = a;
    for (const QString& part : {b, c}) {
        if (!part.isEmpty()) {
            joined += joined.isEmpty() ? part : QLatin1Char('.') + part;
        }
    }
    return joined;
}

QString mIndex(int index, const QString& text) {
    return QLatin1Char('#') + QString::number(index) + text;
}
