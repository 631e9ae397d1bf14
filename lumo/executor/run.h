#pragma once

#include "executor/programindex.h"
#include "module/host.h"
#include "program/words.h"

#include <QPointer>
#include <QVector>

namespace lumo {

/// A walk over a program, or a single step, from its acceptance to its end.
struct Run {
    /// Copies the program: replacing or editing the original changes nothing in a run.
    Run(const ModuleObject* source, int runMode, bool step) : program(source), mode(runMode), isStep(step) {
        if (ofHandProgram()) {
            for (ModuleObject* const statement : source->cmobjs()) {
                originals.append(statement);
            }
        }
    }

    /// Whether it walks over `lumo.program`; only such a run can be resumed.
    [[nodiscard]] bool ofHandProgram() const { return mode == prog::runmode::byHand && !isStep; }
    /// The statement of the tree that a line was copied from; null when it is gone, or in other programs.
    [[nodiscard]] ModuleObject* original(int of) const { return originals.value(of); }

    RunProgram program;
    int mode;  ///< `hand_or_signalbing` when it was accepted
    bool isStep;
    bool isAborted = false;    ///< by a pause, an emergency stop or the application's end
    bool inWeld = false;       ///< it begins inside the weld that was left open
    bool inStatement = false;  ///< a statement is being executed, and no stop has come: a stop interrupts it
    int line = -1;             ///< the line that is executed, or is about to be
    QVector<QPointer<ModuleObject>> originals;
};

}  // namespace lumo
