#pragma once

#include <QString>

namespace gantu {
class BModule;
}

namespace kord {

/// The host's manager object; holds the module whose data node keeps the panel's settings.
class ManagerHelper {
public:
    static ManagerHelper* instance();
    /// Its `mobj()` has the key "language" ("cn", "en", "ru").
    gantu::BModule* module() const;

private:
    ManagerHelper();
    gantu::BModule* module_;
};

}  // namespace kord
