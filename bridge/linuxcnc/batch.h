#pragma once

#include "bridge/linuxcnc/course.h"

#include <QStringList>

#include <vector>

namespace bridge::linuxcnc {

/// A batch of motions as G-code.
struct Batch {
    struct Target {
        int id = 0;
        KDL::Vector place;      ///< of its end, m
        bool isCorner = false;  ///< blended with the next motion
        bool isJoint = false;
    };

    QStringList lines;
    std::vector<int> owners;      ///< for each line the index of its motion in `targets`
    std::vector<Target> targets;  ///< the motions that are made
    int failedId = 0;             ///< the motion behind them that cannot be made; 0: none
    int failure = MotionDone;     ///< its code
};

/// Writes the motions up to the first that cannot be made. `place`: where LinuxCNC is before them, then where
/// it is behind them.
///
/// A motion may leave its path where its zone allows: LinuxCNC takes how far a corner may be cut, and an arc
/// that begins z before a corner of the angle φ cuts it by z·tan(φ/4). The last motion, and one without a
/// zone, ends exactly.
Batch writeBatch(const kin::Arm& arm, const std::vector<Motion>& motions, Place* place);

}  // namespace bridge::linuxcnc
