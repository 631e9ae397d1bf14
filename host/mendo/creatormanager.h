#pragma once

#include <QHash>
#include <QString>

#include <functional>

class QObject;

namespace gantu {
class BModule;
}

namespace mendo {

/// A registry of creator functions by key. Static initialisers of packages fill it.
class CreatorManager {
public:
    using ModuleCreator = std::function<gantu::BModule*(QObject* parent)>;
    using ValueCreator = std::function<int()>;

    /// A later registration of a key replaces an earlier one.
    void regist(const QString& key, const ModuleCreator& creator);
    void regist(const QString& key, const ValueCreator& creator);

    bool contains(const QString& key) const;
    /// A new module, owned by `parent` unless that is null; null for an unknown key.
    gantu::BModule* create(const QString& key, QObject* parent) const;
    /// The result of a value creator; `def` for an unknown key.
    int value(const QString& key, int def = 0) const;

private:
    QHash<QString, ModuleCreator> modules_;
    QHash<QString, ValueCreator> values_;
};

/// Packages by name, with the interface level each was built for.
CreatorManager& pluginManager();

}  // namespace mendo

/// Modules by key.
mendo::CreatorManager& bfactory();
/// Versions by package name.
mendo::CreatorManager& ver();
/// The version registered for `name`, 0 for an unknown one. `logUnknown`: also write a debug message.
int ver(const QString& name, bool logUnknown);
