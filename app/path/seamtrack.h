#pragma once

#include "app/path/polyline.h"
#include "simulator/motionplan.h"

#include <QObject>

#include <deque>

namespace workcell {
class TreeFollower;
struct Change;
}  // namespace workcell
namespace sim {
class Cell;
class Controller;
}  // namespace sim

namespace app {

/// The seams that were welded: the path of the tool while the laser emitted. Of very long seams the last part
/// is kept.
class SeamTrack : public QObject {
    Q_OBJECT
public:
    static constexpr int piecePoints = 1000;
    static constexpr int mostPieces = 100;

    /// All must outlive it. The follower announces a start before the executor begins the run.
    SeamTrack(sim::Controller* controller, sim::Cell* cell, workcell::TreeFollower* follower,
              QObject* parent = nullptr);

    const Position& tool() const { return tool_; }
    /// Of the robot, rad.
    const sim::Joints& joints() const { return joints_; }
    bool emitting() const { return emitting_; }
    /// Of at most piecePoints points each.
    const std::deque<Polyline>& pieces() const { return pieces_; }
    /// How many pieces were dropped or cleared before those: the first one has this number, for good.
    int firstPiece() const { return firstPiece_; }
    /// Of all seams since clear(), metres.
    double length() const { return length_; }
    /// Of the weld that was begun last.
    double weldLength() const { return length_ - lengthBefore_; }
    void clear();

signals:
    /// Tool, laser or seams changed.
    void changed();
    /// There are no seams any more.
    void cut();

private:
    void onTree(const workcell::Change& change);
    void onEmitting(bool on);
    void onMoved();
    void begin();
    void append();
    void read();

    Position tool_;
    sim::Joints joints_;
    bool emitting_;
    bool fromFirstLine_ = false;  ///< a run from the first line has been triggered
    std::deque<Polyline> pieces_;
    int firstPiece_ = 0;
    double length_ = 0;
    double lengthBefore_ = 0;  ///< before the last weld
};

/// The posture that the controller reports.
sim::MotionPlan::Posture postureNow();

}  // namespace app
