#include "panel/lumobmodule.h"

#include "kord/managerhelper.h"
#include "look/type.h"
#include "mendo/creatormanager.h"
#include "module/host.h"
#include "panel/lumowidget.h"
#include "pel/navo.h"

namespace {

/// The host's interface level that the package was built for.
constexpr int pluginLevel = 11;
/// The package's name in the host's registries.
constexpr QLatin1String packageName("lumo");
/// The factory key of the page's module.
constexpr QLatin1String pageModuleKey("rova.robot.pack.lumo");

/// Enters the package into the host's registries while the library is being loaded.
struct Registration {
    Registration() {
        using mendo::CreatorManager;
        bfactory().regist(packageName, CreatorManager::ModuleCreator(
                                           [](QObject* parent) { return new LumoBModule(parent); }));
        mendo::pluginManager().regist(packageName, CreatorManager::ValueCreator([] { return pluginLevel; }));
        bfactory().regist(pageModuleKey, CreatorManager::ModuleCreator(
                                             [](QObject* parent) { return new LumoWidgetBModule(parent); }));
        ver().regist(packageName, CreatorManager::ValueCreator([] { return LUMO_PACKAGE_VERSION; }));
    }
};

const Registration registration;

}  // namespace

LumoBModule::LumoBModule(QObject* parent) : gantu::BModule(parent) {
    lumo::logS() << QStringLiteral("lumo v%1").arg(ver(QString(packageName), true));
    const QString language = kord::ManagerHelper::instance()
                                 ->module()
                                 ->mobj()
                                 ->c(QStringLiteral("language"))
                                 ->getString(QStringLiteral("cn"));
    look::setLanguage(language);
    translator()->installQMTranslator(QStringLiteral(":/lumo/language/lumo_%1.qm").arg(language));
}

QString LumoBModule::name() const {
    return packageName;
}

void LumoBModule::init() {
    const QString title = QObject::tr("激光焊接");
    pel::navo::registerPage(this, title, QStringLiteral("robot.pack"), QString(), -1)
        ->set(this, QStringLiteral("nav"), QString(pageModuleKey), true);
}

LumoWidgetBModule::LumoWidgetBModule(QObject* parent)
    : gantu::BModule(parent), widget_(new LumoWidget(nullptr)) {}

LumoWidgetBModule::~LumoWidgetBModule() {
    delete widget_;
}

QString LumoWidgetBModule::name() const {
    return QStringLiteral("lumowidget");
}

QWidget* LumoWidgetBModule::wgt() {
    return widget_;
}
