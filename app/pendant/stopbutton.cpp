#include "app/pendant/stopbutton.h"

#include <QPainter>
#include <QPainterPath>

namespace app {

namespace {

const QColor plateColour(0xff, 0xd1, 0x00);
const QColor red(0xd4, 0x1f, 0x1f);
const QColor deep(0x94, 0x12, 0x12);
const QColor focus(0x1d, 0x4f, 0x91);

constexpr double marginUp = 4, marginDown = 9;  // from the plate's edge to the button's
constexpr int textPx = 19;
constexpr int keyPx = 13;

}  // namespace

StopButton::StopButton(QWidget* parent) : QAbstractButton(parent) {
    setObjectName(QStringLiteral("btnStop"));
    setFixedSize(side, side);
    setFocusPolicy(Qt::TabFocus);
    setText(tr("急停"));
    setAccessibleName(tr("紧急停止"));
    setToolTip(tr("紧急停止：F12 或 Pause，在任何窗口中有效"));
}

void StopButton::setLatched(bool latched) {
    latched_ = latched;
    setAccessibleDescription(latched ? tr("已按下") : QString());
    update();
}

void StopButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), plateColour);
    const double edge = latched_ || isDown() ? marginDown : marginUp;
    const QRectF head = QRectF(rect()).adjusted(edge, edge, -edge, -edge);
    painter.setPen(QPen(hasFocus() ? focus : deep, hasFocus() ? 4 : 2));
    painter.setBrush(latched_ ? deep : red);
    painter.drawEllipse(head);
    if (latched_) {
        paintArrows(&painter, head.adjusted(7, 7, -7, -7));
    }
    painter.setPen(Qt::white);
    QFont bold = font();
    bold.setBold(true);
    bold.setPixelSize(textPx);
    painter.setFont(bold);
    const QRectF text(0, 0, width(), height());
    painter.drawText(text.adjusted(0, -10, 0, -10), Qt::AlignCenter, this->text());
    bold.setPixelSize(keyPx);
    painter.setFont(bold);
    painter.drawText(text.adjusted(0, 18, 0, 18), Qt::AlignCenter, QStringLiteral("F12"));
}

/// Arrows that show the turn to the right which releases the button.
void StopButton::paintArrows(QPainter* painter, const QRectF& circle) const {
    painter->setPen(QPen(Qt::white, 2));
    painter->setBrush(Qt::white);
    constexpr int perDegree = 16;  // drawArc() takes sixteenths of a degree
    for (const int top : {70, 250}) {
        painter->drawArc(circle, top * perDegree, 40 * perDegree);
        const QPointF tip(circle.center().x() + (top < 90 ? 10 : -10),
                          top < 90 ? circle.top() + 2 : circle.bottom() - 2);
        const double ahead = top < 90 ? 5 : -5;
        painter->drawPolygon(
            QPolygonF({tip + QPointF(ahead, 0), tip - QPointF(ahead / 2, 4), tip + QPointF(-ahead / 2, 4)}));
    }
}

}  // namespace app
