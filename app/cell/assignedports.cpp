#include "app/cell/assignedports.h"

#include "app/cell/nodes.h"
#include "mendo/modulemanager.h"

namespace app {

namespace {

// Rows of the port table.
constexpr int lastState = 4;  // of laser, head, cooling, gas pressure and temperature
constexpr int welding = 5, laserEnableRow = 9, alarm = 10, laserPowerRow = 16;

Meaning meaningOf(int row) {
    switch (row) {
        case welding:
        case laserEnableRow:
        case laserPowerRow:
            return Meaning::Beam;
        case alarm:
            return Meaning::Alarm;
        default:
            return row <= lastState ? Meaning::Well : Meaning::Plain;
    }
}

}  // namespace

QHash<QString, AssignedPort> assignedPorts() {
    QHash<QString, AssignedPort> ports;
    int row = 0;
    for (const mendo::ModuleObject* port : m(node::ports)->cmobjs()) {
        ports.insert(port->c(QStringLiteral("name"))->getString(),
                     {port->c(QStringLiteral("tag"))->getString(), meaningOf(row)});
        ++row;
    }
    return ports;
}

}  // namespace app
