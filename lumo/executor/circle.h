#pragma once

#include "module/host.h"
#include "program/pathpiece.h"
#include "program/runprogram.h"

#include <memory>
#include <optional>

/// The point at which the robot stands when a statement begins: the target of the nearest move
/// before it (full circles end where they began), else the robot's posture.
ModuleObject* findLastTargetPosNode(ModuleObject* stmt);

/// Midpoints of the three arcs s→p1→p2→s of the circle through three points (nodes with `trans`
/// in metres), written into the `trans` of aux1, aux2, aux3 as single-precision values.
void calcAux(const ModuleObject* s, const ModuleObject* p1, const ModuleObject* p2, ModuleObject* aux1,
             ModuleObject* aux2, ModuleObject* aux3);

/// Whether two positions (list nodes, metres) are less than `distanceM` apart.
bool isNearTrans(const ModuleObject* a, const ModuleObject* b, double distanceM);

namespace lumo {

/// The point of a move that a target names.
[[nodiscard]] ModuleObject* targetNode(const ModuleObject* move, bool isPoint1);

/// The position of a point (a node with `trans` in metres).
[[nodiscard]] prog::Position positionOf(const ModuleObject* point);
/// The same with its `rot`.
[[nodiscard]] prog::Pose poseOf(const ModuleObject* point);
/// The robot's posture now.
[[nodiscard]] prog::Pose toolPose();

/// An arc or full circle as it was handed to the controller, in a run.
struct QueuedArc {
    prog::Pose start;
    double from = 0.0;                      ///< angle from which on it was queued: it had been resumed before
    std::shared_ptr<ModuleObject> command;  ///< its arguments, for the whole of it

    [[nodiscard]] std::optional<prog::Arc> arc() const;
    [[nodiscard]] double speedMPerS() const;
    /// Fills `args` with the command for what is left at an angle; false where nothing is. What else the
    /// points carry stays.
    [[nodiscard]] bool fillRest(ModuleObject* args, const prog::Arc& arc, double angle) const;
};

}  // namespace lumo
