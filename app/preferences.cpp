#include "app/preferences.h"

#include "workcell/commandline.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDevice>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSettings>
#include <QStandardPaths>
#include <QVariant>

#include <unistd.h>
#include <cmath>

namespace app {

namespace {

const QString languageKey = QStringLiteral("language");
const QString folderKey = QStringLiteral("folder");
const QString ratedWattsKey = QStringLiteral("ratedWatts");
const QString docksKey = QStringLiteral("docks");
const QString helpChapterKey = QStringLiteral("helpChapter");
const QString fullRowsKey = QStringLiteral("fullRows");
const QString numberPadKey = QStringLiteral("touch/numberPad");
const QString keyboardKey = QStringLiteral("touch/keyboard");
const QString maximisedKey = QStringLiteral("maximised");
const QString factorKey = QStringLiteral("factor");
const QString setupDoneKey = QStringLiteral("setupDone");

bool readMap(QIODevice& file, QSettings::SettingsMap& map) {
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    map = document.object().toVariantMap();
    return document.isObject();
}

/// Flushes and syncs the file before QSettings renames it over the old one. Qt does neither, and would leave
/// an empty file on a full disk.
bool writeMap(QIODevice& file, const QSettings::SettingsMap& map) {
    const QByteArray text = QJsonDocument(QJsonObject::fromVariantMap(map)).toJson();
    auto* const onDisk = qobject_cast<QFileDevice*>(&file);
    return file.write(text) == text.size() && onDisk && onDisk->flush() && ::fsync(onDisk->handle()) == 0;
}

/// The running program's file in the user's configuration folder.
class Store : public QSettings {
public:
    Store() : QSettings(Preferences::file(), format()) {}

private:
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
    QDir ancestor(folder);
    do {
        if (ancestor.exists(QStringLiteral("lumo/resources/lumo.json"))) {
            return ancestor.absolutePath();
        }
    } while (ancestor.cdUp());
    return {};
}

QString defaultFolder(const QString& current) {
    return checkoutOf(current).isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
                                         : current;
}

QString Preferences::file() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return QStringLiteral("%1/%2/%3.json")
        .arg(folder, QCoreApplication::organizationName(), QCoreApplication::applicationName());
}

QString Preferences::language() {
    const QString language = Store().value(languageKey).toString();
    return workcell::languages().contains(language) ? language : QString();
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

std::optional<double> Preferences::ratedWatts() {
    const double watts = Store().value(ratedWattsKey).toDouble();
    return std::isfinite(watts) && watts > 0 ? std::optional<double>(watts) : std::nullopt;
}

void Preferences::rememberRatedWatts(double watts) {
    Store().setValue(ratedWattsKey, watts);
}

QStringList Preferences::docks() {
    return Store().value(docksKey).toStringList();
}

void Preferences::rememberDocks(const QStringList& docks) {
    Store().setValue(docksKey, docks);
}

QString Preferences::helpChapter() {
    return Store().value(helpChapterKey).toString();
}

void Preferences::rememberHelpChapter(const QString& chapter) {
    Store().setValue(helpChapterKey, chapter);
}

bool Preferences::fullRows() {
    return Store().value(fullRowsKey).toBool();
}

void Preferences::rememberFullRows(bool full) {
    Store().setValue(fullRowsKey, full);
}

bool Preferences::numberPad() {
    return Store().value(numberPadKey, true).toBool();
}

void Preferences::rememberNumberPad(bool used) {
    Store().setValue(numberPadKey, used);
}

bool Preferences::keyboard() {
    return Store().value(keyboardKey, true).toBool();
}

void Preferences::rememberKeyboard(bool used) {
    Store().setValue(keyboardKey, used);
}

bool Preferences::maximised() {
    return Store().value(maximisedKey).toBool();
}

void Preferences::rememberMaximised(bool maximised) {
    Store().setValue(maximisedKey, maximised);
}

double Preferences::factor() {
    constexpr double most = 3;
    const double factor = Store().value(factorKey).toDouble();
    return factor >= 1 && factor <= most ? factor : 0;
}

void Preferences::rememberFactor(double factor) {
    Store().setValue(factorKey, factor);
}

bool Preferences::setupDone() {
    return Store().value(setupDoneKey).toBool();
}

void Preferences::rememberSetupDone() {
    Store().setValue(setupDoneKey, true);
}

bool enterWorkFolder(const QString& given, const QString& remembered, QString* lost) {
    if (!given.isEmpty()) {
        return QDir::setCurrent(given);
    }
    if (!remembered.isEmpty()) {
        if (QDir::setCurrent(remembered)) {
            return true;
        }
        *lost = remembered;
    }
    const QString folder = defaultFolder(QDir::currentPath());
    return QDir().mkpath(folder) && QDir::setCurrent(folder);
}

}  // namespace app
