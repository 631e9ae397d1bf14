#pragma once

#include "module/host.h"
#include "program/geometry.h"

#include <memory>
#include <optional>

namespace lumo {

/// The position that a list of three numbers, in metres, stands for; missing ones are 0.
[[nodiscard]] prog::Position positionOf(const ModuleObject* trans);

/// The angle in rad by which two orientations (lists rx, ry, rz in rad) differ.
[[nodiscard]] double turnBetween(const ModuleObject* a, const ModuleObject* b);

/// An arc or full circle as it was handed to the controller, in a run.
struct QueuedArc {
    prog::Position start;
    double from = 0.0;                      ///< angle from which on it was queued: it had been resumed before
    std::shared_ptr<ModuleObject> command;  ///< its arguments, for the whole of it

    [[nodiscard]] std::optional<prog::Arc> arc() const;
    [[nodiscard]] double speedMPerS() const;
    /// Fills `args` with the command for what is left at an angle; false where nothing is. What else the
    /// points carry stays.
    [[nodiscard]] bool fillRest(ModuleObject* args, const prog::Arc& arc, double angle) const;
};

}  // namespace lumo
