#include "kord/managerhelper.h"

#include "gantu/bmodule.h"

namespace kord {

ManagerHelper::ManagerHelper() : module_(new gantu::BModule) {
    module_->mobj()->append(nullptr, QStringLiteral("language"));
}

ManagerHelper* ManagerHelper::instance() {
    // Never destroyed: packages read the settings until the process ends.
    static auto* helper = new ManagerHelper;
    return helper;
}

gantu::BModule* ManagerHelper::module() const {
    return module_;
}

}  // namespace kord
