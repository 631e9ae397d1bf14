#pragma once

#include "app/path/pathframe.h"
#include "app/path/pathlayout.h"

#include <QPixmap>
#include <QSet>
#include <QTimer>
#include <QWidget>

#include <vector>

namespace app {

class SeamTrack;

/// A path from above and from the side, with the seams and the tool on it. The wheel, + and - zoom, dragging
/// and the arrow keys move it, a double click or 0 shows all of it again. Until it is moved or zoomed all of
/// it stays in view.
class PathView : public QWidget {
    Q_OBJECT
public:
    /// `seams` must outlive it.
    explicit PathView(const SeamTrack* seams, QWidget* parent = nullptr);

    void setMoves(const std::vector<PathMove>& moves);
    const std::vector<PathMove>& moves() const { return moves_; }
    /// Lines of the program.
    void setSelected(const QSet<int>& lines);
    const QSet<int>& selected() const { return selected_; }
    void fit();
    void zoom(double factor) { zoomAt(factor, frame_.above().center()); }
    const PathFrame& frame() const { return frame_; }

    QSize sizeHint() const override { return {600, 480}; }
    QSize minimumSizeHint() const override { return {320, 240}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void redraw();
    void repaintSoon();
    const QPixmap& background();
    void zoomAt(double factor, const QPointF& fixed);
    void pan(const QPointF& pixels, const QPointF& grip);

    const SeamTrack* seams_;
    PathFrame frame_;
    std::vector<PathMove> moves_;
    QSet<int> selected_;
    QPixmap background_;  ///< everything but seams and tool; null when it has to be drawn anew
    QTimer repaint_;
    bool showsAll_ = true;  ///< not moved or zoomed
    QPointF grip_, last_;
};

}  // namespace app
