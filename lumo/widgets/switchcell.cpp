#include "widgets/switchcell.h"

#include "look/scale.h"
#include "look/type.h"
#include "widgets/switchbutton.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QMouseEvent>

#include <algorithm>

namespace lumo {

namespace {

constexpr int ring = 2;  // on each side of the track
constexpr int gap = 8;   // between caption and switch

}  // namespace

SwitchCell::SwitchCell(QWidget* parent) : QWidget(parent) {}

void SwitchCell::setParts(QLabel* caption, SwitchButton* button) {
    caption_ = caption;
    switch_ = button;
    caption_->setParent(this);
    switch_->setParent(this);
    switch_->setSpace(2 * ring);
    // A press on the caption is one on the cell.
    caption_->setAttribute(Qt::WA_TransparentForMouseEvents);
    arrange();
}

void SwitchCell::setCaptionOver(bool over) {
    if (over != over_) {
        over_ = over;
        arrange();
    }
}

QSize SwitchCell::switchSize() const {
    const QSize track = over_ ? QSize(64, 28) : QSize(72, 32);
    return {look::px(track.width()) + 2 * ring, look::px(track.height()) + 2 * ring};
}

QSize SwitchCell::captionSize() const {
    caption_->setFont(look::font(over_ ? look::Size::Caption : look::Size::Text));
    return caption_->sizeHint();
}

QSize SwitchCell::sizeHint() const {
    const QSize button = switchSize(), caption = captionSize();
    return over_ ? QSize(std::max(button.width(), caption.width()), caption.height() + button.height())
                 : QSize(caption.width() + look::px(gap) + button.width(), look::px(48));
}

void SwitchCell::arrange() {
    if (!switch_) {
        return;
    }
    const QSize button = switchSize(), caption = captionSize();
    caption_->setAlignment(over_ ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignVCenter);
    if (over_) {
        const int top = (height() - caption.height() - button.height()) / 2;
        caption_->setGeometry(0, top, width(), caption.height());
        switch_->setGeometry(QRect(QPoint((width() - button.width()) / 2, top + caption.height()), button));
    } else {
        switch_->setGeometry(
            QRect(QPoint(width() - button.width(), (height() - button.height()) / 2), button));
        caption_->setGeometry(0, 0, switch_->x() - look::px(gap), height());
    }
}

void SwitchCell::mousePressEvent(QMouseEvent* event) {
    if (!switch_ || !switch_->isEnabled()) {
        return;
    }
    const QPointF at = QRectF(switch_->rect()).center();
    QMouseEvent press(QEvent::MouseButtonPress, at, event->screenPos(), event->button(), event->buttons(),
                      event->modifiers());
    QApplication::sendEvent(switch_, &press);
}

void SwitchCell::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    arrange();
}

void SwitchCell::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        arrange();
    }
}

}  // namespace lumo
