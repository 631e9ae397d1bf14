#pragma once

#include "program/ports.h"

#include <QPair>
#include <QPointer>
#include <QVector>

namespace lumo {

/// Analogue outputs and the fraction of full scale that each is to have.
using SetPoints = QVector<QPair<I_PORT, double>>;

/// An operator switches an output, and then writes the set points. Switched on, it is in the record of
/// handlit.h. `page`: the sender; a listener of a write may delete it.
void switchByHand(const QPointer<QObject>& page, I_PORT output, bool on, const SetPoints& setPoints = {});

}  // namespace lumo
