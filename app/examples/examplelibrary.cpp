#include "app/examples/examplelibrary.h"

#include "app/preferences.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

namespace app {

namespace {

constexpr struct {
    const char* name;
    const char* title;
} titles[] = {
    {"lap_seam", QT_TRANSLATE_NOOP("ExampleLibrary", "搭接直焊缝")},
    {"flange", QT_TRANSLATE_NOOP("ExampleLibrary", "管与法兰环焊缝")},
    {"box_stitch", QT_TRANSLATE_NOOP("ExampleLibrary", "箱盖断续焊")},
    {"stations", QT_TRANSLATE_NOOP("ExampleLibrary", "四个工位")},
};

/// The examples of the checkout that contains the program, else the installed ones.
QString shippedFolder() {
    const QString programs = QCoreApplication::applicationDirPath();
    const QString checkout = checkoutOf(programs);
    const QDir folder(checkout.isEmpty() ? programs + QStringLiteral("/../share/doc/lumo/examples")
                                         : checkout + QStringLiteral("/examples"));
    return folder.exists() ? folder.canonicalPath() : QString();
}

}  // namespace

ExampleLibrary::ExampleLibrary(const QString& from, const QString& to) : from_(from), to_(to) {}

ExampleLibrary ExampleLibrary::ofThisProgram() {
    const QDir data(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    return {shippedFolder(), data.filePath(QStringLiteral("examples"))};
}

QStringList ExampleLibrary::names() const {
    return from_.isEmpty() ? QStringList()
                           : QDir(from_).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}

QString ExampleLibrary::title(const QString& name) {
    for (const auto& known : titles) {
        if (name == QLatin1String(known.name)) {
            return QCoreApplication::translate("ExampleLibrary", known.title);
        }
    }
    return name;
}

QString ExampleLibrary::copyForOperator(const QString& name, QString* error) const {
    const QDir source(QDir(from_).filePath(name));
    const QDir copy(QDir(to_).filePath(name));
    if (!names().contains(name) || !QDir().mkpath(copy.path())) {
        *error = copy.path();
        return {};
    }
    const QStringList files = source.entryList({QStringLiteral("*.json")}, QDir::Files);
    for (const QString& file : files) {
        const QString target = copy.filePath(file);
        if (QFile::exists(target)) {
            continue;
        }
        if (!QFile::copy(source.filePath(file), target)) {
            *error = target;
            return {};
        }
        // A copy has the permissions of the installed file, which may be read-only.
        QFile::setPermissions(target, QFile::permissions(target) | QFile::WriteOwner);
    }
    return copy.path();
}

QString ExampleLibrary::project(const QString& name) const {
    const QString file = QDir(to_).filePath(QStringLiteral("%1/%1.json").arg(name));
    return QFile::exists(file) ? file : QString();
}

}  // namespace app
