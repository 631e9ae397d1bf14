#include "bridge/plugin.h"

#include "bridge/modbus/modbusport.h"
#include "mendo/log.h"

namespace {

void logTold(const QString& text) {
    mendo::QLog(QString(), QStringLiteral("[W|%1]"), QString()) << qPrintable(text);
}

}  // namespace

/// The argument is the file of the map.
LUMO_BRIDGE_SIGNAL_PORT(argument, error) {
    mendo::FileProblem problem;
    const std::optional<bridge::ModbusMap> map = bridge::ModbusMap::read(argument, &problem);
    if (!map) {
        *error = bridge::ModbusMap::shown(problem);
        return nullptr;
    }
    auto* port = new bridge::ModbusPort(*map);
    QObject::connect(port, &bridge::ModbusPort::told, port, logTold);
    return port;
}
