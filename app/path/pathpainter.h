#pragma once

#include "app/path/camera.h"
#include "app/path/pathlayout.h"
#include "app/path/pathpick.h"

#include <QPen>

#include <deque>

class QPainter;

namespace app {

/// The kinds of lines and signs, in the drawing and in a legend.
enum class PathSign { Weld, Move, JointMove, Impossible, Point, Seam, Gap };

/// Draws a path as a camera sees it, and single signs for a legend. Lines differ in width, dashes and shape,
/// not only in colour.
class PathPainter {
public:
    static constexpr double haloBeyond = 6;  ///< px at factor 1, at either side of a chosen line

    PathPainter(QPainter* painter, const Camera& camera)
        : painter_(painter), camera_(camera), part_(camera.area()) {}

    /// How wide a seam is, px: less where all is small.
    [[nodiscard]] static double seamWidth(const Camera& camera);
    /// How long a scale bar may be, px.
    [[nodiscard]] static double barPixels();

    /// Paints this part of the camera's area only.
    void setPart(const QRectF& part) { part_ = part; }
    /// While a long path is turned: thin lines.
    void setDraft(bool draft) { draft_ = draft; }

    /// A white sheet with a grid: on the ground under an extent, where it is seen from above or from the side
    /// all over.
    void paintGround(const Extent& extent);
    /// Moves and channels, with the halo of chosen ones, which are positions in `moves`; before seams and
    /// points. `seen`: the moves as the camera sees them.
    void paintMoves(const std::vector<PathMove>& moves, const std::vector<SeenMove>& seen,
                    const std::vector<std::size_t>& chosen = {});
    void paintSeams(const std::deque<Polyline>& pieces);
    /// Parts of a seam on which the laser was off.
    void paintGaps(const std::vector<Polyline>& pieces);
    /// The targets.
    void paintPoints(const std::vector<PathMove>& moves, const std::vector<SeenMove>& seen);
    /// Ground, moves, gaps, seams, points and numbers: all of a path that was welded.
    void paintWelded(const std::vector<PathMove>& moves, const Extent& extent,
                     const std::vector<Polyline>& gaps, const std::deque<Polyline>& pieces);
    /// Axes, scale bar with its text, and a title that may be empty.
    void paintFrame(const QString& title, const QString& barText);
    /// The laser's diamond, hollow while it is off.
    void paintTool(const Position& position, bool laser);

    static void paintSample(QPainter* painter, PathSign sign, const QRectF& area);

private:
    void paintAxes();
    void paintPlaneGrid();
    void paintGroundGrid(const Extent& extent);
    [[nodiscard]] QVector<QPolygonF> channels(const std::vector<PathMove>& moves,
                                              const std::vector<SeenMove>& seen) const;
    [[nodiscard]] bool isOut(const QRectF& box) const;

    QPainter* painter_;
    const Camera& camera_;
    QRectF part_;
    bool draft_ = false;
};

}  // namespace app
