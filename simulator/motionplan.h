#pragma once

#include "simulator/motioncommand.h"
#include "simulator/speedprofile.h"

#include <memory>
#include <vector>

namespace kin {
class Track;
}

namespace sim {

/// The acceleration of planned motion, m/s².
constexpr double motionAcceleration = 2.0;

/// The plan of one batch of motions: the path with its blended corners, the speed along it, and when each
/// motion is passed. The path ends at the last target before a motion that cannot be made.
class MotionPlan {
public:
    using Posture = bridge::Posture;
    /// When a motion is passed.
    struct Mark {
        int id;
        double time;  ///< seconds from the start: in the middle of the corner, or at the target
    };
    /// The motion that cannot be made, and the motions after it, which are dropped.
    struct Failure {
        int id = 0;
        int code = MotionDone;
        MotionCommand::Kind kind = MotionCommand::Kind::Line;
        std::vector<int> dropped;
        double atM = 0;  ///< of a point that cannot be reached: along the motion's track
    };

    /// `arm` must outlive the plan. `cornerAcceleration`: as in Latency, m/s².
    MotionPlan(const Arm& arm, const Posture& start, std::vector<MotionCommand> motions,
               double cornerAcceleration = 0);
    ~MotionPlan();
    MotionPlan(MotionPlan&&) noexcept;
    MotionPlan& operator=(MotionPlan&&) noexcept;

    const std::vector<Mark>& marks() const { return marks_; }
    MotionCommand::Kind kind(size_t mark) const { return motions_[mark].kind; }
    const Failure& failure() const { return failure_; }
    /// The failing motion is carried out and fails at its target; it is the last mark.
    bool failsAtEnd() const { return failsAtEnd_; }
    const SpeedProfile& profile() const { return profile_; }
    const Posture& end() const { return end_; }
    /// The posture, and the length of the tool path so far, at path length `s` (metres).
    Posture at(double s) const;
    double travelled(double s) const;

private:
    /// The used part of a track.
    struct Piece {
        std::shared_ptr<const kin::Track> track;
        double from = 0;      ///< where it starts in the track
        double start = 0;     ///< where it starts in the plan
        double toolPath = 0;  ///< length of the tool path before it
    };
    /// The corner behind a motion: it begins and ends `radius` beside the target, 0: the arm stops there.
    struct Corner {
        double radius = 0, speed = 0;
    };
    int makeTrack(const Arm& arm, const MotionCommand& motion);
    void layPath(const Arm& arm, double cornerAcceleration);
    Corner cornerBehind(size_t motion, double acceleration) const;
    void lay(std::shared_ptr<const kin::Track> track, double from, double to, double speed, bool stop);
    const Piece* pieceAt(double s) const;

    std::vector<MotionCommand> motions_;
    std::vector<std::shared_ptr<const kin::Track>> tracks_;
    std::vector<Piece> pieces_;
    SpeedProfile profile_;
    std::vector<Mark> marks_;
    Failure failure_;
    bool failsAtEnd_ = false;
    Posture end_;
    double toolPath_ = 0;
};

}  // namespace sim
