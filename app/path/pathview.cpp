#include "app/path/pathview.h"

#include "app/path/armglass.h"
#include "app/path/pathpainter.h"
#include "app/path/seamtrack.h"
#include "look/scale.h"
#include "look/tokens.h"

#include <QGestureEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <cmath>

namespace app {

namespace {

constexpr int frameMs = 40;
constexpr int restMs = 150;
constexpr double zoomStep = 1.25;
constexpr double keyStepPx = 40;
constexpr double wheelStep = 120;  // angle of a notch, in eighths of a degree
constexpr double orbitRadPerPx = 0.008;
// From the front right of the robot, a little from above.
constexpr double spaceTurn = 2.15, spaceHeight = 0.5;

double heightOf(PathView::Side side) {
    switch (side) {
        case PathView::Side::Space:
            return spaceHeight;
        case PathView::Side::Above:
            return Camera::fromAbove;
        case PathView::Side::Side:
            return 0;
    }
    return 0;
}

}  // namespace

PathView::PathView(const SeamTrack* seams, const sim::Arm* arm, QWidget* parent)
    : QWidget(parent), seams_(seams), arm_(arm), sheet_(seams) {
    setObjectName(QStringLiteral("pathView"));
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(tr("路径视图"));
    grabGesture(Qt::PinchGesture);
    for (QTimer* timer : {&repaint_, &rest_}) {
        timer->setSingleShot(true);
    }
    connect(&bands_, &QTimer::timeout, this, &PathView::drawBand);
    repaint_.setInterval(frameMs);
    rest_.setInterval(restMs);
    connect(&repaint_, &QTimer::timeout, this, &PathView::follow);
    connect(&rest_, &QTimer::timeout, this, &PathView::redraw);
    connect(seams, &SeamTrack::changed, this, &PathView::repaintSoon);
    connect(seams, &SeamTrack::cut, this, &PathView::redraw);
}

// --- What is shown ------------------------------------------------------------------------------

void PathView::setSide(Side side) {
    side_ = side;
    camera_.look(spaceTurn, heightOf(side));
    if (aim_ == Aim::Free) {
        aim_ = Aim::Welds;
    }
    aim();
}

void PathView::setMoves(const Moves& moves) {
    sheet_.setMoves(moves);
    aim();
}

void PathView::setSelected(const QSet<int>& lines) {
    if (lines != sheet_.chosen()) {
        update(sheet_.choose(lines).toAlignedRect());
    }
}

void PathView::showAll() {
    aimAt(Aim::All, 0);
}

void PathView::showWelds() {
    aimAt(Aim::Welds, 0);
}

void PathView::showSeam(int seam) {
    aimAt(Aim::Seam, seam);
}

void PathView::showLine(int line) {
    aimAt(Aim::Line, line);
}

void PathView::aimAt(Aim aimed, int number) {
    aim_ = aimed;
    aimNumber_ = number;
    aim();
}

Extent PathView::extentOf(Aim aimed) const {
    Extent extent;
    for (const PathMove& move : sheet_.moves()) {
        const bool isMeant = aimed == Aim::All || (aimed == Aim::Welds && move.weld) ||
                             (aimed == Aim::Seam && move.seam == aimNumber_) ||
                             (aimed == Aim::Line && move.line == aimNumber_);
        if (!isMeant) {
            continue;
        }
        for (const Polyline* part : {&move.path, &move.corner}) {
            for (const Position& position : *part) {
                extent.add(position);
            }
        }
        extent.add(move.target);
    }
    if (extent.empty && aimed != Aim::All) {
        return extentOf(Aim::All);
    }
    if (extent.empty || aimed == Aim::All) {
        extent.add(seams_->tool());
    }
    return extent;
}

/// Points the camera at what is aimed at, after a change of it, of the size or of the program.
void PathView::aim() {
    const double margin = look::px(width() < look::px(300) || height() < look::px(300) ? 30 : 52);
    camera_.setArea(rect());
    if (aim_ != Aim::Free && side_ == Side::Space) {
        camera_.fit(extentOf(aim_), margin);
    } else if (aim_ != Aim::Free) {
        camera_.fitTurned(extentOf(aim_), margin);
    }
    redraw();
}

int PathView::chosen() const {
    return selected().size() == 1 ? *selected().begin() : -1;
}

// --- Painting -----------------------------------------------------------------------------------

void PathView::redraw() {
    sheet_.invalidate();
    update();
}

/// A long path is drafted until the hand rests.
void PathView::redrawByHand() {
    aim_ = Aim::Free;
    if (sheet_.isLong()) {
        rest_.start();
    }
    redraw();
}

/// The tool moves a hundred times a second; 25 pictures are enough.
void PathView::repaintSoon() {
    if (isVisible() && !repaint_.isActive()) {
        repaint_.start();
    }
}

/// Draws what the tool has welded meanwhile, and paints this part, the robot and the laser anew.
void PathView::follow() {
    if (!isVisible()) {
        return;
    }
    const QRectF before = live_;
    const QRectF drawn = sheet_.extendSeams();
    live_ = livePlace();
    update(before.united(live_).united(drawn).toAlignedRect().intersected(rect()));
}

std::vector<Position> PathView::skeleton() const {
    std::vector<Position> joints;
    if (side_ != Side::Above && int(seams_->joints().size()) == arm_->axes()) {
        for (const auto& place : arm_->skeleton(seams_->joints())) {
            joints.push_back({place[0], place[1], place[2]});
        }
    }
    return joints;
}

QRectF PathView::livePlace() const {
    constexpr double around = 2;
    const QPointF tool = camera_.seen(seams_->tool());
    const double half = look::px(14) + around;
    const QRectF laser(tool - QPointF(half, half), QSizeF(2 * half, 2 * half));
    const std::vector<Position> joints = skeleton();
    return (joints.empty() ? laser : laser.united(armPlace(camera_, joints))).intersected(rect());
}

void PathView::drawSheet() {
    const QString titles[] = {{}, tr("俯视"), tr("侧视")};
    const double bar = camera_.scaleBar(PathPainter::barPixels()).metres;
    PathSheet::Look look;
    look.size = size();
    look.pixelRatio = devicePixelRatioF();
    look.ground = extentOf(aim_ == Aim::All ? Aim::All : Aim::Welds);
    look.title = titles[int(side_)];
    look.barText = tr("%1 mm").arg(bar * prog::mmPerM);
    look.draft = rest_.isActive();
    if (sheet_.isLong() && !look.draft) {
        sheet_.begin(camera_, look);
        bands_.start(0);
    } else {
        bands_.stop();
        sheet_.draw(camera_, look);
    }
}

/// Between the bands the panel does what else is due.
void PathView::drawBand() {
    const QRectF drawn = sheet_.drawBand();
    if (drawn.isEmpty()) {
        bands_.stop();
    } else {
        update(drawn.toAlignedRect());
    }
}

void PathView::paintEvent(QPaintEvent*) {
    if (!sheet_.isValid(size() * devicePixelRatioF())) {
        drawSheet();
        live_ = livePlace();
    }
    QPainter painter(this);
    sheet_.paint(&painter);
    paintArm(&painter, camera_, skeleton(), seams_->emitting());
    PathPainter(&painter, camera_).paintTool(seams_->tool(), seams_->emitting());
    if (hasFocus()) {
        painter.setPen(QPen(QColor(look::blue), 2));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
}

void PathView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    aim();
}

void PathView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        aim();
    }
}

// --- Hand ---------------------------------------------------------------------------------------

bool PathView::event(QEvent* event) {
    if (event->type() == QEvent::Gesture) {
        if (const auto* pinch =
                static_cast<QPinchGesture*>(static_cast<QGestureEvent*>(event)->gesture(Qt::PinchGesture))) {
            onPinch(pinch);
            return true;
        }
    }
    return QWidget::event(event);
}

void PathView::onPinch(const QPinchGesture* pinch) {
    isPinched_ = pinch->state() == Qt::GestureStarted || pinch->state() == Qt::GestureUpdated;
    const QPointF centre = mapFromGlobal(pinch->centerPoint().toPoint());
    if (pinch->changeFlags().testFlag(QPinchGesture::CenterPointChanged)) {
        camera_.pan(pinch->centerPoint() - pinch->lastCenterPoint());
    }
    zoomAt(pinch->scaleFactor(), centre);
}

void PathView::zoomAt(double factor, const QPointF& fixed) {
    camera_.zoom(factor, fixed);
    redrawByHand();
}

void PathView::drag(const QPointF& pixels) {
    if (side_ == Side::Space) {
        camera_.orbit(-pixels.x() * orbitRadPerPx, pixels.y() * orbitRadPerPx);
    } else {
        camera_.pan(pixels);
    }
    redrawByHand();
}

void PathView::wheelEvent(QWheelEvent* event) {
    zoomAt(std::pow(zoomStep, event->angleDelta().y() / wheelStep), event->position());
}

void PathView::mousePressEvent(QMouseEvent* event) {
    grip_ = last_ = event->localPos();
    isDragged_ = false;
}

void PathView::mouseMoveEvent(QMouseEvent* event) {
    const double slip = look::px(10);  // a gloved finger that taps moves by less
    if (!event->buttons().testFlag(Qt::LeftButton) || isPinched_) {
        isDragged_ = true;
        return;
    }
    if (!isDragged_ && (event->localPos() - grip_).manhattanLength() < slip) {
        return;
    }
    isDragged_ = true;
    drag(event->localPos() - last_);
    last_ = event->localPos();
}

void PathView::mouseReleaseEvent(QMouseEvent* event) {
    if (isDragged_ || event->button() != Qt::LeftButton) {
        return;
    }
    if (const auto line = lineAt(sheet_.moves(), camera_, event->localPos(), look::px(24), chosen())) {
        emit lineTapped(*line);
    }
}

void PathView::keyPressEvent(QKeyEvent* event) {
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
            showAll();
            break;
        case Qt::Key_Left:
            drag({keyStepPx, 0});
            break;
        case Qt::Key_Right:
            drag({-keyStepPx, 0});
            break;
        case Qt::Key_Up:
            drag({0, keyStepPx});
            break;
        case Qt::Key_Down:
            drag({0, -keyStepPx});
            break;
        default:
            QWidget::keyPressEvent(event);
    }
}

}  // namespace app
