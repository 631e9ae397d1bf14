#include "app/cell/signalbutton.h"

#include "program/ports.h"

#include <QPainter>
#include <QVariant>

namespace app {

namespace {

constexpr int inputHeight = 48;
constexpr int outputHeight = 36;
constexpr int analogueHeight = 48;
constexpr int lampSize = 14;
constexpr int margin = 6;
constexpr int smallPx = 13;

const QColor textColour(0x2f, 0x41, 0x58);
const QColor faint(0x6b, 0x7a, 0x8b);
const QColor line(0xb9, 0xc4, 0xd0);
const QColor faceColour(0xf4, 0xf7, 0xfa);
const QColor pressedColour(0xdf, 0xea, 0xf6);
const QColor focus(0x2f, 0x6f, 0xb0);
const QColor fault(0xf0, 0xa2, 0x02);
const QColor beam(0xd6, 0x2b, 0x1f);
const QColor trackColour(0xdd, 0xe3, 0xe9);
constexpr int bar = 5;

}  // namespace

SignalButton::SignalButton(Kind kind, const QString& name, const QString& caption) : name_(name) {
    setObjectName(name);
    setText(caption);
    setMinimumHeight(kind == Kind::Input ? inputHeight : outputHeight);
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
    return (port_.meaning == prog::PortMeaning::Health && !on_) ||
           (port_.meaning == prog::PortMeaning::Alarm && on_);
}

void SignalButton::setValue(const QVariant& value) {
    analogue_ = value.userType() != QMetaType::Bool;
    if (analogue_) {
        setMinimumHeight(analogueHeight);
    }
    number_ = value.toInt();
    on_ = number_ != 0;
    setAccessibleDescription(valueText());
    update();
}

QString SignalButton::valueText() const {
    if (!analogue_) {
        return on_ ? QStringLiteral("1") : QStringLiteral("0");
    }
    return QStringLiteral("%1 %").arg(QString::number(number_ / prog::analogueFullScale * 100, 'f', 1));
}

QSize SignalButton::sizeHint() const {
    return QSize(56, minimumHeight());
}

void SignalButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(hasFocus() ? focus : line);
    painter.setBrush(isDown() ? pressedColour : isEnabled() ? faceColour : QColor(Qt::white));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 6, 6);

    QRect inside = rect().adjusted(margin, 2, -margin, -2);
    painter.setPen(textColour);
    if (analogue_) {
        paintBar(&painter);
        inside.setBottom(inside.bottom() - bar);
        painter.setPen(textColour);
        painter.drawText(inside, Qt::AlignRight | Qt::AlignVCenter, valueText());
        inside.setRight(inside.right() - fontMetrics().horizontalAdvance(valueText()) - margin);
    } else {
        paintLamp(&painter, inside);
        inside.setRight(inside.right() - lampSize - margin);
    }
    painter.setPen(textColour);
    if (port_.label.isEmpty()) {
        painter.drawText(inside, Qt::AlignLeft | Qt::AlignVCenter, text());
        return;
    }
    const QRect nameColumn(inside.left(), inside.top(),
                           fontMetrics().horizontalAdvance(QStringLiteral("15 ")), inside.height());
    painter.setPen(faint);
    painter.drawText(nameColumn, Qt::AlignLeft | Qt::AlignVCenter, text());
    inside.setLeft(nameColumn.right());
    painter.setPen(textColour);
    if (fontMetrics().horizontalAdvance(port_.label) > inside.width()) {
        painter.setFont(smallFont());
    }
    painter.drawText(inside, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap, port_.label);
}

/// For labels of two lines.
QFont SignalButton::smallFont() const {
    QFont small = font();
    small.setPixelSize(smallPx);
    return small;
}

/// Filled when on, a ring when off.
void SignalButton::paintLamp(QPainter* painter, const QRect& area) const {
    const QRectF lamp(area.right() - lampSize, area.center().y() - lampSize / 2.0 + 1, lampSize, lampSize);
    const QPointF top(lamp.center().x(), lamp.top()), bottom(lamp.center().x(), lamp.bottom());
    if (isFault()) {
        painter->setPen(QPen(textColour, 1.5));
        painter->setBrush(fault);
        painter->drawPolygon(QPolygonF(
            {top - QPointF(0, 2), lamp.bottomRight() + QPointF(1, 0), lamp.bottomLeft() - QPointF(1, 0)}));
        painter->drawLine(top + QPointF(0, 3), bottom - QPointF(0, 5));
        painter->drawPoint(bottom - QPointF(0, 2));
        return;
    }
    if (port_.meaning == prog::PortMeaning::Emission && on_) {
        painter->setPen(QPen(beam.darker(), 1.5));
        painter->setBrush(beam);
        painter->drawPolygon(
            QPolygonF({top - QPointF(0, 2), QPointF(lamp.right() + 2, lamp.center().y()),
                       bottom + QPointF(0, 2), QPointF(lamp.left() - 2, lamp.center().y())}));
        return;
    }
    painter->setPen(QPen(faint, 2));
    painter->setBrush(on_ ? QBrush(textColour) : QBrush(Qt::NoBrush));
    painter->drawEllipse(lamp);
}

void SignalButton::paintBar(QPainter* painter) const {
    const QRectF track(margin, height() - bar - 4, width() - 2 * margin, bar);
    QRectF filled = track;
    filled.setWidth(track.width() * qBound(0.0, number_ / prog::analogueFullScale, 1.0));
    painter->setPen(Qt::NoPen);
    painter->setBrush(trackColour);
    painter->drawRoundedRect(track, 2, 2);
    painter->setBrush(port_.meaning == prog::PortMeaning::Emission ? beam : textColour);
    painter->drawRoundedRect(filled, 2, 2);
}

}  // namespace app
