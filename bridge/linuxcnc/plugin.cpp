#include "bridge/plugin.h"

#include "bridge/linuxcnc/linuxcnc.h"

/// "linuxcnc", or "linuxcnc:PORT" with the port of the commands.
LUMO_BRIDGE_CONTROLLER(argument, error) {
    bool isPort = true;
    const ushort port = argument.isEmpty() ? bridge::LinuxCnc::defaultPort : argument.toUShort(&isPort);
    if (!isPort || port == 0) {
        *error = QStringLiteral("%1 is no port").arg(argument);
        return nullptr;
    }
    return new bridge::LinuxCnc(port);
}
