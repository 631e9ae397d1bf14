#pragma once

#include "module/host.h"

#include <QList>
#include <QString>
#include <QVector>

namespace lumo {

// Statements refer to a parameter set by its place in `lumo.param`. Positions of sets and lines count from 0.

/// The lines of `lumo.program` that use the set.
[[nodiscard]] QList<int> linesUsing(int set);
/// The same for every set.
[[nodiscard]] QVector<QList<int>> linesOfAllSets();
/// As the operator counts them: "3, 7".
[[nodiscard]] QString lineNumbers(const QList<int>& lines);

/// The set that a statement uses; null where it uses none.
[[nodiscard]] ModuleObject* setOf(const ModuleObject* statement);
/// Gives a statement that was copied the present place of the set that it used then, and none if that was
/// deleted. A statement that names no set keeps what it has.
void useSet(QObject* sender, ModuleObject* statement, const ModuleObject* set);

/// Moves a set; the lines of `lumo.program` and the set in force keep theirs.
void moveSet(QObject* sender, int from, int to);
/// Deletes a set. Lines that used it have none then, which the check tells; the others keep theirs.
void removeSet(QObject* sender, int set);
/// Adds a copy of a set at the end of the list, under a name that no other set has.
void duplicateSet(QObject* sender, int set);

/// Whether a set has exactly this name.
[[nodiscard]] bool isSetName(const QString& name);
/// The name itself, or the first of "NAME (2)", "NAME (3)" … that no set has.
[[nodiscard]] QString freeSetName(const QString& name);

/// Brings the copies of power and duty cycle in the starts of welding that use the set up to date. Returns
/// the lines.
QList<int> refreshCopies(QObject* sender, int set);

}  // namespace lumo
