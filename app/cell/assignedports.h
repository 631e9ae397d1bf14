#pragma once

#include "program/ports.h"

#include <QHash>
#include <QString>

namespace app {

struct AssignedPort {
    QString label;  ///< in the panel's language
    prog::PortMeaning meaning = prog::PortMeaning::Plain;
};

/// The port that each controller signal is assigned to at the moment, by the signal's name.
QHash<QString, AssignedPort> assignedPorts();

}  // namespace app
