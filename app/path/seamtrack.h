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
    bool emitting() const { return emitting_; }
    /// Of at most piecePoints points each.
    const std::deque<Polyline>& pieces() const { return pieces_; }
    /// Of all seams since clear(), metres.
    double length() const { return length_; }
    void clear();

signals:
    /// Tool, laser or seams changed.
    void changed();

private:
    void onTree(const workcell::Change& change);
    void onEmitting(bool on);
    void onMoved();
    void begin();
    void append();

    Position tool_;
    bool emitting_;
    bool fromFirstLine_ = false;  ///< a run from the first line has been triggered
    std::deque<Polyline> pieces_;
    double length_ = 0;
};

/// The posture that the controller reports.
sim::MotionPlan::Posture postureNow();
Position toolPosition();

}  // namespace app
