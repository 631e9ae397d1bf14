#include "app/preferences.h"

#include "app/options.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDevice>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSettings>
#include <QStandardPaths>
#include <QVariant>

#include <unistd.h>

namespace app {

namespace {

const QString languageKey = QStringLiteral("language");
const QString folderKey = QStringLiteral("folder");
const QString pendantPlaceKey = QStringLiteral("pendant/place");
const QString pendantUnfoldedKey = QStringLiteral("pendant/unfolded");

bool readMap(QIODevice& file, QSettings::SettingsMap& map) {
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    map = document.object().toVariantMap();
    return document.isObject();
}

/// Whole, or not at all: what is still on its way to the disk when the file is renamed over the old one
/// Qt would not ask about, and leave an empty file on a full disk.
bool writeMap(QIODevice& file, const QSettings::SettingsMap& map) {
    const QByteArray text = QJsonDocument(QJsonObject::fromVariantMap(map)).toJson();
    auto* const onDisk = qobject_cast<QFileDevice*>(&file);
    return file.write(text) == text.size() && onDisk && onDisk->flush() && ::fsync(onDisk->handle()) == 0;
}

/// Of the running program, in the user's configuration.
class Store : public QSettings {
public:
    Store() : QSettings(file(), format()) {}

private:
    static QString file() {
        const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
        return QStringLiteral("%1/%2/%3.json")
            .arg(folder, QCoreApplication::organizationName(), QCoreApplication::applicationName());
    }
    static Format format() {
        static const Format json = registerFormat(QStringLiteral("json"), readMap, writeMap);
        return json;
    }
};

}  // namespace

QString languageOf(const QString& locale) {
    const QString code = locale.section(QLatin1Char('_'), 0, 0);
    if (code == QLatin1String("zh")) {
        return QStringLiteral("cn");
    }
    return code == QLatin1String("ru") ? code : QStringLiteral("en");
}

QString checkoutOf(const QString& folder) {
    QDir place(folder);
    do {
        if (place.exists(QStringLiteral("lumo/resources/lumo.json"))) {
            return place.absolutePath();
        }
    } while (place.cdUp());
    return {};
}

QString defaultFolder(const QString& current) {
    return checkoutOf(current).isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
                                         : current;
}

QString Preferences::language() {
    const QString language = Store().value(languageKey).toString();
    return languages().contains(language) ? language : QString();
}

void Preferences::rememberLanguage(const QString& language) {
    Store().setValue(languageKey, language);
}

QString Preferences::folder() {
    return Store().value(folderKey).toString();
}

void Preferences::rememberFolder(const QString& folder) {
    Store().setValue(folderKey, folder);
}

std::optional<QPoint> Preferences::pendantPlace() {
    const QVariantList place = Store().value(pendantPlaceKey).toList();
    if (place.size() != 2) {
        return {};
    }
    return QPoint(place[0].toInt(), place[1].toInt());
}

bool Preferences::pendantUnfolded() {
    return Store().value(pendantUnfoldedKey, true).toBool();
}

void Preferences::rememberPendant(const QPoint& place, bool unfolded) {
    Store store;
    store.setValue(pendantPlaceKey, QVariantList{place.x(), place.y()});
    store.setValue(pendantUnfoldedKey, unfolded);
}

}  // namespace app
