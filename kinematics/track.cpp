#include "kinematics/track.h"

#include <kdl/path_circle.hpp>
#include <kdl/path_line.hpp>
#include <kdl/rotational_interpolation_sa.hpp>

#include <algorithm>
#include <cmath>

namespace kin {

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr double knotLength = 0.01;          // metres
constexpr double knotTurn = 5 * pi / 180;    // of the tool, and along an arc
constexpr double sampleTurn = 2 * pi / 180;  // of a joint
constexpr int blendSamples = 32;             // keeps the speed even to 3 % at a right angle
constexpr double samePlace = 1e-5;           // metres
constexpr double collinear = 1e-6;           // sine of the angle between two chords

// KDL::Vector::Norm() returns 0 below a micrometre.
double size(const KDL::Vector& vector) {
    return std::sqrt(dot(vector, vector));
}

double turn(const KDL::Rotation& from, const KDL::Rotation& to) {
    return size(KDL::diff(from, to));
}

Joints mix(const Joints& a, const Joints& b, double fraction) {
    Joints joints(a.size());
    for (size_t i = 0; i < a.size(); ++i) {
        joints[i] = a[i] + (b[i] - a[i]) * fraction;
    }
    return joints;
}

double clamped(double s, double length) {
    return std::min(std::max(s, 0.0), length);
}

/// The number of steps to a target. It is limited, so that a far target in a program does not overflow it; no
/// arm reaches that far.
int steps(double amount, double each) {
    constexpr int most = 1000000;
    const double count = std::ceil(amount / each - 1e-9);
    return count < most ? int(count) : most;
}

}  // namespace

// --- PoseTrack ---------------------------------------------------------------------------------

PoseTrack::PoseTrack(const KDL::Frame& start) : end_(start) {}

std::unique_ptr<PoseTrack> PoseTrack::line(const KDL::Frame& start, const KDL::Frame& end) {
    auto track = std::make_unique<PoseTrack>(start);
    track->append(
        std::make_unique<KDL::Path_Line>(start, end, new KDL::RotationalInterpolation_SingleAxis, turnRadius),
        size(end.p - start.p), turn(start.M, end.M), 0);
    track->end_ = end;
    return track;
}

bool PoseTrack::appendArc(const KDL::Frame& aux, const KDL::Frame& end) {
    const KDL::Vector u = aux.p - end_.p, v = end.p - end_.p;
    const KDL::Vector n = u * v;
    const double uu = dot(u, u), vv = dot(v, v), nn = dot(n, n);
    if (!(std::sqrt(uu) > samePlace && std::sqrt(vv) > samePlace && size(end.p - aux.p) > samePlace &&
          nn > collinear * collinear * uu * vv)) {
        return false;
    }

    const KDL::Vector center = end_.p + ((uu * v - vv * u) * n) / (2 * nn);
    const KDL::Vector normal = n / std::sqrt(nn);
    const KDL::Vector from = end_.p - center, to = end.p - center;
    double angle = std::atan2(dot(normal, from * to), dot(from, to));
    if (angle <= 0) {
        angle += 2 * pi;
    }
    // The library takes plane and direction from a third point: a quarter turn after the start.
    append(std::make_unique<KDL::Path_Circle>(end_, center, center + normal * from, end.M, angle,
                                              new KDL::RotationalInterpolation_SingleAxis, turnRadius),
           angle * size(from), turn(end_.M, end.M), angle);
    end_ = end;
    return true;
}

void PoseTrack::append(std::unique_ptr<KDL::Path> path, double toolPath, double turn, double bend) {
    Part part;
    part.from = length_;
    part.toolPathBefore = parts_.empty() ? 0 : parts_.back().toolPathBefore + parts_.back().toolPath;
    part.toolPath = toolPath;
    part.steps = std::max(
        {1, kin::steps(toolPath, knotLength), kin::steps(turn, knotTurn), kin::steps(bend, knotTurn)});
    length_ += path->PathLength();
    part.path = std::move(path);
    parts_.push_back(std::move(part));
}

Arm::Fault PoseTrack::follow(const Arm& arm, const Joints& start, double* reached) {
    knots_.assign(1, {0, start});
    for (size_t i = 0; i < parts_.size(); ++i) {
        const double to = i + 1 < parts_.size() ? parts_[i + 1].from : length_;
        for (int step = 1; step <= parts_[i].steps; ++step) {
            const double s = parts_[i].from + (to - parts_[i].from) * step / parts_[i].steps;
            Arm::Fault fault = Arm::Fault::None;
            const auto joints = arm.inverse(toPose(frame(s)), knots_.back().joints, &fault);
            if (!joints) {
                if (reached) {
                    *reached = s;
                }
                return fault;
            }
            knots_.push_back({s, *joints});
        }
    }
    return Arm::Fault::None;
}

const PoseTrack::Part& PoseTrack::partAt(double s) const {
    const auto after = std::upper_bound(parts_.begin(), parts_.end(), s,
                                        [](double value, const Part& part) { return value < part.from; });
    return after == parts_.begin() ? *after : *(after - 1);
}

KDL::Frame PoseTrack::frame(double s) const {
    if (s >= length_) {
        return end_;
    }
    const Part& part = partAt(s);
    return part.path->Pos(std::max(s, 0.0) - part.from);
}

Joints PoseTrack::joints(double s) const {
    const auto after = std::upper_bound(knots_.begin(), knots_.end(), s,
                                        [](double value, const Knot& knot) { return value < knot.s; });
    if (after == knots_.begin()) {
        return knots_.front().joints;
    }
    if (after == knots_.end()) {
        return knots_.back().joints;
    }
    const Knot& before = *(after - 1);
    return mix(before.joints, after->joints, (s - before.s) / (after->s - before.s));
}

double PoseTrack::travelled(double s) const {
    const double at = clamped(s, length_);
    const Part& part = partAt(at);
    const double own = part.path->PathLength();
    return own > 0 ? part.toolPathBefore + part.toolPath * std::min((at - part.from) / own, 1.0)
                   : part.toolPathBefore + part.toolPath;
}

// --- LengthTable -------------------------------------------------------------------------------

void LengthTable::append(double ds, double dToolPath) {
    samples_.push_back({samples_.back().s + ds, samples_.back().toolPath + dToolPath});
}

size_t LengthTable::find(double s, double* part) const {
    const auto after = std::upper_bound(samples_.begin() + 1, samples_.end() - 1, s,
                                        [](double value, const Sample& sample) { return value < sample.s; });
    const Sample& before = *(after - 1);
    const double step = after->s - before.s;
    *part = step > 0 ? clamped((s - before.s) / step, 1.0) : 1.0;
    return size_t(after - samples_.begin()) - 1;
}

double LengthTable::parameter(double s) const {
    double part = 0;
    const size_t index = find(s, &part);
    return (double(index) + part) / double(samples_.size() - 1);
}

double LengthTable::toolPath(double s) const {
    double part = 0;
    const size_t index = find(s, &part);
    return samples_[index].toolPath + (samples_[index + 1].toolPath - samples_[index].toolPath) * part;
}

// --- JointTrack --------------------------------------------------------------------------------

JointTrack::JointTrack(const Arm& arm, const Joints& from, const Joints& to)
    : arm_(arm), from_(from), to_(to) {
    double widest = 0;
    for (size_t i = 0; i < from.size(); ++i) {
        widest = std::max(widest, std::abs(to[i] - from[i]));
    }
    const int count = std::max(1, kin::steps(widest, sampleTurn));
    KDL::Vector last = toFrame(arm.forward(from)).p;
    for (int i = 1; i <= count; ++i) {
        const KDL::Vector next = toFrame(arm.forward(mix(from, to, double(i) / count))).p;
        const double step = size(next - last);
        table_.append(std::max(step, turnRadius * widest / count), step);
        last = next;
    }
    length_ = table_.length();
}

KDL::Frame JointTrack::frame(double s) const {
    return toFrame(arm_.forward(joints(s)));
}

Joints JointTrack::joints(double s) const {
    return s >= length_ ? to_ : mix(from_, to_, table_.parameter(s));
}

double JointTrack::travelled(double s) const {
    return table_.toolPath(s);
}

// --- BlendTrack --------------------------------------------------------------------------------

BlendTrack::BlendTrack(const Arm& arm, std::shared_ptr<const Track> in, std::shared_ptr<const Track> out,
                       double radius)
    : arm_(arm),
      in_(std::move(in)),
      out_(std::move(out)),
      radius_(radius),
      byJoints_(in_->isJointMotion() && out_->isJointMotion()) {
    KDL::Frame last = mixed(0);
    for (int i = 1; i <= blendSamples; ++i) {
        const KDL::Frame next = mixed(double(i) / blendSamples);
        const double step = size(next.p - last.p);
        table_.append(std::max(step, turnRadius * turn(last.M, next.M)), step);
        last = next;
    }
    length_ = table_.length();
}

KDL::Frame BlendTrack::mixed(double u) const {
    if (byJoints_) {
        return toFrame(arm_.forward(mixedJoints(u)));
    }
    const KDL::Frame in = in_->frame(in_->length() - radius_ * (1 - u));
    const KDL::Frame out = out_->frame(radius_ * u);
    return {KDL::addDelta(in.M, KDL::diff(in.M, out.M), u), in.p * (1 - u) + out.p * u};
}

Joints BlendTrack::mixedJoints(double u) const {
    return mix(in_->joints(in_->length() - radius_ * (1 - u)), out_->joints(radius_ * u), u);
}

KDL::Frame BlendTrack::frame(double s) const {
    return mixed(table_.parameter(s));
}

Joints BlendTrack::joints(double s) const {
    return mixedJoints(table_.parameter(s));
}

double BlendTrack::travelled(double s) const {
    return table_.toolPath(s);
}

}  // namespace kin
