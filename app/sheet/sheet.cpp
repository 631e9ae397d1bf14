#include "app/sheet/sheet.h"

#include "app/appearance.h"
#include "look/scale.h"
#include "look/tokens.h"
#include "look/type.h"

#include <QApplication>
#include <QEvent>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace app {

namespace {

constexpr int cardPx = 560, outsidePx = 16;
constexpr int marginPx = 24, barPx = 64;

}  // namespace

Sheet::Sheet(const QString& name, const QString& title, QWidget* over)
    : QFrame(over),
      card_(new QFrame(this)),
      title_(new QLabel(title)),
      content_(new QVBoxLayout),
      buttons_(new QHBoxLayout),
      widthPx_(cardPx) {
    const QList<Sheet*> open = over->findChildren<Sheet*>(QString(), Qt::FindDirectChildrenOnly);
    for (Sheet* other : open) {
        if (other != this) {
            other->dismiss();
        }
    }
    setObjectName(name);
    card_->setObjectName(QStringLiteral("sheetCard"));
    title_->setObjectName(QStringLiteral("lblSheetTitle"));
    title_->setWordWrap(true);
    auto* upper = new QVBoxLayout;
    const int margin = look::px(marginPx);
    upper->setContentsMargins(margin, look::px(20), margin, look::px(20));
    upper->setSpacing(look::px(12));
    upper->addWidget(title_);
    upper->addLayout(content_);
    content_->setSpacing(look::px(12));
    auto* column = new QVBoxLayout(card_);
    column->setContentsMargins(2, 2, 2, 2);  // the card's edge
    column->setSpacing(0);
    column->addLayout(upper);
    column->addStretch(1);
    column->addWidget(makeBar());
    addButton(QStringLiteral("btnSheetClose"), tr("关闭"));
    setFocusPolicy(Qt::StrongFocus);
    over->installEventFilter(this);
}

/// What is done beside goes to its left end; Close and what the sheet is for to the right one.
QWidget* Sheet::makeBar() {
    auto* bar = new QFrame;
    bar->setObjectName(QStringLiteral("sheetBar"));
    bar->setFixedHeight(look::px(barPx));
    bar->setLayout(buttons_);
    buttons_->setContentsMargins(look::px(marginPx), 0, look::px(marginPx), 0);
    buttons_->setSpacing(look::px(8));
    buttons_->addStretch(1);
    return bar;
}

Sheet::~Sheet() = default;

void Sheet::open() {
    dress(this);
    focusBefore_ = QApplication::focusWidget();
    cover();
    show();
    raise();
    setFocus();
}

void Sheet::dismiss() {
    if (dismissed_) {
        return;
    }
    dismissed_ = true;
    hide();
    if (focusBefore_) {
        focusBefore_->setFocus();
    }
    emit dismissed();
    deleteLater();
}

void Sheet::setTitle(const QString& title) {
    title_->setText(title);
}

QLabel* Sheet::addText(const QString& text) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    content_->addWidget(label);
    return label;
}

QAbstractButton* Sheet::addButton(const QString& name, const QString& text, bool primary) {
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    button->setProperty("primary", primary);
    // Wider than its size hint, from whose room Qt takes the border twice when it draws the text.
    const int textWidth = QFontMetrics(look::font(look::Size::Text)).horizontalAdvance(text);
    button->setMinimumWidth(std::max(look::px(96), textWidth + look::px(32)));
    if (name == QLatin1String("btnSheetClose")) {
        buttons_->addWidget(button);
        connect(button, &QAbstractButton::clicked, this, &Sheet::dismiss);
    } else if (primary) {
        buttons_->addWidget(button);
    } else {
        buttons_->insertWidget(aside_++, button);
    }
    return button;
}

void Sheet::setCardWidth(int px) {
    widthPx_ = px;
}

/// The card in the middle, as high as its content needs.
void Sheet::cover() {
    setGeometry(parentWidget()->rect());
    const int outside = look::px(outsidePx);
    const int width = std::min(look::px(widthPx_), this->width() - 2 * outside);
    card_->ensurePolished();
    card_->layout()->activate();
    const int height = std::min(std::max(card_->layout()->totalHeightForWidth(width), 0), this->height());
    card_->setGeometry((this->width() - width) / 2, (this->height() - height) / 2, width, height);
}

bool Sheet::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parentWidget() &&
        (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest)) {
        cover();
        // After the parent has arranged its other children.
        QMetaObject::invokeMethod(this, &QWidget::raise, Qt::QueuedConnection);
    }
    return QFrame::eventFilter(watched, event);
}

void Sheet::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), QColor::fromRgba(look::veil));
}

void Sheet::mousePressEvent(QMouseEvent* event) {
    if (!card_->geometry().contains(event->pos())) {
        dismiss();
    }
}

void Sheet::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        dismiss();
    } else {
        QFrame::keyPressEvent(event);
    }
}

/// A text that came or went makes the card higher or lower.
bool Sheet::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) {
        cover();
    }
    return QFrame::event(event);
}

/// The keyboard stays in the sheet.
bool Sheet::focusNextPrevChild(bool next) {
    QWidget* widget = focusWidget() ? focusWidget() : this;
    for (int i = 0; i < 1000; ++i) {
        widget = next ? widget->nextInFocusChain() : widget->previousInFocusChain();
        if (card_->isAncestorOf(widget) && widget->isVisible() && widget->isEnabled() &&
            widget->focusPolicy() & Qt::TabFocus) {
            widget->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return true;
        }
    }
    return false;
}

}  // namespace app
