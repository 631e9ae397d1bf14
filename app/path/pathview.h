#pragma once

#include "app/path/camera.h"
#include "app/path/pathsheet.h"

#include <QSet>
#include <QTimer>
#include <QWidget>

#include <vector>

class QPinchGesture;

namespace app {

class SeamTrack;

/// A path as it is seen from one side, with the welded seams, the robot and the laser on it. A drag turns the
/// view in space, and moves the others; two fingers, the wheel, + and - zoom; a tap chooses a line. Until it
/// is moved or zoomed by hand it follows the program.
class PathView : public QWidget {
    Q_OBJECT
public:
    using Moves = PathSheet::Moves;
    enum class Side { Space, Above, Side };

    /// Both must outlive it.
    PathView(const SeamTrack* seams, const sim::Arm* arm, QWidget* parent = nullptr);

    void setSide(Side side);
    Side side() const { return side_; }
    void setMoves(const Moves& moves);
    const std::vector<PathMove>& moves() const { return sheet_.moves(); }
    /// Lines of the program.
    void setSelected(const QSet<int>& lines);
    const QSet<int>& selected() const { return sheet_.chosen(); }

    void showAll();
    /// Zooms to all welds; in a program without welds to the whole path.
    void showWelds();
    /// A weld, by its number in the program from 0.
    void showSeam(int seam);
    void showLine(int line);
    void zoom(double factor) { zoomAt(factor, camera_.area().center()); }
    const Camera& camera() const { return camera_; }

    QSize sizeHint() const override { return {400, 400}; }
    QSize minimumSizeHint() const override { return {200, 120}; }

signals:
    void lineTapped(int line);

protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    enum class Aim { All, Welds, Seam, Line, Free };
    void aimAt(Aim aim, int number);
    void aim();
    [[nodiscard]] Extent extentOf(Aim aim) const;
    void redraw();
    void redrawByHand();
    void repaintSoon();
    void follow();
    void drawSheet();
    void drawBand();
    [[nodiscard]] std::vector<Position> skeleton() const;
    [[nodiscard]] QRectF livePlace() const;
    void onPinch(const QPinchGesture* pinch);
    void zoomAt(double factor, const QPointF& fixed);
    void drag(const QPointF& pixels);
    [[nodiscard]] int chosen() const;

    const SeamTrack* seams_;
    const sim::Arm* arm_;
    Side side_ = Side::Above;
    Camera camera_;
    PathSheet sheet_;
    Aim aim_ = Aim::Welds;
    int aimNumber_ = 0;  ///< of the seam or line

    QRectF live_;  ///< where robot and laser were painted

    QTimer bands_;  ///< while a long path is drawn
    QTimer repaint_;
    QTimer rest_;  ///< after a drag of a long path, until it is drawn in full
    QPointF grip_, last_;
    bool isDragged_ = false, isPinched_ = false;
};

}  // namespace app
