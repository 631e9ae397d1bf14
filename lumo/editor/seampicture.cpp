#include "editor/seampicture.h"

#include "look/scale.h"
#include "look/seam.h"
#include "look/tokens.h"
#include "look/type.h"
#include "widgets/fieldanswer.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

using look::px;
using namespace prog;

namespace lumo {

namespace {

constexpr double nearMm = 2.0;  // the tool counts as being at the stop

QString mmText(double mm) {
    return QStringLiteral("%1 %2").arg(look::figure(mm, 1), unitText("mm"));
}

/// Where the seam goes on at the stop, as a step of a tenth of a millimetre.
Position stepAhead(const ResumeView& view) {
    constexpr double stepM = 0.0001;
    const bool isAhead = !view.ahead.empty();
    const ResumeView::Part& part = isAhead ? view.ahead.front() : view.welded.back();
    const double fromM = isAhead ? part.fromM : part.toM - stepM;
    const Position from = part.path.at(fromM).trans, to = part.path.at(fromM + stepM).trans;
    return {to[0] - from[0], to[1] - from[1], to[2] - from[2]};
}

}  // namespace

SeamPicture::SeamPicture(QWidget* parent) : QWidget(parent) {
    constexpr int height = 184;
    setFixedHeight(px(height));
}

void SeamPicture::show(const ResumeView& view) {
    view_ = view;
    weldedMm_ = view.weldedMm();
    leftMm_ = view.leftMm();
    toolMm_ = weldedMm_ + alongMm();
    update();
}

void SeamPicture::showOverlap(double mm) {
    overlapMm_ = mm;
    update();
}

/// How far the tool is from the stop, in the direction of the seam.
double SeamPicture::alongMm() const {
    if (view_.ahead.empty() && view_.welded.empty()) {
        return 0.0;
    }
    const Position step = stepAhead(view_);
    double product = 0.0, square = 0.0;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        product += step[axis] * (view_.tool[axis] - view_.stop[axis]);
        square += step[axis] * step[axis];
    }
    return square > 0.0 ? product / std::sqrt(square) * mmPerM : 0.0;
}

QRectF SeamPicture::channel() const {
    constexpr int side = 32, top = 97, width = 22;
    return {qreal(px(side)), qreal(px(top)), qreal(this->width() - 2 * px(side)), qreal(px(width))};
}

/// x of a place on the seam, kept on the picture.
qreal SeamPicture::at(double mm) const {
    const QRectF place = channel();
    const double whole = std::max(weldedMm_ + leftMm_, 1e-6);
    return place.left() + place.width() * std::clamp(mm / whole, 0.0, 1.0);
}

void SeamPicture::paintOverlap(QPainter* painter) const {
    constexpr int more = 5;
    constexpr int alpha = 110;
    if (overlapMm_ <= 0.0) {
        return;
    }
    const QRectF place = channel().adjusted(0, -px(more), 0, px(more));
    QColor fill(look::sky);
    fill.setAlpha(alpha);
    painter->setPen(QPen(QColor(look::blue), 2));
    painter->setBrush(fill);
    painter->drawRect(
        QRectF(QPointF(at(weldedMm_ - overlapMm_), place.top()), QPointF(at(weldedMm_), place.bottom())));
    painter->setBrush(Qt::NoBrush);
}

/// Cross-hairs with what there is to say of them at their free side.
void SeamPicture::paintTool(QPainter* painter) const {
    constexpr int above = 38, radius = 10, arm = 16, gap = 24;
    const double awayMm = view_.awayMm();
    const bool isAway = awayMm > nearMm;
    const QPointF stop(at(weldedMm_), channel().top() - px(18));
    const QPointF tool(isAway ? at(toolMm_) : stop.x(), px(above));
    painter->setPen(QPen(QColor(look::ink2), 1.6, Qt::DashLine));
    painter->drawLine(tool, stop);
    painter->setPen(QPen(QColor(look::ink), 2));
    painter->setBrush(QColor(look::panel));
    painter->drawEllipse(tool, px(radius), px(radius));
    painter->drawLine(tool - QPointF(px(arm), 0), tool + QPointF(px(arm), 0));
    painter->drawLine(tool - QPointF(0, px(arm)), tool + QPointF(0, px(arm)));
    painter->setFont(look::font(look::Size::Caption, look::Weight::Strong));
    const QString text = isAway ? tr("焊枪，距中断点 %1").arg(mmText(awayMm)) : tr("焊枪在中断点。");
    const int width = painter->fontMetrics().horizontalAdvance(text);
    const bool isRight = tool.x() + px(gap) + width < this->width() - px(8);
    const qreal left = isRight ? tool.x() + px(gap) : tool.x() - px(gap) - width;
    painter->drawText(QRectF(left, 0, width + 1, 2 * tool.y()), Qt::AlignVCenter | Qt::AlignLeft, text);
}

/// The figures below the seam; the stop's always, the others where they have room.
void SeamPicture::paintScale(QPainter* painter) const {
    constexpr int below = 20, gap = 12;
    const QRectF place = channel();
    const qreal top = place.bottom() + px(below);
    const qreal stop = at(weldedMm_);
    painter->setPen(QPen(QColor(look::ink), 2));
    painter->drawLine(QPointF(stop, place.top() - px(18)), QPointF(stop, place.bottom() + px(18)));
    const auto write = [&](qreal left, const QString& text, const QFont& font, QRgb colour) {
        painter->setFont(font);
        painter->setPen(QColor(colour));
        const QRectF room(left, top, painter->fontMetrics().horizontalAdvance(text) + 1.0,
                          painter->fontMetrics().height());
        painter->drawText(room, Qt::AlignLeft | Qt::AlignVCenter, text);
        return room;
    };
    const QFont plain = look::font(look::Size::Caption);
    const QFont strong = look::font(look::Size::Caption, look::Weight::Strong);
    const QString stopText = tr("中断于 %1").arg(mmText(weldedMm_));
    const qreal half = QFontMetricsF(strong).horizontalAdvance(stopText) / 2;
    const QRectF stopRoom =
        write(std::clamp(stop - half, place.left(), place.right() - 2 * half), stopText, strong, look::ink);
    const QString end = mmText(weldedMm_ + leftMm_);
    const QFontMetricsF plainMetrics(plain);
    const qreal endLeft = place.right() - plainMetrics.horizontalAdvance(end);
    if (stopRoom.left() > place.left() + px(gap) + plainMetrics.horizontalAdvance(QLatin1Char('0'))) {
        write(place.left(), QStringLiteral("0"), plain, look::ink3);
    }
    if (endLeft < stopRoom.right() + px(gap)) {
        return;
    }
    write(endLeft, end, plain, look::ink3);
    const QString left = tr("剩余 %1").arg(mmText(leftMm_));
    const qreal leftWidth = plainMetrics.horizontalAdvance(left);
    const qreal middle = (stopRoom.right() + endLeft) / 2;
    if (leftWidth + 4 * px(gap) > endLeft - stopRoom.right()) {
        return;
    }
    const QRectF room = write(middle - leftWidth / 2, left, plain, look::ink2);
    painter->setPen(QPen(QColor(look::ink3), 1));
    const qreal y = std::floor(room.center().y()) + 0.5;
    painter->drawLine(QPointF(stopRoom.right() + px(gap), y), QPointF(room.left() - px(8), y));
    painter->drawLine(QPointF(room.right() + px(8), y), QPointF(endLeft - px(gap), y));
}

void SeamPicture::paintEvent(QPaintEvent* /*event*/) {
    constexpr int corner = 8;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(look::panel));
    painter.drawRoundedRect(rect(), corner, corner);
    const QRectF place = channel();
    const qreal width = place.height();
    QPainterPath seam(QPointF(place.left(), place.center().y()));
    seam.lineTo(place.right(), place.center().y());
    look::paintSeam(&painter, seam, width, at(weldedMm_) - place.left(), false);
    paintOverlap(&painter);
    paintTool(&painter);
    paintScale(&painter);
}

}  // namespace lumo
