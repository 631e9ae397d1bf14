#include "simulator/motionplan.h"

#include "kinematics/track.h"

#include <algorithm>
#include <cmath>

namespace sim {

namespace {

using kin::BlendTrack;
using kin::JointTrack;
using kin::PoseTrack;
using kin::toFrame;
using kin::toPose;
using kin::Track;

constexpr double minRadius = 1e-6;  // metres; smaller zones count as 0
constexpr double leastCut = 1e-5;   // metres; of a corner without a change of direction

/// The same pose with its angles in the ranges of Arm::forward().
Pose normalised(const Pose& pose) {
    return {pose.trans, toPose(toFrame(pose)).rot};
}

int codeOf(Arm::Fault fault) {
    switch (fault) {
        case Arm::Fault::None:
            return MotionDone;
        case Arm::Fault::OutOfReach:
            return OutOfReach;
        case Arm::Fault::JointLimit:
            break;
    }
    return JointLimit;
}

/// The tangent of half the change of direction; negative where the path turns back or on the spot.
double halfAngleTangent(const Track& in, const Track& out) {
    constexpr double step = 1e-4;    // m
    constexpr double back = -0.985;  // 170°
    const KDL::Vector before = in.frame(in.length()).p - in.frame(in.length() - step).p;
    const KDL::Vector after = out.frame(step).p - out.frame(0).p;
    const double size = std::sqrt(dot(before, before) * dot(after, after));
    if (size <= 0) {
        return -1;
    }
    const double cosine = dot(before, after) / size;
    return cosine < back ? -1 : std::sqrt(std::max(1 - cosine, 0.0) / (1 + cosine));
}

}  // namespace

MotionPlan::MotionPlan(const Arm& arm, const Posture& start, std::vector<MotionCommand> motions,
                       double cornerAcceleration)
    : motions_(std::move(motions)), end_(start) {
    for (size_t i = 0; i < motions_.size(); ++i) {
        failure_.code = makeTrack(arm, motions_[i]);
        failsAtEnd_ = failure_.code == MotionDone && motions_[i].endCode != MotionDone;
        if (failsAtEnd_) {
            failure_.code = motions_[i].endCode;
        }
        if (failure_.code == MotionDone) {
            continue;
        }
        failure_.id = motions_[i].id;
        failure_.kind = motions_[i].kind;
        for (size_t k = i + 1; k < motions_.size(); ++k) {
            failure_.dropped.push_back(motions_[k].id);
        }
        break;
    }
    layPath(arm, cornerAcceleration);
}

MotionPlan::~MotionPlan() = default;
MotionPlan::MotionPlan(MotionPlan&&) noexcept = default;
MotionPlan& MotionPlan::operator=(MotionPlan&&) noexcept = default;

/// Appends the motion's track at the end of the last one. Returns the motion's code.
int MotionPlan::makeTrack(const Arm& arm, const MotionCommand& motion) {
    if (motion.refusal != MotionDone) {
        return motion.refusal;
    }
    if (motion.kind == MotionCommand::Kind::Joint) {
        if (!arm.withinLimits(motion.joints)) {
            return JointLimit;
        }
        tracks_.push_back(std::make_shared<JointTrack>(arm, end_.joints, motion.joints));
        end_ = {arm.forward(motion.joints), motion.joints};
        return MotionDone;
    }
    const KDL::Frame start = toFrame(end_.pose);
    std::shared_ptr<PoseTrack> track;
    if (motion.kind == MotionCommand::Kind::Line) {
        track = PoseTrack::line(start, toFrame(motion.poses.front().end));
    } else {
        track = std::make_shared<PoseTrack>(start);
        for (const MotionCommand::Via& via : motion.poses) {
            if (!track->appendArc(toFrame(via.aux), toFrame(via.end))) {
                return NoCircle;
            }
        }
    }
    const int code = codeOf(track->follow(arm, end_.joints, &failure_.atM));
    if (code == MotionDone) {
        end_ = {normalised(motion.poses.back().end), track->joints(track->length())};
        tracks_.push_back(std::move(track));
    }
    return code;
}

void MotionPlan::layPath(const Arm& arm, double cornerAcceleration) {
    double cut = 0;  // length of the track that belongs to the corner before it
    std::vector<double> passed;
    for (size_t i = 0; i < tracks_.size(); ++i) {
        const auto& track = tracks_[i];
        const MotionCommand& motion = motions_[i];
        const auto [radius, cornerSpeed] = cornerBehind(i, cornerAcceleration);
        lay(track, cut, track->length() - radius, motion.speed, radius == 0);
        const double before = profile_.length();
        if (radius > 0) {
            const auto blend = std::make_shared<BlendTrack>(arm, track, tracks_[i + 1], radius);
            lay(blend, 0, blend->length(), cornerSpeed, false);
        }
        passed.push_back((before + profile_.length()) / 2);
        cut = radius;
    }
    profile_.plan(motionAcceleration);
    for (size_t i = 0; i < passed.size(); ++i) {
        marks_.push_back({motions_[i].id, profile_.timeAt(passed[i])});
    }
}

MotionPlan::Corner MotionPlan::cornerBehind(size_t motion, double acceleration) const {
    if (motion + 1 == tracks_.size()) {
        return {};
    }
    const Track& in = *tracks_[motion];
    const Track& out = *tracks_[motion + 1];
    Corner corner{std::min({motions_[motion].zone, in.length() / 2, out.length() / 2}),
                  std::min(motions_[motion].speed, motions_[motion + 1].speed)};
    if (corner.radius < minRadius) {
        return {};
    }
    if (acceleration > 0) {
        const double tangent = halfAngleTangent(in, out);
        if (in.isJointMotion() || out.isJointMotion() || tangent < 0) {
            return {};
        }
        // An arc of radius v²/a touches both lines so far from where they meet.
        corner.speed = std::max(motions_[motion].speed, motions_[motion + 1].speed);
        const double needed = corner.speed * corner.speed / acceleration * tangent;
        corner.radius = std::min(corner.radius, std::max(needed, leastCut));
        if (needed > corner.radius) {
            corner.speed = std::sqrt(acceleration * corner.radius / tangent);
        }
    }
    return corner;
}

void MotionPlan::lay(std::shared_ptr<const Track> track, double from, double to, double speed, bool stop) {
    Piece piece;
    piece.from = from;
    piece.start = profile_.length();
    piece.toolPath = toolPath_;
    toolPath_ += track->travelled(to) - track->travelled(from);
    piece.track = std::move(track);
    pieces_.push_back(std::move(piece));
    profile_.append(std::max(to - from, 0.0), speed, stop);
}

const MotionPlan::Piece* MotionPlan::pieceAt(double s) const {
    if (pieces_.empty()) {
        return nullptr;
    }
    const auto after = std::upper_bound(pieces_.begin(), pieces_.end(), s,
                                        [](double value, const Piece& piece) { return value < piece.start; });
    return after == pieces_.begin() ? &*after : &*(after - 1);
}

MotionPlan::Posture MotionPlan::at(double s) const {
    const Piece* piece = pieceAt(s);
    if (!piece || s >= profile_.length()) {
        return end_;
    }
    const double own = piece->from + s - piece->start;
    return {toPose(piece->track->frame(own)), piece->track->joints(own)};
}

double MotionPlan::travelled(double s) const {
    const Piece* piece = pieceAt(s);
    if (!piece || s >= profile_.length()) {
        return toolPath_;
    }
    const double own = piece->from + s - piece->start;
    return piece->toolPath + piece->track->travelled(own) - piece->track->travelled(piece->from);
}

}  // namespace sim
