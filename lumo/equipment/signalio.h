#pragma once

#include "program/signal.h"

class QVariant;

namespace lumo {

/// The state of an input; false when it is not connected or cannot be read.
[[nodiscard]] bool signalLevel(QObject* sender, const prog::Signal& input);
/// Hands the state of an output to the robot service, without waiting for it; nothing where a dry run forbids
/// that.
void writeSignal(QObject* sender, const prog::Signal& output, const QVariant& state);

}  // namespace lumo
