#include "app/cell/signalbutton.h"

#include <QPainter>
#include <QVariant>

namespace app {

namespace {

constexpr double kFullScale = 32767;
constexpr int kInputHeight = 48;
constexpr int kOutputHeight = 36;
constexpr int kAnalogueHeight = 48;
constexpr int kLamp = 14;
constexpr int kMargin = 6;
constexpr int kSmallPx = 13;

const QColor kText(0x2f, 0x41, 0x58);
const QColor kFaint(0x6b, 0x7a, 0x8b);
const QColor kLine(0xb9, 0xc4, 0xd0);
const QColor kFace(0xf4, 0xf7, 0xfa);
const QColor kPressed(0xdf, 0xea, 0xf6);
const QColor kFocus(0x2f, 0x6f, 0xb0);
const QColor kFault(0xf0, 0xa2, 0x02);
const QColor kBeam(0xd6, 0x2b, 0x1f);
const QColor kTrack(0xdd, 0xe3, 0xe9);
constexpr int kBar = 5;

}  // namespace

SignalButton::SignalButton(Kind kind, const QString& name, const QString& caption) : name_(name) {
    setObjectName(name);
    setText(caption);
    setMinimumHeight(kind == Kind::Input ? kInputHeight : kOutputHeight);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setEnabled(kind == Kind::Input);
    setFocusPolicy(Qt::TabFocus);
}

void SignalButton::setPort(const AssignedPort& port) {
    port_ = port;
    setToolTip(port.label.isEmpty() ? name_ : name_ + QStringLiteral("  ") + port.label);
    update();
}

bool SignalButton::isFault() const {
    return (port_.meaning == Meaning::Well && !on_) || (port_.meaning == Meaning::Alarm && on_);
}

void SignalButton::setValue(const QVariant& value) {
    analogue_ = value.userType() != QMetaType::Bool;
    if (analogue_)
        setMinimumHeight(kAnalogueHeight);
    number_ = value.toInt();
    on_ = number_ != 0;
    setAccessibleDescription(valueText());
    update();
}

QString SignalButton::valueText() const {
    if (!analogue_)
        return on_ ? QStringLiteral("1") : QStringLiteral("0");
    return QStringLiteral("%1 %").arg(QString::number(number_ / kFullScale * 100, 'f', 1));
}

QSize SignalButton::sizeHint() const {
    return QSize(56, minimumHeight());
}

void SignalButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(hasFocus() ? kFocus : kLine);
    painter.setBrush(isDown() ? kPressed : isEnabled() ? kFace : QColor(Qt::white));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 6, 6);

    QRect inside = rect().adjusted(kMargin, 2, -kMargin, -2);
    painter.setPen(kText);
    if (analogue_) {
        paintBar(&painter);
        inside.setBottom(inside.bottom() - kBar);
        painter.setPen(kText);
        painter.drawText(inside, Qt::AlignRight | Qt::AlignVCenter, valueText());
        inside.setRight(inside.right() - fontMetrics().horizontalAdvance(valueText()) - kMargin);
    } else {
        paintLamp(&painter, inside);
        inside.setRight(inside.right() - kLamp - kMargin);
    }
    painter.setPen(kText);
    if (port_.label.isEmpty()) {
        painter.drawText(inside, Qt::AlignLeft | Qt::AlignVCenter, text());
        return;
    }
    const QRect nameColumn(inside.left(), inside.top(),
                           fontMetrics().horizontalAdvance(QStringLiteral("15 ")), inside.height());
    painter.setPen(kFaint);
    painter.drawText(nameColumn, Qt::AlignLeft | Qt::AlignVCenter, text());
    inside.setLeft(nameColumn.right());
    painter.setPen(kText);
    if (fontMetrics().horizontalAdvance(port_.label) > inside.width())
        painter.setFont(smallFont());
    painter.drawText(inside, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap, port_.label);
}

/// For a label that takes two lines.
QFont SignalButton::smallFont() const {
    QFont small = font();
    small.setPixelSize(kSmallPx);
    return small;
}

/// Filled when on, a ring when off.
void SignalButton::paintLamp(QPainter* painter, const QRect& place) const {
    const QRectF lamp(place.right() - kLamp, place.center().y() - kLamp / 2.0 + 1, kLamp, kLamp);
    const QPointF top(lamp.center().x(), lamp.top()), bottom(lamp.center().x(), lamp.bottom());
    if (isFault()) {
        painter->setPen(QPen(kText, 1.5));
        painter->setBrush(kFault);
        painter->drawPolygon(QPolygonF(
            {top - QPointF(0, 2), lamp.bottomRight() + QPointF(1, 0), lamp.bottomLeft() - QPointF(1, 0)}));
        painter->drawLine(top + QPointF(0, 3), bottom - QPointF(0, 5));
        painter->drawPoint(bottom - QPointF(0, 2));
        return;
    }
    if (port_.meaning == Meaning::Beam && on_) {
        painter->setPen(QPen(kBeam.darker(), 1.5));
        painter->setBrush(kBeam);
        painter->drawPolygon(
            QPolygonF({top - QPointF(0, 2), QPointF(lamp.right() + 2, lamp.center().y()),
                       bottom + QPointF(0, 2), QPointF(lamp.left() - 2, lamp.center().y())}));
        return;
    }
    painter->setPen(QPen(kFaint, 2));
    painter->setBrush(on_ ? QBrush(kText) : QBrush(Qt::NoBrush));
    painter->drawEllipse(lamp);
}

void SignalButton::paintBar(QPainter* painter) const {
    const QRectF track(kMargin, height() - kBar - 4, width() - 2 * kMargin, kBar);
    QRectF filled = track;
    filled.setWidth(track.width() * qBound(0.0, number_ / kFullScale, 1.0));
    painter->setPen(Qt::NoPen);
    painter->setBrush(kTrack);
    painter->drawRoundedRect(track, 2, 2);
    painter->setBrush(port_.meaning == Meaning::Beam ? kBeam : kText);
    painter->drawRoundedRect(filled, 2, 2);
}

}  // namespace app
