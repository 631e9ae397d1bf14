#include "bridge/linuxcnc/course.h"

#include "kinematics/jointspeed.h"
#include "kinematics/track.h"

#include <algorithm>
#include <cmath>

namespace bridge::linuxcnc {

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr double mmPerM = 1000;
constexpr double mmPerMinute = 60000;  // of 1 m/s
constexpr double mostTurn = pi / 18;   // of one line of G-code, rad
constexpr double chordError = 1e-5;    // m
constexpr double planeError = 1e-7;    // m, at most out of a plane of LinuxCNC's
constexpr double nothing = 1e-8;       // m and rad
constexpr double acceleration = 2;     // m/s², as in cell.ini

KDL::Frame frameOf(const Pose& pose) {
    return kin::toFrame({pose.trans, pose.rot});
}

// KDL::Vector::Norm() returns 0 below a micrometre.
double size(const KDL::Vector& vector) {
    return std::sqrt(dot(vector, vector));
}

KDL::Vector unit(const KDL::Vector& vector) {
    const double length = size(vector);
    return length > nothing ? vector / length : KDL::Vector::Zero();
}

double turnBetween(const KDL::Frame& from, const KDL::Frame& to) {
    return size(KDL::diff(from.M, to.M));
}

int parts(double amount, double each) {
    return std::max(1, int(std::ceil(amount / each - 1e-9)));
}

int codeOf(kin::Arm::Fault fault) {
    switch (fault) {
        case kin::Arm::Fault::None:
            return MotionDone;
        case kin::Arm::Fault::OutOfReach:
            return OutOfReach;
        case kin::Arm::Fault::JointLimit:
            break;
    }
    return JointLimit;
}

/// Whether the joints can follow. Between standstills a short motion does not reach its speed.
int speedCode(const kin::Track& track, int axes, double speed) {
    const double highest = std::min(speed, std::sqrt(acceleration * track.length()));
    const auto joints = [&track](double s) { return track.joints(s); };
    return kin::fastestJoint(track.length(), joints, axes, highest) ? TooFast : MotionDone;
}

/// The circle of an arc. Its points make one.
struct Circle {
    Circle(const KDL::Vector& start, const KDL::Vector& aux, const KDL::Vector& end)
        : Circle(start, aux - start, end - start, (aux - start) * (end - start)) {}
    KDL::Vector direction(const KDL::Vector& point) const { return unit(normal * (point - centre)); }
    /// G17, G18 or G19 where the circle is parallel to that plane, else 0.
    int plane() const {
        for (int axis = 0; axis < 3; ++axis) {
            KDL::Vector across = normal;
            across[axis] = 0;
            if (size(across) * 2 * radius < planeError) {
                return 19 - axis;
            }
        }
        return 0;
    }

    KDL::Vector centre, normal;
    double radius = 0, angle = 0;

private:
    /// By the chords from the start to the other two points, and their cross product.
    Circle(const KDL::Vector& start, const KDL::Vector& u, const KDL::Vector& v, const KDL::Vector& n)
        : centre(start + ((dot(u, u) * v - dot(v, v) * u) * n) / (2 * dot(n, n))),
          normal(n / size(n)),
          radius(size(start - centre)),
          angle(std::atan2(dot(normal, (start - centre) * (start + v - centre)),
                           dot(start - centre, start + v - centre))) {
        angle += angle > 0 ? 0 : 2 * pi;
    }
};

/// Appends the pieces of a track: `count` of the same length.
void appendPieces(const kin::Track& track, int count, double way, double speed, Place* place,
                  std::vector<Piece>* pieces) {
    const bool isTimed = track.length() > way + nothing;  // it turns more than it moves
    for (int i = 1; i <= count; ++i) {
        Piece piece;
        place->torch = track.frame(track.length() * i / count);
        place->axes = axesNear(place->torch, place->axes);
        piece.end = place->axes;
        piece.seconds = isTimed ? track.length() / count / speed : 0;
        piece.feedMmPerMin = speed * mmPerMinute;
        pieces->push_back(piece);
    }
    place->joints = track.joints(track.length());
}

int layLine(const kin::Arm& arm, const Motion& motion, Place* place, Course* course) {
    const KDL::Frame start = place->torch, end = frameOf(motion.poses.front().end);
    const auto track = kin::PoseTrack::line(start, end);
    int code = codeOf(track->follow(arm, place->joints));
    if (code == MotionDone) {
        code = speedCode(*track, arm.axes(), motion.speed);
    }
    course->lengthM = track->length();
    if (code != MotionDone || track->length() < nothing) {
        return code;
    }
    const double way = size(end.p - start.p);
    course->startDirection = course->endDirection = unit(end.p - start.p);
    appendPieces(*track, parts(turnBetween(start, end), mostTurn), way, motion.speed, place, &course->pieces);
    return MotionDone;
}

int layArc(const kin::Arm& arm, const Motion::Via& via, double speed, Place* place, Course* course) {
    const KDL::Frame start = place->torch, aux = frameOf(via.aux), end = frameOf(via.end);
    kin::PoseTrack track(start);
    if (!track.appendArc(aux, end)) {
        return NoCircle;
    }
    int code = codeOf(track.follow(arm, place->joints));
    if (code == MotionDone) {
        code = speedCode(track, arm.axes(), speed);
    }
    if (code != MotionDone) {
        return code;
    }
    const Circle circle(start.p, aux.p, end.p);
    const int plane = circle.plane();
    const double chord = 2 * std::acos(std::max(1 - chordError / circle.radius, 0.0));
    const int turns = parts(turnBetween(start, end), mostTurn);
    const int count = plane ? turns : std::max(turns, parts(circle.angle, chord));
    const std::size_t first = course->pieces.size();
    appendPieces(track, count, circle.angle * circle.radius, speed, place, &course->pieces);
    KDL::Vector from = start.p;
    for (std::size_t i = first; plane && i < course->pieces.size(); ++i) {
        Piece& piece = course->pieces[i];
        piece.kind = Piece::Kind::Arc;
        piece.plane = plane;
        piece.isLeft = circle.normal[19 - plane] > 0;
        piece.centre = (circle.centre - from) * mmPerM;
        from = KDL::Vector(piece.end[0], piece.end[1], piece.end[2]) / mmPerM;
    }
    course->startDirection = first == 0 ? circle.direction(start.p) : course->startDirection;
    course->endDirection = circle.direction(end.p);
    course->lengthM += track.length();
    return MotionDone;
}

int layArcs(const kin::Arm& arm, const Motion& motion, Place* place, Course* course) {
    for (const Motion::Via& via : motion.poses) {
        const int code = layArc(arm, via, motion.speed, place, course);
        if (code != MotionDone) {
            return code;
        }
    }
    return MotionDone;
}

int layJoints(const kin::Arm& arm, const Motion& motion, Place* place, Course* course) {
    if (!arm.withinLimits(motion.joints)) {
        return JointLimit;
    }
    const kin::JointTrack track(arm, place->joints, motion.joints);
    const int code = speedCode(track, arm.axes(), motion.speed);
    *place = placeAt(arm, motion.joints);
    if (code != MotionDone || track.length() < nothing) {
        return code;
    }
    Piece piece;
    piece.kind = Piece::Kind::Joints;
    piece.end = jointWords(motion.joints);
    piece.seconds = track.length() / motion.speed;
    course->pieces = {piece};
    course->lengthM = track.length();
    return MotionDone;
}

}  // namespace

Place placeAt(const kin::Arm& arm, const kin::Joints& joints) {
    const KDL::Frame torch = kin::toFrame(arm.forward(joints));
    return {torch, joints, axesAnew(torch)};
}

int layCourse(const kin::Arm& arm, const Motion& motion, Place* place, Course* course) {
    switch (motion.kind) {
        case Motion::Kind::Joint:
            return layJoints(arm, motion, place, course);
        case Motion::Kind::Line:
            return layLine(arm, motion, place, course);
        case Motion::Kind::Arc:
            break;
    }
    return layArcs(arm, motion, place, course);
}

}  // namespace bridge::linuxcnc
