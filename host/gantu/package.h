#pragma once

#include <QString>

#include <map>
#include <memory>

class QWidget;

namespace gantu {

class BModule;

/// Path of a package's library: `../lib` beside the running program (build tree) or the installed library
/// folder. Empty when there is none.
QString findLibrary(const QString& package);

/// Loads a package's shared library; its static initialisers register its creators. The library stays
/// loaded. On failure returns false and writes the reason to `error`.
bool loadPackage(const QString& libraryFile, QString* error);

/// A loaded package: its business module and the pages opened so far.
class Package {
public:
    Package();
    /// Deletes the pages, then the business module; the library stays loaded.
    ~Package();

    /// Loads the library, creates the module registered under `name` and calls its init(). On failure
    /// returns false and writes the reason to `error`.
    bool load(const QString& libraryFile, const QString& name, QString* error);
    /// The page of the module registered under `key`. The module is created at the first call and owns the
    /// page. Null when there is no such module or it has no page.
    QWidget* page(const QString& key);

private:
    std::unique_ptr<BModule> module_;
    std::map<QString, std::unique_ptr<BModule>> pages_;
};

}  // namespace gantu
