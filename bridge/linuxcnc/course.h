#pragma once

#include "bridge/linuxcnc/axes.h"
#include "bridge/motion.h"

#include <vector>

namespace bridge::linuxcnc {

/// Where a motion begins or ends.
struct Place {
    KDL::Frame torch;
    kin::Joints joints;
    Axes axes{};  ///< as LinuxCNC counts there
};

/// The place with these joints, with the axes as LinuxCNC takes them anew.
Place placeAt(const kin::Arm& arm, const kin::Joints& joints);

/// What one line of G-code moves.
struct Piece {
    enum class Kind { Line, Arc, Joints };

    Kind kind = Kind::Line;
    Axes end{};            ///< of a joint motion: the joints
    int plane = 17;        ///< of an arc: G17, G18 or G19
    bool isLeft = true;    ///< of an arc: G3
    KDL::Vector centre{};  ///< of an arc: from its start, mm
    double seconds = 0;    ///< how long it takes; 0: by the feed
    double feedMmPerMin = 0;
};

/// The path of one motion.
struct Course {
    std::vector<Piece> pieces;  ///< none where nothing moves
    double lengthM = 0;
    /// Of the tool at both ends; zero where the tool turns on the spot or joints move.
    KDL::Vector startDirection{}, endDirection{};
};

/// Lays the course of a motion from `place`, which becomes its end. Returns a MotionCode or TooFast; `place`
/// and `course` are valid for MotionDone only.
///
/// Reach, joint limits and joint speeds are checked here: LinuxCNC refuses targets that this arm reaches,
/// and does not check joint speeds at all. It has arcs in planes parallel to the axes; other arcs become
/// chords that stay within 0.01 mm. It turns A, B and C evenly, not by the shortest rotation, so a turn of
/// more than 10 degrees is split, and the tool then is within half a degree of it.
int layCourse(const kin::Arm& arm, const Motion& motion, Place* place, Course* course);

/// A joint would have to turn faster than it can.
constexpr int TooFast = -7;

}  // namespace bridge::linuxcnc
