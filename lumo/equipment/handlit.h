#pragma once

#include "module/globals.h"
#include "program/ports.h"

#include <vector>

namespace lumo {

// Which devices an operator switched on at the device page and that have not been switched off since. The
// record outlives the page: a loss of power, a start, a single step and the application's end switch these
// devices off.

/// An operator switched a device on or off, by its button, its lock or the port page. Other ports are
/// ignored.
LUMO_EXPORT void noteByHand(I_PORT device, bool on);
/// Whether any device, or this one, is on by hand.
[[nodiscard]] LUMO_EXPORT bool isLitByHand();
[[nodiscard]] LUMO_EXPORT bool isLitByHand(I_PORT device);
/// The outputs that go to 0 with a device, in the order of an immediate shutdown.
[[nodiscard]] LUMO_EXPORT std::vector<I_PORT> outputsOf(I_PORT device);
/// How often operators have switched a device off in this process. A program compares it with the count at
/// the opening of a weld: a device that was switched off since stays off.
[[nodiscard]] LUMO_EXPORT int offsByHand(I_PORT device);
/// The outputs of all devices that are on by hand, set points included, in the order of an immediate
/// shutdown. The safety locks are not among them. Afterwards no device counts as on by hand.
[[nodiscard]] LUMO_EXPORT std::vector<I_PORT> takeLitByHand();

}  // namespace lumo
