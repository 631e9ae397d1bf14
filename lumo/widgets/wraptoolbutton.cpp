#include "widgets/wraptoolbutton.h"

#include "look/icon.h"
#include "look/scale.h"

#include <QStyle>
#include <QStyleOptionToolButton>
#include <QStylePainter>

namespace lumo {

namespace {

constexpr int marginX = 2, marginY = 2;

}  // namespace

WrapToolButton::WrapToolButton(QWidget* parent) : QToolButton(parent) {}

void WrapToolButton::setFace(const QString& icon, ButtonFace::Place place, QRgb colour, QRgb checked) {
    place_ = place;
    setIcon(look::icon(icon, colour == 0 ? look::ink2 : colour, checked == 0 ? look::white : checked));
    update();
}

void WrapToolButton::setCaptionFont(look::Size size, look::Weight weight) {
    size_ = size;
    weight_ = weight;
    update();
}

void WrapToolButton::setSecondLine(const QString& text) {
    if (text != second_) {
        second_ = text;
        setAccessibleDescription(text);
        update();
    }
}

void WrapToolButton::setMuted(bool muted) {
    if (muted != muted_) {
        muted_ = muted;
        setProperty("muted", muted);
        style()->unpolish(this);
        style()->polish(this);
        update();
    }
}

ButtonFace WrapToolButton::face() const {
    ButtonFace face;
    face.place = place_;
    face.text = text();
    face.second = second_;
    face.icon = icon();
    face.iconPx = look::px(22);
    face.leftPx = place_ == ButtonFace::Place::Before ? look::px(10) : -1;
    face.isPale = muted_;
    const look::Size usual = place_ == ButtonFace::Place::Over ? look::Size::Caption : look::Size::Text;
    face.font = look::font(size_.value_or(usual), weight_);
    return face;
}

QSize WrapToolButton::sizeHint() const {
    const int control = look::px(48);
    const QSize size = face().size();
    return {std::max(control, size.width() + look::px(8)), std::max(control, size.height())};
}

QSize WrapToolButton::minimumSizeHint() const {
    return face().leastSize() + QSize(2 * marginX, 2 * marginY);
}

QColor WrapToolButton::ink() const {
    return isChecked()
               ? QColor(look::white)
               : palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText);
}

void WrapToolButton::paintEvent(QPaintEvent* /*event*/) {
    QStyleOptionToolButton option;
    initStyleOption(&option);
    option.text.clear();
    option.icon = QIcon();
    option.toolButtonStyle = Qt::ToolButtonTextOnly;
    QStylePainter painter(this);
    painter.drawComplexControl(QStyle::CC_ToolButton, option);
    painter.setPen(ink());
    face().paint(&painter, rect().adjusted(marginX, marginY, -marginX, -marginY), this);
}

}  // namespace lumo
