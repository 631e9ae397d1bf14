#pragma once

#include "simulator/motionqueue.h"

class KordService;
class QObject;
namespace mendo {
class ModuleObject;
}

namespace sim {

/// Fills the data nodes that stay constant: number of axes, default zone, the project's tools and work
/// objects, hand-guiding settings, and the pendant's keys (not pressed).
void fillControllerNodes(QObject* sender, KordService* service, int axes);

/// The node of the pendant's keys, with a child for each: false while it is pressed.
mendo::ModuleObject* pendantKeys();

/// Lengths rounded to a nanometre, angles to 1e-11 rad, so that equal postures have equal texts.
MotionQueue::Posture roundedPosture(MotionQueue::Posture posture);
/// Writes "sys.posture" and emits its `changed` once.
void writePosture(QObject* sender, KordService* service, const MotionQueue::Posture& posture);

}  // namespace sim
