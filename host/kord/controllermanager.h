#pragma once

#include "mendo/moduleobject.h"

#include <QString>

namespace kord {

/// Notifications of the controller that do not belong to the robot service.
class ControllerManager {
public:
    /// The node of an item in a group, made at the first use. The node of the pendant's keys
    /// ("endtool.keypad.state_change", "notify") has the children next, last, center, enter, delete; a
    /// pressed key is false.
    static mendo::ModuleObject* cmdItemMobj(const QString& item, const QString& group);
};

}  // namespace kord
