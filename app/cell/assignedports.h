#pragma once

#include <QHash>
#include <QString>

namespace app {

/// What a signal's state means.
enum class Meaning {
    Plain,  ///< no special meaning
    Well,   ///< off is a fault
    Alarm,  ///< on is a fault
    Beam,   ///< on: the laser emits or may emit
};

struct AssignedPort {
    QString label;  ///< in the panel's language
    Meaning meaning = Meaning::Plain;
};

/// The port that each controller signal is assigned to at the moment, by the signal's name.
QHash<QString, AssignedPort> assignedPorts();

}  // namespace app
