// What makes the package known to a host: four entries in its registries, made while the library is
// loaded and before any object of the package exists.

#include "panel/registration.h"

#include "mendo/creatormanager.h"
#include "panel/lumobmodule.h"
#include "panel/lumowidgetbmodule.h"

namespace {

/// The host's interface level that the package was built for.
constexpr int pluginLevel = 11;

struct Registration {
    Registration() {
        using mendo::CreatorManager;
        bfactory().regist(lumo::packageName, CreatorManager::ModuleCreator(
                                                 [](QObject* parent) { return new LumoBModule(parent); }));
        mendo::pluginManager().regist(lumo::packageName,
                                      CreatorManager::ValueCreator([] { return pluginLevel; }));
        bfactory().regist(lumo::pageModuleKey, CreatorManager::ModuleCreator([](QObject* parent) {
                              return new LumoWidgetBModule(parent);
                          }));
        ver().regist(lumo::packageName, CreatorManager::ValueCreator([] { return LUMO_PACKAGE_VERSION; }));
    }
};

const Registration registration;

}  // namespace
