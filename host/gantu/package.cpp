#include "gantu/package.h"

#include "gantu/bmodule.h"
#include "mendo/creatormanager.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLibrary>

namespace gantu {

QString findLibrary(const QString& package) {
    const QString lib = QCoreApplication::applicationDirPath() + QStringLiteral("/../lib/");
    const QString file = QStringLiteral("lib%1.so").arg(package);
    const QString folder = package + QLatin1Char('/');
    for (const QString& path : {lib + file, lib + QStringLiteral(PANELHOST_ARCHITECTURE "/") + folder + file,
                                lib + folder + file}) {
        if (QFileInfo::exists(path)) {
            return QFileInfo(path).canonicalFilePath();
        }
    }
    return {};
}

bool loadPackage(const QString& libraryFile, QString* error) {
    QLibrary library(libraryFile);
    // Objects and functions of the package are in use until the process ends.
    library.setLoadHints(QLibrary::PreventUnloadHint);
    if (library.load()) {
        return true;
    }
    if (error) {
        *error = library.errorString();
    }
    return false;
}

Package::Package() = default;

Package::~Package() = default;

bool Package::load(const QString& libraryFile, const QString& name, QString* error) {
    if (libraryFile.isEmpty()) {
        *error = QStringLiteral("the package lib%1.so is not beside this program").arg(name);
        return false;
    }
    if (!loadPackage(libraryFile, error)) {
        return false;
    }
    module_.reset(bfactory().create(name, nullptr));
    if (!module_) {
        *error = QStringLiteral("the package registers no module \"%1\"").arg(name);
        return false;
    }
    module_->init();
    return true;
}

QWidget* Package::page(const QString& key) {
    std::unique_ptr<BModule>& module = pages_[key];
    if (!module) {
        module.reset(bfactory().create(key, nullptr));
    }
    return module ? module->wgt() : nullptr;
}

}  // namespace gantu
