#pragma once

#include "bridge/motion.h"

#include <vector>

/// Motions in mm and degrees; ids count from 1 in each list.
namespace test {

constexpr double pi = 3.14159265358979323846;

inline bridge::Pose pose(double x, double y, double z, double rx = 180, double ry = 0, double rz = 0) {
    constexpr double m = 0.001, rad = pi / 180;
    return {{x * m, y * m, z * m}, {rx * rad, ry * rad, rz * rad}};
}

inline bridge::Motion line(const bridge::Pose& end, double mmPerS = 100, double zoneMm = 0) {
    bridge::Motion motion;
    motion.poses = {{{}, end}};
    motion.speed = mmPerS / 1000;
    motion.zone = zoneMm / 1000;
    return motion;
}

inline bridge::Motion arc(const bridge::Pose& aux, const bridge::Pose& end, double mmPerS = 100) {
    bridge::Motion motion = line(end, mmPerS);
    motion.kind = bridge::Motion::Kind::Arc;
    motion.poses = {{aux, end}};
    return motion;
}

inline bridge::Motion joints(const bridge::Joints& angles, double mmPerS = 100) {
    bridge::Motion motion;
    motion.kind = bridge::Motion::Kind::Joint;
    motion.joints = angles;
    motion.speed = mmPerS / 1000;
    return motion;
}

inline std::vector<bridge::Motion> numbered(std::vector<bridge::Motion> motions, int first = 1) {
    for (bridge::Motion& motion : motions) {
        motion.id = first++;
    }
    return motions;
}

}  // namespace test
