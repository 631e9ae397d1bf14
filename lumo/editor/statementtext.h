#pragma once

#include "module/host.h"

#include <QString>

/// Texts of a statement in the program table, in the operator's language. Missing values show as 0 or as an
/// empty text.

/// The command word of a statement type; empty for an unknown type.
QString type2cn(const QString& type);

/// Joint angles of a point in degrees (stored in rad): six on a robot of six joints, else seven.
QString joints2cn(const ModuleObject* point);
/// Position of a point in mm (stored in m).
QString posture2cn(const ModuleObject* point);
QString speed2cn(const ModuleObject* speed);
QString zone2cn(const ModuleObject* zone);
/// Tool and work object of a move: name, and position in m as it is stored.
QString toolsetend2cn(const ModuleObject* end);
QString toolsetref2cn(const ModuleObject* ref);

/// Present name, power and duty cycle of the parameter set that a statement's `index` names; without a value
/// if there is no such set.
QString index2cn(const ModuleObject* index);
QString laserPower2cn(const ModuleObject* index);
QString laserDutyCycle2cn(const ModuleObject* index);
/// Whether the port is in use. Called for the port of the wire feeder.
QString wireEnable2cn(const ModuleObject* port);
QString weldSpeed2cn(const ModuleObject* weldspeed);

/// Output or input of a statement: its name, or register[bit], counted from 1.
QString do2Cn(const ModuleObject* statement);
QString di2Cn(const ModuleObject* statement);
QString value2Cn(const ModuleObject* value);
QString waitValue2Cn(const ModuleObject* value);
QString delayTime2Cn(const ModuleObject* delaytime);

namespace lumo {

/// One line for each field that is shown, numbered from 1 except for a delay. A null text (isNull) for a
/// statement without such fields: a stop of welding.
[[nodiscard]] QString statementDetails(const ModuleObject* statement);

}  // namespace lumo
