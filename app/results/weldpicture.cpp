#include "app/results/weldpicture.h"

#include "app/path/pathpainter.h"
#include "look/scale.h"
#include "look/tokens.h"

#include <QEvent>
#include <QPainter>

namespace app {

Extent weldExtent(const RunResult& result) {
    Extent welds, all;
    for (const PathMove& move : result.moves) {
        for (const Position& position : move.path) {
            all.add(position);
            if (move.weld) {
                welds.add(position);
            }
        }
    }
    for (const Polyline& piece : result.track.litPieces()) {
        for (const Position& position : piece) {
            welds.add(position);
        }
    }
    for (const Position& position : result.track.path()) {
        all.add(position);
    }
    return welds.empty ? all : welds;
}

WeldPicture::WeldPicture(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("weldPicture"));
}

void WeldPicture::show(const std::shared_ptr<const RunResult>& result) {
    result_ = result;
    picture_ = QPixmap();
    update();
}

void WeldPicture::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        picture_ = QPixmap();
        update();
    }
}

void WeldPicture::draw() {
    picture_ = QPixmap(size() * devicePixelRatioF());
    picture_.setDevicePixelRatio(devicePixelRatioF());
    QPainter painter(&picture_);
    painter.fillRect(rect(), QColor(look::white));
    if (result_ && (!result_->moves.empty() || result_->track.path().size() > 1)) {
        const Extent extent = weldExtent(*result_);
        Camera camera;
        camera.setArea(QRectF(rect()).adjusted(1, 1, -1, -1));
        camera.fitTurned(extent, look::px(36));
        PathPainter path(&painter, camera);
        path.paintWelded(result_->moves, extent, result_->gapPieces(), result_->track.litPieces());
        path.paintFrame({}, tr("%1 mm").arg(camera.scaleBar(PathPainter::barPixels()).metres * prog::mmPerM));
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(look::rule), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), look::px(8), look::px(8));
}

void WeldPicture::paintEvent(QPaintEvent*) {
    if (picture_.size() != size() * devicePixelRatioF()) {
        draw();
    }
    QPainter(this).drawPixmap(0, 0, picture_);
}

}  // namespace app
