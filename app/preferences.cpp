#include "app/preferences.h"

#include "app/options.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

namespace app {

namespace {

const QString kLanguage = QStringLiteral("language");
const QString kFolder = QStringLiteral("folder");
const QString kPendantPlace = QStringLiteral("pendant/place");
const QString kPendantUnfolded = QStringLiteral("pendant/unfolded");

}  // namespace

QString languageOf(const QString& locale) {
    const QString code = locale.section(QLatin1Char('_'), 0, 0);
    if (code == QLatin1String("zh"))
        return QStringLiteral("cn");
    return code == QLatin1String("ru") ? code : QStringLiteral("en");
}

QString checkoutOf(const QString& folder) {
    QDir place(folder);
    do {
        if (place.exists(QStringLiteral("lumo/resources/lumo.json")))
            return place.absolutePath();
    } while (place.cdUp());
    return {};
}

QString defaultFolder(const QString& current) {
    return checkoutOf(current).isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
                                         : current;
}

QString Preferences::language() {
    const QString language = QSettings().value(kLanguage).toString();
    return languages().contains(language) ? language : QString();
}

void Preferences::rememberLanguage(const QString& language) {
    QSettings().setValue(kLanguage, language);
}

QString Preferences::folder() {
    return QSettings().value(kFolder).toString();
}

void Preferences::rememberFolder(const QString& folder) {
    QSettings().setValue(kFolder, folder);
}

std::optional<QPoint> Preferences::pendantPlace() {
    const QVariant place = QSettings().value(kPendantPlace);
    if (place.canConvert<QPoint>())
        return place.toPoint();
    return {};
}

bool Preferences::pendantUnfolded() {
    return QSettings().value(kPendantUnfolded, true).toBool();
}

void Preferences::rememberPendant(const QPoint& place, bool unfolded) {
    QSettings settings;
    settings.setValue(kPendantPlace, place);
    settings.setValue(kPendantUnfolded, unfolded);
}

}  // namespace app
