#include "app/cell/signalbutton.h"

#include <QPainter>
#include <QVariant>

namespace app {

namespace {

constexpr double kFullScale = 32767;
constexpr int kInputHeight = 48;
constexpr int kOutputHeight = 36;
constexpr int kLamp = 14;
constexpr int kMargin = 6;
constexpr int kSmallPx = 13;

const QColor kText(0x2f, 0x41, 0x58);
const QColor kFaint(0x6b, 0x7a, 0x8b);
const QColor kLine(0xb9, 0xc4, 0xd0);
const QColor kFace(0xf4, 0xf7, 0xfa);
const QColor kPressed(0xdf, 0xea, 0xf6);
const QColor kFocus(0x2f, 0x6f, 0xb0);
const QColor kOn(0x2e, 0x9e, 0x5b);

}  // namespace

SignalButton::SignalButton(Kind kind, const QString& name, const QString& caption) : name_(name) {
    setObjectName(name);
    setText(caption);
    setMinimumHeight(kind == Kind::Input ? kInputHeight : kOutputHeight);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setEnabled(kind == Kind::Input);
    setFocusPolicy(Qt::TabFocus);
}

void SignalButton::setLabel(const QString& label) {
    if (label_ == label)
        return;
    label_ = label;
    setToolTip(label.isEmpty() ? name_ : name_ + QStringLiteral("  ") + label);
    update();
}

void SignalButton::setValue(const QVariant& value) {
    analogue_ = value.userType() != QMetaType::Bool;
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
        painter.drawText(inside, Qt::AlignRight | Qt::AlignVCenter, valueText());
        inside.setRight(inside.right() - fontMetrics().horizontalAdvance(valueText()) - kMargin);
    } else {
        paintLamp(&painter, inside);
        inside.setRight(inside.right() - kLamp - kMargin);
    }
    painter.setPen(kText);
    if (label_.isEmpty()) {
        painter.drawText(inside, Qt::AlignLeft | Qt::AlignVCenter, text());
        return;
    }
    const QRect nameColumn(inside.left(), inside.top(),
                           fontMetrics().horizontalAdvance(QStringLiteral("15 ")), inside.height());
    painter.setPen(kFaint);
    painter.drawText(nameColumn, Qt::AlignLeft | Qt::AlignVCenter, text());
    inside.setLeft(nameColumn.right());
    painter.setPen(kText);
    if (fontMetrics().horizontalAdvance(label_) > inside.width())
        painter.setFont(smallFont());
    painter.drawText(inside, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap, label_);
}

/// For a label that takes two lines.
QFont SignalButton::smallFont() const {
    QFont small = font();
    small.setPixelSize(kSmallPx);
    return small;
}

/// Filled when on, a ring when off: colour is not all that tells.
void SignalButton::paintLamp(QPainter* painter, const QRect& place) const {
    const QRectF lamp(place.right() - kLamp, place.center().y() - kLamp / 2.0 + 1, kLamp, kLamp);
    painter->setPen(QPen(on_ ? kOn : kFaint, 2));
    painter->setBrush(on_ ? QBrush(kOn) : QBrush(Qt::NoBrush));
    painter->drawEllipse(lamp);
}

}  // namespace app
