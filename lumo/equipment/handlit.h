#pragma once

#include "module/globals.h"
#include "program/ports.h"

#include <vector>

class QObject;

namespace lumo {

// Which digital outputs an operator switched on, at the device page or by holding a test of the port page,
// and that have not been switched off since. The record outlives the page: a loss of power, a start, a single
// step and the application's end switch these outputs off.
//
// It stands in the tree below `lumo.byHand`, so that a flight recording has it and a replay can set it:
// `lit.WORD` whether an output is on, `off.WORD` whether it was switched off since the last opening (WORD:
// the port's, prog::Port).

/// An operator switched an output on or off, by its button, its lock, its test or the port page. Inputs and
/// analogue outputs are ignored.
LUMO_EXPORT void noteByHand(I_PORT device, bool on);
/// Whether any device, or this one, is on by hand.
[[nodiscard]] LUMO_EXPORT bool isLitByHand();
[[nodiscard]] LUMO_EXPORT bool isLitByHand(I_PORT device);
/// Whether lines are executed or the laser is on by hand: a stop must find the GUI thread free, so that long
/// work is put off or done in pieces.
[[nodiscard]] LUMO_EXPORT bool mustStopAtOnce();
/// The outputs that go to 0 with an output, in the order of an immediate shutdown: itself, and a device's set
/// points.
[[nodiscard]] LUMO_EXPORT std::vector<I_PORT> outputsOf(I_PORT device);
/// Whether operators have switched a device off since the last opening of a weld: it stays off until the next
/// one.
[[nodiscard]] LUMO_EXPORT bool isOffByHand(I_PORT device);
/// A weld opens.
LUMO_EXPORT void forgetOffByHand(QObject* sender, I_PORT device);
/// All outputs that are on by hand, set points included, in the order of an immediate shutdown. Safety locks
/// that the device page has opened are not among them. Afterwards nothing counts as on by hand. `sender`: who
/// takes it to switch them off.
[[nodiscard]] LUMO_EXPORT std::vector<I_PORT> takeLitByHand(QObject* sender);

}  // namespace lumo
