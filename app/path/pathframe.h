#pragma once

#include "app/path/polyline.h"

#include <QPointF>
#include <QRectF>
#include <QSize>

namespace app {

/// The room that places take up.
struct Extent {
    Position least, most;
    bool empty = true;

    void add(const Position& place);
};

/// A nice length for a scale bar.
struct ScaleBar {
    double metres = 0;
    double pixels = 0;
};

/// Two views to one scale on a sheet: from above (x to the right, y up) and below it from the side (x
/// to the right, z up), a place straight below itself.
class PathFrame {
public:
    /// Pixels. The views share the height evenly until fit() tells how they need it.
    void setSize(const QSize& size);
    /// Shows all of it as large as it will go.
    void fit(const Extent& extent);

    QRectF above() const { return {0, 0, width_, heightAbove_}; }
    QRectF side() const { return {0, heightAbove_, width_, height_ - heightAbove_}; }
    QPointF fromAbove(const Position& place) const;
    QPointF fromSide(const Position& place) const;

    /// Makes it larger by a factor, within the limits below; what is seen at `fixed` stays there.
    void zoom(double factor, const QPointF& fixed);
    /// Moves what is seen at `grip`, in the view that lies there, by pixels.
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
