#include "panel/lumobmodule.h"

#include "kord/managerhelper.h"
#include "mendo/creatormanager.h"
#include "module/host.h"
#include "panel/registration.h"
#include "pel/navo.h"

LumoBModule::LumoBModule(QObject* parent) : gantu::BModule(parent) {
    lumo::logS() << QStringLiteral("lumo v%1").arg(ver(QString(lumo::packageName), true));
    const QString language = kord::ManagerHelper::instance()
                                 ->module()
                                 ->mobj()
                                 ->c(QStringLiteral("language"))
                                 ->getString(QStringLiteral("cn"));
    translator()->installQMTranslator(QStringLiteral(":/lumo/language/lumo_%1.qm").arg(language));
}

QString LumoBModule::name() const {
    return lumo::packageName;
}

void LumoBModule::init() {
    const QString title = QObject::tr("激光焊接");
    pel::navo::registerPage(this, title, QStringLiteral("robot.pack"), QString(), -1)
        ->set(this, QStringLiteral("nav"), QString(lumo::pageModuleKey), true);
}
