#pragma once

#include "app/path/pathframe.h"
#include "app/path/pathlayout.h"
#include "app/path/seamtrack.h"

#include <QPen>
#include <QSet>

class QPainter;

namespace app {

/// The kinds of lines and signs, in the drawing and in its legend.
enum class PathSign { Weld, Move, JointMove, Impossible, Selected, Point, Seam, Gap, Tool, ToolWithLaser };

/// Draws a path in its two views, and single signs for a legend. Lines differ in width, dashes and shape, not
/// only in colour.
class PathPainter {
public:
    static constexpr double barPixels = 140;  ///< of the scale bar, at most

    PathPainter(QPainter* painter, const PathFrame& frame) : painter_(painter), frame_(frame) {}

    void paintMoves(const std::vector<PathMove>& moves, const QSet<int>& selected);
    void paintSeams(const std::deque<Polyline>& pieces);
    /// Parts of a seam on which the laser was off.
    void paintGaps(const std::vector<Polyline>& pieces);
    void paintTool(const Position& position, bool laser);
    /// Titles of the views, grid, border between them and scale bar with its text; before anything else.
    void paintSheet(const QString& above, const QString& side, const QString& barText);

    static void paintSample(QPainter* painter, PathSign sign, const QRectF& area);

private:
    template <typename Draw>
    void inBothViews(Draw draw);
    void paintGrid(const QRectF& view, const QPointF& origin, double step);
    void paintAxes(const QRectF& view, const QString& up);

    QPainter* painter_;
    const PathFrame& frame_;
};

}  // namespace app
