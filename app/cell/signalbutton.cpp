#include "app/cell/signalbutton.h"

#include "look/icon.h"
#include "look/scale.h"
#include "look/type.h"
#include "program/ports.h"

#include <QPainter>
#include <QVariant>

namespace app {

namespace {

constexpr int inputPx = 48, outputPx = 40;
constexpr int lampPx = 16, marginPx = 8, numberPx = 28;
constexpr int barPx = 6;

}  // namespace

SignalButton::SignalButton(Kind kind, const QString& name, const QString& caption) : name_(name) {
    setObjectName(name);
    setText(caption);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setEnabled(kind == Kind::Input);
    setFocusPolicy(Qt::TabFocus);
}

void SignalButton::setPort(const AssignedPort& port) {
    port_ = port;
    setAccessibleName(name_ + QLatin1Char(' ') + port.label);
    update();
}

bool SignalButton::isFault() const {
    return (port_.meaning == prog::PortMeaning::Health && !on_) ||
           (port_.meaning == prog::PortMeaning::Alarm && on_);
}

void SignalButton::setValue(const QVariant& value) {
    analogue_ = value.userType() != QMetaType::Bool;
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
    constexpr int leastPx = 60;
    return {look::px(leastPx), look::px(isEnabled() || analogue_ ? inputPx : outputPx)};
}

void SignalButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int line = hasFocus() ? look::px(2) : 1;
    painter.setPen(QPen(QColor(hasFocus() ? look::blue : isEnabled() ? look::line : look::rule), line));
    painter.setBrush(QColor(isDown() ? look::pressed : isEnabled() ? look::white : look::panel));
    const double in = line / 2.0;
    painter.drawRoundedRect(QRectF(rect()).adjusted(in, in, -in, -in), look::px(6), look::px(6));

    const int margin = look::px(marginPx);
    QRect inside = rect().adjusted(margin, 2, -margin, -2);
    painter.setFont(look::font(look::Size::Text));
    painter.setPen(QColor(look::ink));
    if (analogue_) {
        paintBar(&painter);
        inside.setBottom(inside.bottom() - look::px(barPx));
        painter.setPen(QColor(look::ink));
        painter.drawText(inside, Qt::AlignRight | Qt::AlignVCenter, valueText());
        inside.setRight(inside.right() - painter.fontMetrics().horizontalAdvance(valueText()) - margin);
    } else {
        paintLamp(&painter, inside);
        inside.setRight(inside.right() - look::px(lampPx) - margin);
    }
    paintName(&painter, inside);
}

/// The number of the signal, and the name of the port that it is assigned to.
void SignalButton::paintName(QPainter* painter, QRect inside) const {
    painter->setFont(look::font(look::Size::Text));
    painter->setPen(QColor(port_.label.isEmpty() ? look::ink : look::ink3));
    painter->drawText(inside, Qt::AlignLeft | Qt::AlignVCenter, text());
    if (port_.label.isEmpty()) {
        return;
    }
    inside.setLeft(inside.left() + look::px(numberPx));
    painter->setPen(QColor(look::ink));
    if (painter->fontMetrics().horizontalAdvance(port_.label) > inside.width()) {
        painter->setFont(look::font(look::Size::Caption));
    }
    painter->drawText(inside, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap, port_.label);
}

/// Filled when on, a ring when off; a triangle for a fault, a diamond for the laser's light.
void SignalButton::paintLamp(QPainter* painter, const QRect& area) const {
    const int side = look::px(lampPx);
    const QRect lamp(area.right() - side, area.center().y() - side / 2, side, side);
    const QRect larger = lamp.adjusted(-2, -2, 2, 2);
    if (isFault()) {
        painter->drawPixmap(larger.topLeft(),
                            look::picture(QStringLiteral("warn"), larger.width(), look::amberInk));
        return;
    }
    if (port_.meaning == prog::PortMeaning::Emission && on_) {
        painter->drawPixmap(larger.topLeft(),
                            look::picture(QStringLiteral("diamond"), larger.width(), look::red));
        return;
    }
    painter->setPen(QPen(QColor(on_ ? look::steel : look::edge), look::px(2)));
    painter->setBrush(on_ ? QBrush(QColor(look::steel)) : QBrush(Qt::NoBrush));
    painter->drawEllipse(QRectF(lamp).adjusted(1, 1, -1, -1));
}

void SignalButton::paintBar(QPainter* painter) const {
    const int margin = look::px(marginPx), bar = look::px(barPx);
    const QRectF track(margin, height() - bar - look::px(4), width() - 2 * margin, bar);
    QRectF filled = track;
    filled.setWidth(track.width() * qBound(0.0, number_ / prog::analogueFullScale, 1.0));
    painter->setPen(Qt::NoPen);
    painter->setBrush(QColor(look::rule));
    painter->drawRoundedRect(track, bar / 2.0, bar / 2.0);
    painter->setBrush(QColor(port_.meaning == prog::PortMeaning::Emission ? look::red : look::steel));
    painter->drawRoundedRect(filled, bar / 2.0, bar / 2.0);
}

}  // namespace app
