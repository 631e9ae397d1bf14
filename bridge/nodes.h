#pragma once

#include "bridge/controller.h"

class KordService;
class QObject;
namespace mendo {
class ModuleObject;
}

namespace bridge {

/// Fills the data nodes that stay constant: number of axes, default zone, hand-guiding settings, and the
/// pendant's keys (not pressed).
void fillConstantNodes(QObject* sender, KordService* service, int axes);

/// The node of the pendant's keys, with a child for each: false while it is pressed.
mendo::ModuleObject* pendantKeys();
/// Writes the state of a pendant key; false for an unknown one.
bool writeKey(QObject* sender, const QString& name, bool pressed);

/// Lengths rounded to a nanometre, angles to 1e-11 rad, so that equal postures have equal texts.
Posture roundedPosture(Posture posture);
/// Writes "sys.posture" and emits its `changed` once.
void writePosture(QObject* sender, KordService* service, const Posture& posture);

/// "auto", "manual" or "unknown".
QString modeWord(Mode mode);

}  // namespace bridge
