#pragma once

#include "equipment/ports.h"
#include "module/globals.h"

#include <vector>

namespace lumo {

/// What a hand switched on at the device page and nobody has switched off since. It outlives the page: a
/// loss of power, a start, a single step and the application's end switch these devices off, whether the
/// page is still there or not.

/// The page switched a device (laser, red light, wire or gas). Other ports are not kept.
LUMO_EXPORT void noteByHand(I_PORT device, bool on);
/// Whether any device is on by hand, or this one is.
[[nodiscard]] LUMO_EXPORT bool isLitByHand();
[[nodiscard]] LUMO_EXPORT bool isLitByHand(I_PORT device);
/// The outputs of a device of the page, which go to 0 with it, in the order of an immediate shutdown.
[[nodiscard]] LUMO_EXPORT std::vector<I_PORT> outputsOf(I_PORT device);
/// How often a hand has switched a device off in this process, by its button, its lock or the port page. What
/// a program switched on stays off then.
[[nodiscard]] LUMO_EXPORT int offsByHand(I_PORT device);
/// The outputs that have to go to 0 so that all of them are off, set points included, in the order of an
/// immediate shutdown; the locks are none of them. From now on nothing counts as lit by hand.
[[nodiscard]] LUMO_EXPORT std::vector<I_PORT> takeLitByHand();

}  // namespace lumo
