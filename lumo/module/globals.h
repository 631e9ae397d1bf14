#pragma once

#include <QtGlobal>

namespace prog {
class ArmModel;
}

/// Makes a name visible in the shared library; all others are hidden.
#define LUMO_EXPORT Q_DECL_EXPORT

// Process-wide state of the package. Plain names in the global namespace, because hosts and tools resolve
// them in the shared library by these names.

/// Who starts the executor: 0 the operator, 1 a station, 2 a single step. Written before the trigger.
extern LUMO_EXPORT int hand_or_signalbing;
/// A project has been created or opened.
extern LUMO_EXPORT bool isEnable_moveorder;
/// The point page is shown.
extern LUMO_EXPORT bool isnew_pWgt;

/// The kinematics of the cell's robot, where the host knows them; null otherwise. The host owns them and sets
/// this before it creates the package's modules.
extern LUMO_EXPORT const prog::ArmModel* lumo_arm;

/// Whether edits that are not saved are kept in recovery files, and such files are offered to the operator. A
/// host with an operator sets it before it creates the package's modules; false until then.
extern LUMO_EXPORT bool lumo_recovery;

namespace lumo {

/// Walks, single steps and pauses on the executor's stack. Written by the executor alone.
extern int runDepth;

/// Whether a program, a single step or a pause that is still closing a weld is under way.
[[nodiscard]] bool isRunning();

}  // namespace lumo
