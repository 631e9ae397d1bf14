#pragma once

#include "kinematics/arm.h"

#include <kdl/frames.hpp>
#include <kdl/path.hpp>

#include <memory>
#include <vector>

namespace kin {

/// A radian of turning counts as this length where the tool moves less, so that a turn on the spot
/// takes time, too. Metres.
constexpr double turnRadius = 0.02;

/// The path of one motion, or of the corner between two, over its length in metres.
///
/// The length is that of the tool path, or turnRadius times the turning where that is longer.
/// Arguments `s` run from 0 to length() and are clamped to it.
class Track {
public:
    virtual ~Track() = default;

    double length() const { return length_; }
    virtual KDL::Frame frame(double s) const = 0;
    virtual Joints joints(double s) const = 0;
    /// Length of the tool path from the start, metres.
    virtual double travelled(double s) const = 0;
    /// Whether the joints, not the tool, move evenly.
    virtual bool isJointMotion() const { return false; }

protected:
    double length_ = 0;
};

/// A line, or arcs one after the other.
class PoseTrack : public Track {
public:
    /// A line from `start` to `end`.
    static std::unique_ptr<PoseTrack> line(const KDL::Frame& start, const KDL::Frame& end);
    /// Empty; appendArc() follows.
    explicit PoseTrack(const KDL::Frame& start);

    /// Appends an arc through the position of `aux`. False when the three points make no circle.
    bool appendArc(const KDL::Frame& aux, const KDL::Frame& end);
    /// Finds the joints along the path, beginning next to `start`. The other functions may be used
    /// only when it returned Arm::Fault::None. `reached` (may be null): where the point is
    /// that cannot be reached.
    Arm::Fault follow(const Arm& arm, const Joints& start, double* reached = nullptr);

    KDL::Frame frame(double s) const override;
    Joints joints(double s) const override;
    double travelled(double s) const override;

private:
    struct Part {
        std::unique_ptr<KDL::Path> path;
        double from = 0;            ///< length before it
        double toolPathBefore = 0;  ///< length of the tool path before it
        double toolPath = 0;        ///< length of its tool path
        int steps = 1;              ///< number of knots
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

/// The length along a curve, from samples at equal steps of its parameter.
class LengthTable {
public:
    /// Adds a sample, `ds` of length and `dToolPath` of tool path after the last one.
    void append(double ds, double dToolPath);
    double length() const { return samples_.back().s; }
    /// The curve's parameter, 0 to 1.
    double parameter(double s) const;
    double toolPath(double s) const;

private:
    struct Sample {
        double s = 0, toolPath = 0;
    };
    /// Index of the sample before `s`; `part` is the fraction of the step to the next one.
    size_t find(double s, double* part) const;
    std::vector<Sample> samples_{1};
};

/// All joints move together from one posture to another.
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

/// A blended corner. It leaves the first track `radius` before its end and joins the second one `radius`
/// after its start. In between, the two tracks are mixed with a weight that runs evenly from 0 to 1. For
/// two lines that is the quadratic Bézier curve with the corner as its middle point.
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

}  // namespace kin
