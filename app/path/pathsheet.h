#pragma once

#include "app/path/camera.h"
#include "app/path/pathlayout.h"
#include "app/path/pathpick.h"

#include <QPixmap>
#include <QSet>

#include <memory>
#include <vector>

namespace app {

class SeamTrack;

/// The picture of a path and its seams, kept so that a run paints only what came to it: a pixmap with ground,
/// moves and seams, and one with the points, numbers and axes that lie on them.
class PathSheet {
public:
    using Moves = std::shared_ptr<const std::vector<PathMove>>;

    /// `seams` must outlive it.
    explicit PathSheet(const SeamTrack* seams);

    void setMoves(const Moves& moves);
    [[nodiscard]] const std::vector<PathMove>& moves() const { return *moves_; }
    /// So long that it is to be drafted while a hand turns it.
    [[nodiscard]] bool isLong() const;

    /// Everything is to be drawn anew, with draw().
    void invalidate() { base_ = QPixmap(); }
    [[nodiscard]] bool isValid(const QSize& pixels) const { return base_.size() == pixels; }

    struct Look {
        QSize size;
        double pixelRatio = 1;
        Extent ground;
        QString title, barText;
        bool draft = false;
    };
    /// Draws all of it.
    void draw(const Camera& camera, const Look& look);
    /// Begins to draw it in bands, each with a call of drawBand(): a long path in one piece takes longer than
    /// a stop may wait.
    void begin(const Camera& camera, const Look& look);
    /// Draws the next band, and after the last one points and numbers; where that was. Empty: there is no
    /// more.
    QRectF drawBand();

    /// Lines of the program get the halo and their numbers as tags. Where that changes the picture.
    QRectF choose(const QSet<int>& lines);
    [[nodiscard]] const QSet<int>& chosen() const { return chosen_; }
    /// Draws what was welded since the last time. Where that is.
    QRectF extendSeams();

    void paint(QPainter* painter) const;

private:
    struct SeenPiece {
        QPolygonF track;
        std::size_t taken = 0;  ///< of the positions in space
        double drawnPx = 0;
        bool ended = false;
    };
    [[nodiscard]] QRectF bandAt(int band) const;
    void drawBase(QPainter* painter, const QRectF& part) const;
    void drawOver();
    [[nodiscard]] QRectF redrawAround(const std::vector<std::size_t>& moves);
    [[nodiscard]] std::vector<std::size_t> movesOf(const QSet<int>& lines) const;

    const SeamTrack* seams_;
    Moves moves_;
    std::size_t points_ = 0;
    QSet<int> chosen_;
    std::vector<std::size_t> chosenMoves_;

    Camera camera_;  ///< of the pixmaps
    Look look_;
    std::vector<SeenMove> seen_;
    QPointF middle_;                 ///< numbers stand away from it
    std::vector<SeenPiece> pieces_;  ///< of the seams
    int firstPiece_ = 0;             ///< the number of the first one, see SeamTrack
    QPixmap base_, over_;
    int band_ = 0;  ///< the next one to draw
};

}  // namespace app
