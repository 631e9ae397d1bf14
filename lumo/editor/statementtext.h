#pragma once

#include "module/host.h"

#include <QString>

/// The words and numbers that the program table shows of a statement, in the operator's language. They
/// only read the tree; missing values read as 0 or as empty text.

/// The command word of a statement type; empty for an unknown type.
QString type2cn(const QString& type);

/// Joint angles of a point, stored in radians, shown in degrees: six on a robot of six joints, else seven.
QString joints2cn(const ModuleObject* point);
/// Position of a point, stored in metres, shown in millimetres.
QString posture2cn(const ModuleObject* point);
QString speed2cn(const ModuleObject* speed);
QString zone2cn(const ModuleObject* zone);
/// Tool and work object of a move: name and position, which is shown as it is stored.
QString toolsetend2cn(const ModuleObject* end);
QString toolsetref2cn(const ModuleObject* ref);

/// Name, power and duty cycle of the parameter set that a statement's `index` names, as the set holds
/// them now; without a value where there is no such set.
QString index2cn(const ModuleObject* index);
QString laserPower2cn(const ModuleObject* index);
QString laserDutyCycle2cn(const ModuleObject* index);
/// Whether the port (the wire feeder's) is in use.
QString wireEnable2cn(const ModuleObject* port);
QString weldSpeed2cn(const ModuleObject* weldspeed);

/// Output or input of a statement: its name, or register[element], the element counted from 1.
QString do2Cn(const ModuleObject* statement);
QString di2Cn(const ModuleObject* statement);
QString value2Cn(const ModuleObject* value);
QString waitValue2Cn(const ModuleObject* value);
QString delayTime2Cn(const ModuleObject* delaytime);

namespace lumo {

/// The pieces of a statement, one a line, numbered from 1 but for a delay's. A null text (isNull) for
/// a statement that has nothing to show, such as the stop of welding.
[[nodiscard]] QString statementDetails(const ModuleObject* statement);

}  // namespace lumo
