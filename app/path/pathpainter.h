#pragma once

#include "app/path/camera.h"
#include "app/path/pathlayout.h"

#include <QPen>
#include <QSet>

#include <deque>

class QPainter;

namespace app {

/// The kinds of lines and signs, in the drawing and in a legend.
enum class PathSign { Weld, Move, JointMove, Impossible, Point, Seam, Gap };

/// Draws a path as a camera sees it, and single signs for a legend. Lines differ in width, dashes and shape,
/// not only in colour.
class PathPainter {
public:
    PathPainter(QPainter* painter, const Camera& camera) : painter_(painter), camera_(camera) {}

    /// How wide a seam is, px: less where all is small.
    [[nodiscard]] static double seamWidth(const Camera& camera);
    /// How long a scale bar may be, px.
    [[nodiscard]] static double barPixels();

    /// While a long path is turned: thin lines without points.
    void setDraft(bool draft) { draft_ = draft; }

    /// A white sheet with a grid: on the ground under an extent, where it is seen from above or from the side
    /// all over.
    void paintGround(const Extent& extent);
    /// Moves and channels, with the halo of the selected lines; before seams and points.
    void paintMoves(const std::vector<PathMove>& moves, const QSet<int>& selected);
    void paintSeams(const std::deque<Polyline>& pieces);
    /// Parts of a seam on which the laser was off.
    void paintGaps(const std::vector<Polyline>& pieces);
    /// Targets, their numbers, and the tags of the selected lines.
    void paintPoints(const std::vector<PathMove>& moves, const QSet<int>& selected);
    /// Axes, scale bar with its text, and a title that may be empty.
    void paintFrame(const QString& title, const QString& barText);
    /// The laser's diamond, hollow while it is off.
    void paintTool(const Position& position, bool laser);

    static void paintSample(QPainter* painter, PathSign sign, const QRectF& area);

private:
    void paintAxes();
    void paintPlaneGrid();
    void paintGroundGrid(const Extent& extent);
    [[nodiscard]] QVector<QPolygonF> channels(const std::vector<PathMove>& moves) const;
    [[nodiscard]] bool isOut(const QPolygonF& line) const;

    QPainter* painter_;
    const Camera& camera_;
    bool draft_ = false;
};

}  // namespace app
