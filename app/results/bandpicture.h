#pragma once

#include "app/results/signalband.h"

#include <QRectF>
#include <QVector>

class QPainter;

namespace app {

/// Draws the signals of a run over its time, one strip each, with the painter's font.
void paintBands(QPainter* painter, const QRectF& area, const QVector<SignalBand>& bands);
/// The height that so many strips and the axis of time take.
[[nodiscard]] double bandPictureHeight(int bands);

}  // namespace app
