#pragma once

#include "bridge/motion.h"
#include "bridge/toolset.h"

#include <QString>

struct KordCall;
namespace mendo {
class ModuleObject;
}

namespace bridge {

/// The kind of motion that a command of the robot service orders; false when it orders none.
bool motionKind(const QString& name, Motion::Kind* kind);
/// "move.j", "move.l" or "move.c".
QString commandName(Motion::Kind kind);

/// Reads a motion from a call's arguments, for an arm with `axes` axes. A wrong one has a refusal.
Motion readMotion(const KordCall& call, Motion::Kind kind, int id, int axes);

/// Reads the tool set that a package hands to the robot service; what is missing is zero.
Toolset readToolset(const mendo::ModuleObject* node);

}  // namespace bridge
