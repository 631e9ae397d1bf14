#include "app/language.h"

#include "gantu/bmodule.h"
#include "gantu/panel.h"
#include "kord/managerhelper.h"

#include <QDir>
#include <QLibraryInfo>

namespace app {

void installLanguage(const QString& language) {
    kord::ManagerHelper::instance()->module()->mobj()->set(nullptr, QStringLiteral("language"), language);
    translator()->installQMTranslator(QStringLiteral(":/app/language/app_%1.qm").arg(language));
    const QString qtName = language == QLatin1String("cn") ? QStringLiteral("zh_CN") : language;
    const QDir folder(QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    translator()->installQMTranslator(folder.filePath(QStringLiteral("qtbase_%1.qm").arg(qtName)));
}

}  // namespace app
