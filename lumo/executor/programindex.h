#pragma once

#include "executor/circle.h"
#include "module/host.h"

#include <QVector>

/// A program as a run executes it: a copy of its own, with the answers to backward questions about
/// each line worked out once, so that queueing stays linear in the number of lines.
class RunProgram {
public:
    /// Copies the program; replacing or editing the original changes nothing here.
    explicit RunProgram(const ModuleObject* program);

    [[nodiscard]] int lineCount() const { return lines_.size(); }
    /// Whether a statement is one of this copy's.
    [[nodiscard]] bool holds(const ModuleObject* stmt) const { return stmt->pmobj() == &program_; }
    /// The statement at a line; the null node outside.
    [[nodiscard]] ModuleObject* statement(int line) const;
    [[nodiscard]] bool isMove(int line) const;
    /// A missing `execute` counts as true.
    [[nodiscard]] bool isExecuted(int line) const;
    /// The nearest start-of-welding statement before a line, null when there is none.
    [[nodiscard]] ModuleObject* openBefore(int line) const;
    /// The taught point at which the robot stands when a line begins; null when that is its posture.
    [[nodiscard]] ModuleObject* targetBefore(int line) const;

    /// What is wrong with a full circle whose first point is taught.
    [[nodiscard]] CircleFault circleFaultAt(int line) const;
    /// The first executed full circle of lines `from` to before `to` whose points make none; -1: fine.
    [[nodiscard]] int firstBadCircle(int from, int to) const;

private:
    struct Line {
        ModuleObject* statement;
        bool isMove;
        bool isExecuted;
        int openBefore;              ///< -1: none
        ModuleObject* targetBefore;  ///< null: none
    };

    ModuleObject program_;
    QVector<Line> lines_;
};

/// Whether a statement's type names a motion.
bool isMoveStatement(const ModuleObject* stmt);
QString statementType(const ModuleObject* stmt);
bool isExecutedStatement(const ModuleObject* stmt);
