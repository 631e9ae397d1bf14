#include "app/panelbody.h"

#include <QEvent>
#include <QStackedWidget>

namespace app {

PanelBody::PanelBody(QWidget* parent) : QWidget(parent), pages_(new QStackedWidget(this)) {}

void PanelBody::setStrip(QWidget* strip) {
    strip_ = strip;
    if (strip_->parentWidget() != this) {
        strip_->setParent(this);
    }
    arrange();
}

void PanelBody::setFolded(bool folded) {
    folded_ = folded;
    arrange();
}

bool PanelBody::hasRoom() const {
    return strip_ && width() - strip_->minimumWidth() >= pages_->minimumSizeHint().width();
}

QSize PanelBody::minimumSizeHint() const {
    return pages_->minimumSizeHint();
}

void PanelBody::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    arrange();
    emit resized();
}

bool PanelBody::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) {
        updateGeometry();
        arrange();
    }
    return QWidget::event(event);
}

void PanelBody::arrange() {
    QRect place = rect();
    if (strip_) {
        const int stripWidth = strip_->minimumWidth();
        const bool beside = hasRoom();
        strip_->setGeometry(beside ? width() - stripWidth : 0, 0, stripWidth, height());
        strip_->setVisible(!folded_);
        strip_->raise();
        if (!folded_ && beside) {
            place.setRight(place.right() - stripWidth);
        }
    }
    pages_->setGeometry(place);
}

}  // namespace app
