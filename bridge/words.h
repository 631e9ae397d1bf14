#pragma once

#include <QLatin1String>

/// Commands and nodes of the robot service that an adapter answers and fills.
namespace bridge::word {

// Commands.
constexpr QLatin1String moveJ("move.j", 6);
constexpr QLatin1String moveL("move.l", 6);
constexpr QLatin1String moveC("move.c", 6);
constexpr QLatin1String reset("move.reset", 10);
constexpr QLatin1String stop("move.stop", 9);
constexpr QLatin1String enough("move.opr.enough", 15);
constexpr QLatin1String registerWrite("register.write", 14);
constexpr QLatin1String registerWriteMulti("register.write_multi", 20);
constexpr QLatin1String outDo("device.io.out.do", 16);

// Nodes.
constexpr QLatin1String power("kord.r.power", 12);
constexpr QLatin1String mode("kord.r.mode", 11);
constexpr QLatin1String state("kord.r.state", 12);
constexpr QLatin1String posture("sys.posture", 11);
constexpr QLatin1String sysInfo("sys.info", 8);
constexpr QLatin1String deviceIo("device.io", 9);
constexpr QLatin1String registerValues("register.values", 15);
constexpr QLatin1String registerList("rova.robot.register._list", 25);
constexpr QLatin1String handGuiding[] = {QLatin1String("rova.handle.drag", 16),
                                         QLatin1String("rova.sidemove.drag", 18)};

}  // namespace bridge::word
