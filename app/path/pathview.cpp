#include "app/path/pathview.h"

#include "app/path/pathpainter.h"
#include "app/path/seamtrack.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <cmath>

namespace app {

namespace {

constexpr int frameMs = 40;
constexpr double zoomStep = 1.25;
constexpr double keyStepPx = 40;
constexpr double wheelStep = 120;  // angle of a notch, in eighths of a degree
const QColor focus(0x2f, 0x6f, 0xb0);

}  // namespace

PathView::PathView(const SeamTrack* seams, QWidget* parent) : QWidget(parent), seams_(seams) {
    setObjectName(QStringLiteral("pathView"));
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("路径视图"));
    repaint_.setSingleShot(true);
    repaint_.setInterval(frameMs);
    connect(&repaint_, &QTimer::timeout, this, QOverload<>::of(&QWidget::update));
    connect(seams, &SeamTrack::changed, this, &PathView::repaintSoon);
}

/// The tool moves a hundred times a second; 25 pictures are enough.
void PathView::repaintSoon() {
    if (isVisible() && !repaint_.isActive()) {
        repaint_.start();
    }
}

void PathView::redraw() {
    background_ = QPixmap();
    update();
}

const QPixmap& PathView::background() {
    const QSize pixels = size() * devicePixelRatioF();
    if (background_.size() == pixels) {
        return background_;
    }
    background_ = QPixmap(pixels);
    background_.setDevicePixelRatio(devicePixelRatioF());
    QPainter painter(&background_);
    painter.setFont(font());
    PathPainter path(&painter, frame_);
    const double bar = frame_.scaleBar(PathPainter::barPixels).metres;
    path.paintSheet(tr("俯视"), tr("侧视"), tr("%1 mm").arg(bar * prog::mmPerM));
    path.paintMoves(moves_, selected_);
    return background_;
}

void PathView::setMoves(const std::vector<PathMove>& moves) {
    moves_ = moves;
    if (showsAll_) {
        fit();
    }
    redraw();
}

void PathView::setSelected(const QSet<int>& lines) {
    selected_ = lines;
    redraw();
}

void PathView::fit() {
    Extent extent;
    for (const PathMove& move : moves_) {
        for (const Position& position : move.path) {
            extent.add(position);
        }
        extent.add(move.target);
    }
    extent.add(seams_->tool());
    frame_.fit(extent);
    showsAll_ = true;
    redraw();
}

void PathView::zoomAt(double factor, const QPointF& fixed) {
    frame_.zoom(factor, fixed);
    showsAll_ = false;
    redraw();
}

void PathView::pan(const QPointF& pixels, const QPointF& grip) {
    frame_.pan(pixels, grip);
    showsAll_ = false;
    redraw();
}

void PathView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.drawPixmap(0, 0, background());
    PathPainter path(&painter, frame_);
    path.paintSeams(seams_->pieces());
    path.paintTool(seams_->tool(), seams_->emitting());
    if (hasFocus()) {
        painter.setPen(QPen(focus, 2));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
}

void PathView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    frame_.setSize(size());
    if (showsAll_) {
        fit();
    }
    redraw();
}

void PathView::wheelEvent(QWheelEvent* event) {
    zoomAt(std::pow(zoomStep, event->angleDelta().y() / wheelStep), event->position());
}

void PathView::mousePressEvent(QMouseEvent* event) {
    grip_ = last_ = event->localPos();
}

void PathView::mouseMoveEvent(QMouseEvent* event) {
    if (!event->buttons().testFlag(Qt::LeftButton)) {
        return;
    }
    pan(event->localPos() - last_, grip_);
    last_ = event->localPos();
}

void PathView::mouseDoubleClickEvent(QMouseEvent*) {
    fit();
}

void PathView::keyPressEvent(QKeyEvent* event) {
    // Left and right move both views, up and down each along its own axis.
    const auto look = [this](double right, double up) {
        pan({-right * keyStepPx, 0}, frame_.above().center());
        pan({0, up * keyStepPx}, frame_.above().center());
        pan({0, up * keyStepPx}, frame_.side().center());
    };
    switch (event->key()) {
        case Qt::Key_Plus:
        case Qt::Key_Equal:
            zoom(zoomStep);
            break;
        case Qt::Key_Minus:
            zoom(1 / zoomStep);
            break;
        case Qt::Key_0:
        case Qt::Key_Home:
            fit();
            break;
        case Qt::Key_Left:
            look(-1, 0);
            break;
        case Qt::Key_Right:
            look(1, 0);
            break;
        case Qt::Key_Up:
            look(0, 1);
            break;
        case Qt::Key_Down:
            look(0, -1);
            break;
        default:
            QWidget::keyPressEvent(event);
    }
}

}  // namespace app
