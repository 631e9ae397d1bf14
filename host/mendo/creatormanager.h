#pragma once

#include <QHash>
#include <QString>

#include <functional>

class QObject;

namespace gantu {
class BModule;
}

namespace mendo {

/// A registry of creator functions by key, filled by the static registrations of packages.
class CreatorManager {
public:
    using ModuleCreator = std::function<gantu::BModule*(QObject* parent)>;
    using ValueCreator = std::function<int()>;

    /// The newest registration of a key stands.
    void regist(const QString& key, ModuleCreator creator);
    void regist(const QString& key, ValueCreator creator);

    bool contains(const QString& key) const;
    /// A new module, owned by `parent` where that is not null; null for an unknown key.
    gantu::BModule* create(const QString& key, QObject* parent) const;
    /// What a value creator returns; `def` for an unknown key.
    int value(const QString& key, int def = 0) const;

private:
    QHash<QString, ModuleCreator> modules_;
    QHash<QString, ValueCreator> values_;
};

/// Packages by name and the interface level each was built for.
CreatorManager& pluginManager();

}  // namespace mendo

/// Modules by key.
mendo::CreatorManager& bfactory();
/// Versions by package name.
mendo::CreatorManager& ver();
/// The version registered for `name`, 0 for an unknown one. `logUnknown`: say so on the debug stream.
int ver(const QString& name, bool logUnknown);
