// Jogs: a batch of one motion without a result.

#include "bridge/linuxcnc/linuxcnc.h"
#include "kinematics/jog.h"

#include <cmath>

namespace bridge {

using linuxcnc::jogId;
using linuxcnc::Place;

namespace {

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
    if (!standsStill() || !waiting_.empty() || state_->clock < validFrom_) {
        return JogAnswer::Moving;
    }
    const Place from = place();
    const Posture posture{kin::toPose(from.torch), from.joints};
    JogMove whole = held ? kin::farthestJog(arm_, posture, move) : move;
    const double shortest = kin::isTurn(move) ? shortestTurn : shortestLine;
    JogAnswer answer = JogAnswer::TooFast;
    while (true) {
        Motion motion;
        answer = kin::planJog(arm_, posture, whole, &motion);
        if (answer != JogAnswer::Moves) {
            return answer;
        }
        motion.id = jogId;
        Place end = from;
        answer = answerTo(linuxcnc::writeBatch(arm_, {motion}, &end).failure);
        whole.distance /= 2;
        if (answer == JogAnswer::Moves) {
            sendBatch({motion});
            return answer;
        }
        if (!held || std::abs(whole.distance) < shortest) {
            return answer;
        }
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
