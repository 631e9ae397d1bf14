#include "widgets/wrapbutton.h"

#include "look/icon.h"
#include "look/scale.h"
#include "look/type.h"

#include <QFontInfo>
#include <QStyleOptionButton>
#include <QStylePainter>

using lumo::ButtonFace;

namespace {

constexpr int marginX = 2, marginY = 2;

}  // namespace

WrapButton::WrapButton(QWidget* parent) : QPushButton(parent) {}

void WrapButton::setFace(const QString& icon, ButtonFace::Place place) {
    place_ = place;
    setIcon(icon.isEmpty() ? QIcon() : look::icon(icon, look::ink2, look::white));
    update();
}

void WrapButton::setPlace(ButtonFace::Place place) {
    if (place != place_) {
        place_ = place;
        update();
    }
}

ButtonFace WrapButton::face() const {
    ButtonFace face;
    face.place = place_;
    face.text = text();
    face.icon = icon();
    face.iconPx = look::px(20);
    face.leftPx = isLeft_ ? look::px(10) : -1;
    face.font = font();
    face.font.setPixelSize(place_ == ButtonFace::Place::Over ? look::sizePx(look::Size::Caption)
                                                             : QFontInfo(font()).pixelSize());
    return face;
}

QSize WrapButton::hint(const QSize& content) const {
    ensurePolished();
    QStyleOptionButton option;
    initStyleOption(&option);
    return style()->sizeFromContents(QStyle::CT_PushButton, &option, content, this);
}

QSize WrapButton::sizeHint() const {
    return hint(face().size());
}

QSize WrapButton::minimumSizeHint() const {
    return face().leastSize() + QSize(2 * marginX, 2 * marginY);
}

void WrapButton::paintEvent(QPaintEvent* /*event*/) {
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text.clear();
    option.icon = QIcon();
    QStylePainter painter(this);
    painter.drawControl(QStyle::CE_PushButton, option);
    painter.setPen(isChecked() ? QColor(look::white)
                               : palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled,
                                                 QPalette::ButtonText));
    face().paint(&painter, rect().adjusted(marginX, marginY, -marginX, -marginY), this);
}
