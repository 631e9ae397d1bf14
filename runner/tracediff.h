#pragma once

#include "runner/problem.h"
#include "runner/tracesteps.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace run {

/// What differs between two traces.
struct TraceDiff {
    /// What was commanded, or happened, otherwise; empty when the traces are equal but for their times.
    QStringList differences;
    /// The statements from which the second trace is later or earlier by another time than before.
    QStringList shifts;
    /// One line: equal or not, and how much later or earlier the second trace ends.
    QString summary;

    bool isEqual() const { return differences.isEmpty(); }
};

/// Compares two traces statement by statement: what each commanded, how its motions ended, and when it began.
/// Not compared: names of files and options, the log, postures, and what the package notes in the tree.
TraceDiff compare(const TraceSteps& a, const TraceSteps& b);

/// `lumo-run --diff A B`: prints the differences. Returns the exit status: 0 equal but for the times, 1 not,
/// 2 for a file that is no trace.
int printTraceDiff(const QString& a, const QString& b);

}  // namespace run
