#pragma once

#include <QHash>
#include <QString>

namespace app {

/// What the state of a signal says about the cell.
enum class Meaning {
    Plain,  ///< nothing, on or off
    Well,   ///< off is a fault
    Alarm,  ///< on is a fault
    Beam,   ///< on: the laser emits, or may
};

struct AssignedPort {
    QString label;  ///< in the panel's language
    Meaning meaning = Meaning::Plain;
};

/// The equipment behind each signal of the controller, as it is assigned at the moment.
QHash<QString, AssignedPort> assignedPorts();

}  // namespace app
