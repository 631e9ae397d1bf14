#include "panel/captionedbox.h"

#include "look/scale.h"
#include "look/type.h"

#include <QComboBox>
#include <QLabel>

#include <algorithm>

namespace lumo {

namespace {

// At factor 1.
constexpr int left = 12;   // of caption and entry
constexpr int arrow = 42;  // right of them
constexpr int captionTop = 5;

}  // namespace

CaptionedBox::CaptionedBox(QWidget* parent) : QWidget(parent) {}

QComboBox* CaptionedBox::selector() const {
    return findChild<QComboBox*>();
}

QLabel* CaptionedBox::caption() const {
    return findChild<QLabel*>(QString(), Qt::FindDirectChildrenOnly);
}

QSize CaptionedBox::sizeHint() const {
    const int words = std::max(look::textWidth(look::font(look::Size::Caption), caption()->text()),
                               look::textWidth(look::font(look::Size::Text), selector()->currentText()));
    return {look::px(left + arrow) + words, look::px(48)};
}

void CaptionedBox::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    QLabel* const words = caption();
    words->setAttribute(Qt::WA_TransparentForMouseEvents);
    words->setFont(look::font(look::Size::Caption));
    words->setWordWrap(false);
    words->raise();
    selector()->setGeometry(rect());
    words->setGeometry(look::px(left), look::px(captionTop), width() - look::px(left + arrow),
                       words->sizeHint().height());
}

}  // namespace lumo
