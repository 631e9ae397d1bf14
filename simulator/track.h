#pragma once

#include "simulator/arm.h"

#include <kdl/frames.hpp>
#include <kdl/path.hpp>

#include <memory>
#include <vector>

namespace sim {

/// A radian of turning counts as this much way where the tool itself moves less, so that a motion on
/// the spot takes its time too.
constexpr double turnRadius = 0.02;

/// The way of one motion, or of the corner between two, over its length in metres.
///
/// The length is that of the tool's path, or turnRadius a radian of turning where that is longer.
/// Arguments `s` run from 0 to length(); values outside give the ends.
class Track {
public:
    virtual ~Track() = default;

    double length() const { return length_; }
    virtual KDL::Frame frame(double s) const = 0;
    virtual Joints joints(double s) const = 0;
    /// Tool path from the start, metres.
    virtual double travelled(double s) const = 0;
    /// Whether the joints, not the tool, are what is led along it.
    virtual bool isJointMotion() const { return false; }

protected:
    double length_ = 0;
};

/// Lines and arcs, one after the other.
class PoseTrack : public Track {
public:
    /// A line from `start` to `end`.
    static std::unique_ptr<PoseTrack> line(const KDL::Frame& start, const KDL::Frame& end);
    /// An empty one at `start`, for arcs.
    explicit PoseTrack(const KDL::Frame& start);

    /// Appends an arc through `aux`, whose orientation does not count. False when the three points
    /// make no circle.
    bool appendArc(const KDL::Frame& aux, const KDL::Frame& end);
    /// Finds the joints along the way, beginning next to `start`. The other functions may be used
    /// only when it returned Arm::Fault::None.
    Arm::Fault follow(const Arm& arm, const Joints& start);

    KDL::Frame frame(double s) const override;
    Joints joints(double s) const override;
    double travelled(double s) const override;

private:
    struct Part {
        std::unique_ptr<KDL::Path> path;
        double from = 0;      ///< length before it
        double way = 0;       ///< tool path before it
        double toolPath = 0;  ///< its own
        int steps = 1;        ///< knots it needs
    };
    void append(std::unique_ptr<KDL::Path> path, double toolPath, double turn, double bend);
    const Part& partAt(double s) const;

    std::vector<Part> parts_;
    KDL::Frame end_;
    struct Knot {
        double s;
        Joints joints;
    };
    std::vector<Knot> knots_;
};

/// The length along a curve that is known by evenly spaced samples.
class LengthTable {
public:
    /// The next sample is `ds` of length and `dWay` of tool path behind the last one.
    void append(double ds, double dWay);
    double length() const { return samples_.back().s; }
    /// The curve's parameter, 0 to 1.
    double share(double s) const;
    double way(double s) const;

private:
    struct Sample {
        double s = 0, way = 0;
    };
    /// Number of the sample before `s` and what part of the step to the next one is behind.
    size_t find(double s, double* part) const;
    std::vector<Sample> samples_{1};
};

/// All joints moving from one posture to another together.
class JointTrack : public Track {
public:
    /// `arm` must outlive it.
    JointTrack(const Arm& arm, const Joints& from, const Joints& to);

    KDL::Frame frame(double s) const override;
    Joints joints(double s) const override;
    double travelled(double s) const override;
    bool isJointMotion() const override { return true; }

private:
    const Arm& arm_;
    Joints from_, to_;
    LengthTable table_;
};

/// A corner cut by a parabola. It leaves the first track `radius` before its end and meets the second
/// one as far behind its start; in between the two, each led on to the corner and from it, are mixed
/// evenly. For two lines that is the quadratic Bézier curve with the corner as its middle point.
class BlendTrack : public Track {
public:
    BlendTrack(const Arm& arm, std::shared_ptr<const Track> in, std::shared_ptr<const Track> out,
               double radius);

    KDL::Frame frame(double s) const override;
    Joints joints(double s) const override;
    double travelled(double s) const override;

private:
    KDL::Frame mixed(double u) const;
    Joints mixedJoints(double u) const;

    const Arm& arm_;
    std::shared_ptr<const Track> in_, out_;
    double radius_;
    bool byJoints_;
    LengthTable table_;
};

}  // namespace sim
