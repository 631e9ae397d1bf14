#pragma once

#include "program/signal.h"

#include <QString>

class QVariant;

namespace lumo {

// While the guard is up, nothing of a weld can be switched on: laser, its set points, gas and wire. The
// executor puts it up for a dry run. It stands where outputs are written, by their addresses: it also holds
// for hands, stations and statements that set an output, and for a pilot light that is assigned to the
// laser's output. Switching off is always possible.

void setDryGuard(bool up);
[[nodiscard]] bool isDryGuardUp();

/// Whether this write has to be left out: of a value to a register, or to a bit of one.
[[nodiscard]] bool isHeldDark(const QString& registerName, const QString& type, int bit, int value);
/// The same for an output of a statement or a station.
[[nodiscard]] bool isHeldDark(const prog::Signal& output, const QVariant& state);

}  // namespace lumo
