#pragma once

#include "mendo/moduleobject.h"

#include <QString>

namespace kord {

/// Notifications of the controller that are no part of the robot service.
class ControllerManager {
public:
    /// The node of an item of a group, made at the first use; for the pendant's keys
    /// ("endtool.keypad.state_change", "notify") it has the children next, last, center, enter, delete.
    static mendo::ModuleObject* cmdItemMobj(const QString& item, const QString& group);
};

}  // namespace kord
