// Jogs: a batch of one motion without a result.

#include "bridge/linuxcnc/linuxcnc.h"
#include "kinematics/jog.h"

#include <cmath>

namespace bridge {

using linuxcnc::jogId;
using linuxcnc::Place;

namespace {

// A held jog is made in pieces: to look farther ahead could take longer than LinuxCNC waits for a heartbeat.
constexpr double pieceLine = 0.15;  // m
constexpr double pieceTurn = 0.5;   // rad
// Shorter than a key is held.
constexpr double shortestLine = 0.001;  // m
constexpr double shortestTurn = 0.02;   // rad

JogAnswer answerTo(int code) {
    switch (code) {
        case MotionDone:
            return JogAnswer::Moves;
        case JointLimit:
            return JogAnswer::JointLimit;
        case linuxcnc::TooFast:
            return JogAnswer::TooFast;
        default:
            return JogAnswer::OutOfReach;
    }
}

}  // namespace

JogAnswer LinuxCnc::startJog(const JogMove& move, bool held) {
    if (!linked_ || !on_) {
        return JogAnswer::DriveOff;
    }
    dropTold();
    if (!standsStill() || !waiting_.empty() || state_->clock < validFrom_) {
        return JogAnswer::Moving;
    }
    const JogAnswer answer = sendJog(move, held);
    if (answer == JogAnswer::Moves && held) {
        heldJog_ = move;
    }
    return answer;
}

/// Sends a step, or the next piece of a held jog.
JogAnswer LinuxCnc::sendJog(const JogMove& move, bool held) {
    const Place from = place();
    const Posture posture{kin::toPose(from.torch), from.joints};
    JogMove whole = held ? kin::farthestJog(arm_, posture, move, pieceLine, pieceTurn) : move;
    const double shortest = kin::isTurn(move) ? shortestTurn : shortestLine;
    while (true) {
        Motion motion;
        JogAnswer answer = kin::planJog(arm_, posture, whole, &motion);
        if (answer != JogAnswer::Moves) {
            return answer;
        }
        motion.id = jogId;
        Place end = from;
        answer = answerTo(linuxcnc::writeBatch(arm_, {motion}, &end).failure);
        if (answer == JogAnswer::Moves) {
            sendBatch({motion});
            return answer;
        }
        whole.distance /= 2;
        if (!held || std::abs(whole.distance) < shortest) {
            return answer;
        }
    }
}

/// A jog's batch has ended; a held jog goes on with the next piece.
void LinuxCnc::endJog() {
    sent_.pop_front();
    if (!heldJog_ || sendJog(*heldJog_, true) != JogAnswer::Moves) {
        heldJog_.reset();
        tellMoving(false);
    }
}

void LinuxCnc::stopJog() {
    if (isJogging()) {
        stop();
    }
}

bool LinuxCnc::isJogging() const {
    return !sent_.empty() && sent_.front().isJog();
}

/// Nothing is under way, and nothing was ordered that may be.
bool LinuxCnc::standsStill() const {
    return sent_.empty() && !moving_ && stopOrder_ == 0;
}

}  // namespace bridge
