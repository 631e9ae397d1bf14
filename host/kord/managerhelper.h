#pragma once

#include <QString>

namespace gantu {
class BModule;
}

namespace kord {

/// Holds the module whose data node stores the panel's settings.
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
