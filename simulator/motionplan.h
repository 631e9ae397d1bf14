#pragma once

#include "simulator/motioncommand.h"
#include "simulator/speedprofile.h"

#include <memory>
#include <vector>

namespace sim {

class Track;

/// The acceleration of planned motion, m/s².
constexpr double motionAcceleration = 2.0;

/// What one batch of motions will do: the way with its cut corners, the speed along it, and when each
/// motion is passed. Planned whole; what cannot be moved ends the way at the target before it.
class MotionPlan {
public:
    struct Stand {
        Pose pose;
        Joints joints;
    };
    struct Mark {
        int id;
        double time;  ///< seconds from the start: in the middle of the corner, or at the target
    };
    /// The motion that cannot be made, and those behind it that share its fate.
    struct Failure {
        int id = 0;
        int code = MotionDone;
        MotionCommand::Kind kind = MotionCommand::Kind::Line;
        std::vector<int> dropped;
    };

    /// `arm` must outlive the plan.
    MotionPlan(const Arm& arm, const Stand& start, std::vector<MotionCommand> motions);
    ~MotionPlan();
    MotionPlan(MotionPlan&&) noexcept;
    MotionPlan& operator=(MotionPlan&&) noexcept;

    const std::vector<Mark>& marks() const { return marks_; }
    MotionCommand::Kind kind(size_t mark) const { return motions_[mark].kind; }
    const Failure& failure() const { return failure_; }
    /// The failing motion is the last mark: it is moved whole, and fails at its target.
    bool failsAtEnd() const { return failsAtEnd_; }
    const SpeedProfile& profile() const { return profile_; }
    const Stand& end() const { return end_; }
    /// By the way from the start, metres.
    Stand at(double s) const;
    double travelled(double s) const;

private:
    /// A part of a track that is really used.
    struct Piece {
        std::shared_ptr<const Track> track;
        double from = 0;   ///< in the track
        double start = 0;  ///< in the plan
        double way = 0;    ///< tool path before it
    };
    int makeTrack(const Arm& arm, const MotionCommand& motion);
    void layWay(const Arm& arm);
    void lay(std::shared_ptr<const Track> track, double from, double to, double speed, bool stop);
    const Piece* pieceAt(double s) const;

    std::vector<MotionCommand> motions_;
    std::vector<std::shared_ptr<const Track>> tracks_;
    std::vector<Piece> pieces_;
    SpeedProfile profile_;
    std::vector<Mark> marks_;
    Failure failure_;
    bool failsAtEnd_ = false;
    Stand end_;
    double way_ = 0;
};

}  // namespace sim
