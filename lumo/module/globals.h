#pragma once

#include "module/export.h"

class LumoExecutor;

/// Process-wide state of the package. Plain names in the global namespace: hosts and tools resolve
/// them in the shared library by these names.

/// Who fires the executor's triggers: 0 a start by hand, 1 a station, 2 a single step. Written before
/// the trigger.
extern LUMO_EXPORT int hand_or_signalbing;
/// A project has been created or opened.
extern LUMO_EXPORT bool isEnable_moveorder;
/// The point page is shown.
extern LUMO_EXPORT bool isnew_pWgt;
/// The one executor, owned by the `lumo` node; null until the first panel is made.
extern LUMO_EXPORT LumoExecutor* executor;

namespace lumo {

/// Whether a program, a single step or a pause that still closes a weld is under way, by whomever it was
/// begun. The executor provides it.
[[nodiscard]] bool isRunning();

}  // namespace lumo
