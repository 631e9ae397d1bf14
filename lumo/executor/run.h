#pragma once

#include "module/host.h"
#include "program/runprogram.h"
#include "program/words.h"

#include <QPointer>
#include <QVector>

namespace lumo {

/// A walk over a program, or a single step, from its acceptance to its end.
class Run {
public:
    /// Copies the program: replacing or editing the original changes nothing in a run.
    Run(const ModuleObject* source, int runMode, bool step)
        : records_(QStringLiteral("run")), program(copied(source)), mode(runMode), isStep(step) {
        if (ofHandProgram()) {
            for (ModuleObject* const statement : source->cmobjs()) {
                originals_.append(statement);
            }
        }
    }

    /// Whether it walks over `lumo.program`; only such a run can be resumed.
    [[nodiscard]] bool ofHandProgram() const { return mode == prog::runmode::byHand && !isStep; }
    /// Whether a statement is one of its copies.
    [[nodiscard]] bool holds(const ModuleObject* stmt) const { return stmt->pmobj() == &records_; }
    /// The copied statement of a line; the null node outside.
    [[nodiscard]] ModuleObject* record(int of) const { return records_.c(of); }
    /// The statement of the tree that a line was copied from; null when it is gone, or in other programs.
    [[nodiscard]] ModuleObject* original(int of) const { return originals_.value(of); }

private:
    const ModuleObject* copied(const ModuleObject* source) {
        records_.copyFrom(nullptr, source, false, false);
        return &records_;
    }

    ModuleObject records_;
    QVector<QPointer<ModuleObject>> originals_;

public:
    const prog::RunProgram program;  ///< the values of the copies
    const int mode;                  ///< `hand_or_signalbing` when it was accepted
    const bool isStep;
    bool isAborted = false;    ///< by a pause, an emergency stop or the application's end
    bool inWeld = false;       ///< it begins inside the weld that was left open
    bool inStatement = false;  ///< a statement is being executed, and no stop has come: a stop interrupts it
    int line = -1;             ///< the line that is executed, or is about to be
};

}  // namespace lumo
