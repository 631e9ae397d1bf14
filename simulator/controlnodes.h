#pragma once

#include "simulator/motionqueue.h"

class KordService;
class QObject;
namespace mendo {
class ModuleObject;
}

namespace sim {

/// Fills the data nodes that do not change while the robot works: number of axes, default zone, the
/// project's tools and work objects, hand-guiding settings, the pendant's keys at rest.
void fillControllerNodes(QObject* sender, KordService* service, int axes);

/// The node of the pendant's reports, with a child for each key: true while it is not pressed.
mendo::ModuleObject* pendantKeys();

/// As it is shown: lengths rounded to a nanometre, angles to 1e-11 rad, so that what is equal reads equal.
MotionQueue::Stand shownStand(MotionQueue::Stand stand);
/// Writes "sys.posture" and announces it once.
void writePosture(QObject* sender, KordService* service, const MotionQueue::Stand& stand);

}  // namespace sim
