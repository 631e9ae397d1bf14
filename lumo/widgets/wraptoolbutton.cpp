#include "widgets/wraptoolbutton.h"

#include "look/icon.h"
#include "look/scale.h"

#include <QStyleOptionToolButton>
#include <QStylePainter>

namespace lumo {

WrapToolButton::WrapToolButton(QWidget* parent) : QToolButton(parent) {}

void WrapToolButton::setFace(const QString& icon, ButtonFace::Place place, QRgb colour, QRgb checked) {
    if (place_ != place) {
        size_ = place == ButtonFace::Place::Over ? look::Size::Caption : look::Size::Text;
    }
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

ButtonFace WrapToolButton::face() const {
    ButtonFace face;
    face.place = place_;
    face.text = text();
    face.second = second_;
    face.icon = icon();
    face.iconPx = look::px(22);
    face.font = look::font(size_, weight_);
    return face;
}

QSize WrapToolButton::sizeHint() const {
    const int control = look::px(48);
    const QSize size = face().size();
    return {std::max(control, size.width() + look::px(8)), std::max(control, size.height())};
}

QColor WrapToolButton::ink() const {
    return isChecked() ? QColor(look::white)
                       : palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled,
                                         QPalette::ButtonText);
}

void WrapToolButton::paintEvent(QPaintEvent* /*event*/) {
    constexpr int marginX = 4, marginY = 2;
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
