#pragma once

#include "app/path/polyline.h"

#include <QPointF>
#include <QRectF>

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

/// How positions in space are seen in a place of the screen: along parallel rays, so that all lengths across
/// them have one scale. Angles in rad, positions in m, places on the screen in px.
class Camera {
public:
    static constexpr double leastScale = 50, mostScale = 200000;  ///< px a metre
    static constexpr double fromAbove = 1.5707963267948966;

    /// Where on the screen; what was in the middle stays there.
    void setArea(const QRectF& area) { area_ = area; }
    const QRectF& area() const { return area_; }

    /// `turn`: by how much it is turned about z; at 0 x points to the right. `height`: from how far above it
    /// looks, 0 from the side to `fromAbove`, where at turn 0 y points up.
    void look(double turn, double height);
    /// Goes round what is in the middle. It does not go below the ground or over the top.
    void orbit(double turn, double height);
    double turn() const { return turn_; }
    double height() const { return height_; }

    QPointF seen(const Position& position) const;
    /// A direction in space on the screen, 1 px a metre, y down.
    QPointF direction(const Position& vector) const;
    /// How near it is: of two positions the one with more covers the other.
    double nearness(const Position& position) const;

    /// Shows all of an extent, as large as possible with a margin in px around it.
    void fit(const Extent& extent, double margin);
    /// The same, after a quarter turn where it is larger then.
    void fitTurned(const Extent& extent, double margin);
    /// Enlarges by a factor, within the limits above; what is seen at `fixed` stays there.
    void zoom(double factor, const QPointF& fixed);
    /// Moves what is seen.
    void pan(const QPointF& pixels);

    double pixelsPerMetre() const { return scale_; }
    /// The longest of 1, 2 or 5 times a power of ten metres that takes at most `maxPixels`.
    ScaleBar scaleBar(double maxPixels) const;
    /// What is in the middle.
    Position centre() const { return centre_; }

private:
    QRectF area_{0, 0, 1, 1};
    double turn_ = 0, height_ = fromAbove;
    double scale_ = 1000;
    Position centre_;
    Position right_{1, 0, 0}, up_{0, 1, 0};  ///< of the screen, in space
};

}  // namespace app
