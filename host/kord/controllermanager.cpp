#include "kord/controllermanager.h"

namespace kord {

namespace {

constexpr QLatin1String keypadItem("endtool.keypad.state_change");
constexpr QLatin1String keypadGroup("notify");

mendo::ModuleObject* notifications() {
    static auto* root = new mendo::ModuleObject(QStringLiteral("controller"));
    return root;
}

/// A pressed key is false.
void addKeys(mendo::ModuleObject* item) {
    for (const char* key : {"next", "last", "center", "enter", "delete"}) {
        item->set(nullptr, QLatin1String(key), true);
    }
}

}  // namespace

mendo::ModuleObject* ControllerManager::cmdItemMobj(const QString& item, const QString& group) {
    mendo::ModuleObject* groupNode = notifications()->append(nullptr, group);
    if (groupNode->hasCmobj(item)) {
        return groupNode->c(item);
    }
    mendo::ModuleObject* node = groupNode->append(nullptr, item);
    if (item == keypadItem && group == keypadGroup) {
        addKeys(node);
    }
    return node;
}

}  // namespace kord
