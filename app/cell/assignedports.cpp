#include "app/cell/assignedports.h"

#include "app/cell/nodes.h"
#include "mendo/modulemanager.h"

namespace app {

namespace {

// Rows of the port table.
constexpr int kLastState = 4;  // of laser, head, cooling, gas pressure and temperature
constexpr int kWelding = 5, kLaserEnable = 9, kAlarm = 10, kLaserPower = 16;

Meaning meaningOf(int row) {
    switch (row) {
        case kWelding:
        case kLaserEnable:
        case kLaserPower:
            return Meaning::Beam;
        case kAlarm:
            return Meaning::Alarm;
        default:
            return row <= kLastState ? Meaning::Well : Meaning::Plain;
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
