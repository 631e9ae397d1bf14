#pragma once

#include "module/host.h"

#include <QList>
#include <QString>
#include <QVector>

namespace lumo {

// Statements refer to a parameter set by its place in `lumo.param`. Positions of sets and lines count from 0.

/// The lines of `lumo.program` that use the set.
[[nodiscard]] QList<int> linesUsing(int set);
/// As the operator counts them: "3, 7".
[[nodiscard]] QString lineNumbers(const QList<int>& lines);

/// Where each set was before a change of the list and is now; -1 for one that was deleted.
using SetPlaces = QVector<int>;
/// Gives a statement the present place of its set. False where it stays as it is.
bool followSet(QObject* sender, ModuleObject* statement, const SetPlaces& places);

/// Moves a set; the lines of `lumo.program` and the set in force keep theirs.
SetPlaces moveSet(QObject* sender, int from, int to);
/// Deletes a set. Lines that used it have none then, which the check tells; the others keep theirs.
SetPlaces removeSet(QObject* sender, int set);
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
