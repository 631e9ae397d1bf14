#pragma once

#include "bridge/motion.h"

#include <QString>

namespace bridge {

/// The tool and the work object in force.
struct Toolset {
    QString tool;  ///< its name
    Pose toolTip;  ///< in the flange
    double massKg = 0;
    std::array<double, 3> centreM{};  ///< of the tool's mass, in the flange, m
    std::array<double, 3> inertia{};  ///< kg·m²
    QString workObject;
    Pose object;  ///< in the base
};

}  // namespace bridge
