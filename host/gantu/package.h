#pragma once

#include <QString>

#include <map>
#include <memory>

class QWidget;

namespace gantu {

class BModule;

/// The file of a package's library: beside the running program in `../lib` (a build tree) or in the
/// library folder where it is installed. Empty when there is none.
QString findLibrary(const QString& package);

/// A package as a host runs it: its library, its business module and the pages that the operator has
/// visited.
class Package {
public:
    Package();
    /// Deletes the pages, then the business module; the library stays loaded.
    ~Package();

    /// Loads the library, creates the module registered under `name` and initialises it. False, with
    /// the reason in `error`, when that is not possible.
    bool load(const QString& libraryFile, const QString& name, QString* error);
    /// The page of the module registered under `key`, made at the first call and owned by that module;
    /// null when there is no such module or it has no page.
    QWidget* page(const QString& key);

private:
    std::unique_ptr<BModule> module_;
    std::map<QString, std::unique_ptr<BModule>> pages_;
};

}  // namespace gantu
