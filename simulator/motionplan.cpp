#include "simulator/motionplan.h"

#include "kinematics/track.h"

#include <algorithm>

namespace sim {

namespace {

using kin::BlendTrack;
using kin::JointTrack;
using kin::PoseTrack;
using kin::toFrame;
using kin::toPose;
using kin::Track;

constexpr double minRadius = 1e-6;  // metres; smaller zones count as 0

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

}  // namespace

MotionPlan::MotionPlan(const Arm& arm, const Posture& start, std::vector<MotionCommand> motions)
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
    layPath(arm);
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

void MotionPlan::layPath(const Arm& arm) {
    double cut = 0;  // length of the track that belongs to the corner before it
    std::vector<double> passed;
    for (size_t i = 0; i < tracks_.size(); ++i) {
        const auto& track = tracks_[i];
        const MotionCommand& motion = motions_[i];
        const bool last = i + 1 == tracks_.size();
        double radius = last ? 0 : std::min({motion.zone, track->length() / 2, tracks_[i + 1]->length() / 2});
        if (radius < minRadius) {
            radius = 0;
        }
        lay(track, cut, track->length() - radius, motion.speed, radius == 0);
        const double before = profile_.length();
        if (radius > 0) {
            const auto blend = std::make_shared<BlendTrack>(arm, track, tracks_[i + 1], radius);
            lay(blend, 0, blend->length(), std::min(motion.speed, motions_[i + 1].speed), false);
        }
        passed.push_back((before + profile_.length()) / 2);
        cut = radius;
    }
    profile_.plan(motionAcceleration);
    for (size_t i = 0; i < passed.size(); ++i) {
        marks_.push_back({motions_[i].id, profile_.timeAt(passed[i])});
    }
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
