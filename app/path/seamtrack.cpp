#include "app/path/seamtrack.h"

#include "kord/kordservice.h"
#include "program/statement.h"
#include "program/words.h"
#include "simulator/cell.h"
#include "simulator/controller.h"
#include "workcell/treefollower.h"

namespace app {

namespace {

constexpr double leastStepM = 0.0002;  // between two points of a seam

}  // namespace

sim::MotionPlan::Posture postureNow() {
    const auto now = prog::TaughtPoint::from(kordservice()->dataNode(prog::key::posture));
    return {{{now.trans.x, now.trans.y, now.trans.z}, now.rot}, now.joints};
}

SeamTrack::SeamTrack(sim::Controller* controller, sim::Cell* cell, workcell::TreeFollower* follower,
                     QObject* parent)
    : QObject(parent), emitting_(cell->emitting()) {
    read();
    connect(controller, &sim::Controller::postureMoved, this, &SeamTrack::onMoved);
    connect(cell, &sim::Cell::emittingChanged, this, &SeamTrack::onEmitting);
    connect(follower, &workcell::TreeFollower::changed, this, &SeamTrack::onTree);
}

void SeamTrack::read() {
    const auto now = prog::TaughtPoint::from(kordservice()->dataNode(prog::key::posture));
    tool_ = now.trans;
    joints_ = now.joints;
}

void SeamTrack::clear() {
    firstPiece_ += int(pieces_.size());
    pieces_.clear();
    length_ = lengthBefore_ = 0;
    if (emitting_) {
        begin();
    }
    emit cut();
    emit changed();
}

/// A run from the first line begins with a clean sheet; a resumed run or a single step does not.
void SeamTrack::onTree(const workcell::Change& change) {
    if (change.path == prog::key::triggerStart) {
        fromFirstLine_ = change.value.toInt() == 0;
    } else if (change.path == prog::key::triggerOnce) {
        fromFirstLine_ = false;
    } else if (change.path == prog::key::executeState && change.value == prog::word::busy && fromFirstLine_) {
        fromFirstLine_ = false;
        clear();
    } else if (change.path == prog::key::weldOpen && change.value.toBool()) {
        lengthBefore_ = length_;
    }
}

void SeamTrack::onEmitting(bool on) {
    read();
    emitting_ = on;
    if (on) {
        begin();
    } else {
        append();
    }
    emit changed();
}

void SeamTrack::onMoved() {
    read();
    if (emitting_ && distance(tool_, pieces_.back().back()) >= leastStepM) {
        append();
    }
    emit changed();
}

void SeamTrack::begin() {
    pieces_.push_back({tool_});
    if (int(pieces_.size()) > mostPieces) {
        pieces_.pop_front();
        ++firstPiece_;
    }
}

void SeamTrack::append() {
    if (int(pieces_.back().size()) == piecePoints) {
        const Position last = pieces_.back().back();
        begin();
        pieces_.back().front() = last;
    }
    length_ += distance(tool_, pieces_.back().back());
    pieces_.back().push_back(tool_);
}

}  // namespace app
