#pragma once

#include "app/path/polyline.h"

#include <QPointF>
#include <QRectF>
#include <QSize>

namespace app {

/// The smallest box around positions.
struct Extent {
    Position least, most;
    bool empty = true;

    void add(const Position& position);
};

/// A round length for a scale bar.
struct ScaleBar {
    double metres = 0;
    double pixels = 0;
};

/// Two views of the same scale, one below the other: from above (x to the right, y up) and from the side (x
/// to the right, z up). A position has the same x in both.
class PathFrame {
public:
    /// In pixels. Each view has half of the height until fit() divides it.
    void setSize(const QSize& size);
    /// Shows all of the extent, as large as possible.
    void fit(const Extent& extent);

    QRectF above() const { return {0, 0, width_, heightAbove_}; }
    QRectF side() const { return {0, heightAbove_, width_, height_ - heightAbove_}; }
    QPointF fromAbove(const Position& position) const;
    QPointF fromSide(const Position& position) const;

    /// Enlarges by a factor, within the limits below; the point seen at `fixed` stays there.
    void zoom(double factor, const QPointF& fixed);
    /// Moves the contents of the view that contains `grip` by pixels.
    void pan(const QPointF& pixels, const QPointF& grip);

    double pixelsPerMetre() const { return scale_; }
    /// The longest of 1, 2 or 5 times a power of ten metres that takes at most `maxPixels`.
    ScaleBar scaleBar(double maxPixels) const;

    static constexpr double leastScale = 50, mostScale = 200000;  ///< pixels a metre

private:
    double width_ = 1, height_ = 1, heightAbove_ = 0.5;
    double scale_ = 1000;
    Position centre_;
};

}  // namespace app
