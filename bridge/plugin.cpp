#include "bridge/plugin.h"

#include <QDir>
#include <QFileInfo>
#include <QLibrary>

#include <dlfcn.h>

namespace bridge {

namespace {

using Version = int (*)();
using MakeController = Controller* (*)(const QString&, QString*);
using MakeSignalPort = SignalPort* (*)(const QString&, QString*);

/// The folder of this library.
QString ownFolder() {
    Dl_info info;
    const bool known = dladdr(reinterpret_cast<const void*>(&loadController), &info) != 0;
    return known ? QFileInfo(QString::fromLocal8Bit(info.dli_fname)).absolutePath() : QString();
}

QString findLibrary(const QString& name) {
    if (name.endsWith(QLatin1String(".so")) || name.contains(QLatin1Char('/'))) {
        return QFileInfo(name).absoluteFilePath();
    }
    const QString file = QStringLiteral("lumo-%1.so").arg(name);
    const QString own = ownFolder();
    for (const QString& folder :
         {qEnvironmentVariable("LUMO_BRIDGES"), own, own + QStringLiteral("/bridges")}) {
        if (!folder.isEmpty() && QFileInfo::exists(QDir(folder).filePath(file))) {
            return QDir(folder).filePath(file);
        }
    }
    return {};
}

template <class Thing, class Make>
std::unique_ptr<Thing> load(const QString& name, const char* function, QString* error) {
    const QString library = name.section(QLatin1Char(':'), 0, 0);
    const QString file = findLibrary(library);
    if (file.isEmpty()) {
        *error = QStringLiteral("there is no library lumo-%1.so").arg(library);
        return nullptr;
    }
    QLibrary loaded(file);
    loaded.setLoadHints(QLibrary::PreventUnloadHint);
    if (!loaded.load()) {
        *error = loaded.errorString();
        return nullptr;
    }
    const auto version = reinterpret_cast<Version>(loaded.resolve("lumoBridgeVersion"));
    const auto make = reinterpret_cast<Make>(loaded.resolve(function));
    if (!version || !make) {
        *error = QStringLiteral("%1 does not export %2").arg(file, QLatin1String(function));
        return nullptr;
    }
    if (version() != pluginVersion) {
        *error = QStringLiteral("%1 is made for version %2 of the bridge kit, this is %3")
                     .arg(file)
                     .arg(version())
                     .arg(pluginVersion);
        return nullptr;
    }
    std::unique_ptr<Thing> thing(make(name.section(QLatin1Char(':'), 1), error));
    if (!thing && error->isEmpty()) {
        *error = QStringLiteral("%1 makes nothing of \"%2\"").arg(file, name);
    }
    return thing;
}

}  // namespace

std::unique_ptr<Controller> loadController(const QString& name, QString* error) {
    return load<Controller, MakeController>(name, "lumoBridgeController", error);
}

std::unique_ptr<SignalPort> loadSignalPort(const QString& name, QString* error) {
    return load<SignalPort, MakeSignalPort>(name, "lumoBridgeSignalPort", error);
}

}  // namespace bridge
