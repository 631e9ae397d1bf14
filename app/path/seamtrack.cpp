#include "app/path/seamtrack.h"

#include "kord/kordservice.h"
#include "program/words.h"
#include "simulator/cell.h"
#include "simulator/controller.h"
#include "workcell/treefollower.h"

namespace app {

namespace {

constexpr double leastStep = 0.0002;  // metres, between two places of a seam

}  // namespace

Position toolPlace() {
    const mendo::ModuleObject* trans = kordservice()->dataNode(prog::key::posturePlace);
    return {trans->c(0)->getDouble(), trans->c(1)->getDouble(), trans->c(2)->getDouble()};
}

SeamTrack::SeamTrack(sim::Controller* controller, sim::Cell* cell, workcell::TreeFollower* follower,
                     QObject* parent)
    : QObject(parent), tool_(toolPlace()), emitting_(cell->emitting()) {
    connect(controller, &sim::Controller::postureMoved, this, &SeamTrack::onMoved);
    connect(cell, &sim::Cell::emittingChanged, this, &SeamTrack::onEmitting);
    connect(follower, &workcell::TreeFollower::changed, this, &SeamTrack::onTree);
}

void SeamTrack::clear() {
    pieces_.clear();
    length_ = 0;
    if (emitting_) {
        begin();
    }
    emit changed();
}

/// A new pass over the work begins with a clean sheet; going on after a pause, or moving to a point, does
/// not.
void SeamTrack::onTree(const workcell::Change& change) {
    if (change.path == prog::key::triggerStart) {
        fromTheStart_ = change.value.toInt() == 0;
    } else if (change.path == prog::key::triggerOnce) {
        fromTheStart_ = false;
    } else if (change.path == prog::key::executeState && change.value == prog::word::busy && fromTheStart_) {
        fromTheStart_ = false;
        clear();
    }
}

void SeamTrack::onEmitting(bool on) {
    tool_ = toolPlace();
    emitting_ = on;
    if (on) {
        begin();
    } else {
        append();
    }
    emit changed();
}

void SeamTrack::onMoved() {
    tool_ = toolPlace();
    if (emitting_ && distance(tool_, pieces_.back().back()) >= leastStep) {
        append();
    }
    emit changed();
}

void SeamTrack::begin() {
    pieces_.push_back({tool_});
    if (int(pieces_.size()) > mostPieces) {
        pieces_.pop_front();
    }
}

void SeamTrack::append() {
    if (int(pieces_.back().size()) == piecePlaces) {
        const Position last = pieces_.back().back();
        begin();
        pieces_.back().front() = last;
    }
    length_ += distance(tool_, pieces_.back().back());
    pieces_.back().push_back(tool_);
}

}  // namespace app
