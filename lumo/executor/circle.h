#pragma once

#include "module/host.h"
#include "program/fullcircle.h"

/// The point at which the robot stands when a statement begins: the target of the nearest move
/// before it (full circles end where they began), else the robot's posture.
ModuleObject* findLastTargetPosNode(ModuleObject* stmt);

/// Midpoints of the three arcs s→p1→p2→s of the circle through three points (nodes with `trans`
/// in metres), written into the `trans` of aux1, aux2, aux3 as single-precision values.
void calcAux(const ModuleObject* s, const ModuleObject* p1, const ModuleObject* p2, ModuleObject* aux1,
             ModuleObject* aux2, ModuleObject* aux3);

using prog::CircleFault;

/// `prog::circleFault` of nodes with `trans` in metres.
CircleFault circleFault(const ModuleObject* s, const ModuleObject* p1, const ModuleObject* p2);
