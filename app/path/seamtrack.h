#pragma once

#include "app/path/polyline.h"

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

/// The seams that the laser has made: where the tool went while it emitted. Of very long ones the
/// last part is kept.
class SeamTrack : public QObject {
    Q_OBJECT
public:
    static constexpr int piecePlaces = 1000;
    static constexpr int mostPieces = 100;

    /// All must outlive it. The follower hears of a run before the executor begins it.
    SeamTrack(sim::Controller* controller, sim::Cell* cell, workcell::TreeFollower* follower,
              QObject* parent = nullptr);

    /// Where the tool is now.
    const Position& tool() const { return tool_; }
    bool emitting() const { return emitting_; }
    /// Of at most piecePlaces places each.
    const std::deque<Polyline>& pieces() const { return pieces_; }
    /// Of all since clear(), metres.
    double length() const { return length_; }
    void clear();

signals:
    /// Tool, laser or seam are not what they were.
    void changed();

private:
    void onTree(const workcell::Change& change);
    void onEmitting(bool on);
    void onMoved();
    void begin();
    void append();

    Position tool_;
    bool emitting_;
    bool fromTheStart_ = false;  ///< a run from the first line was asked for
    std::deque<Polyline> pieces_;
    double length_ = 0;
};

/// Where the controller says that the tool is.
Position toolPlace();

}  // namespace app
