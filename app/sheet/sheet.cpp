#include "app/sheet/sheet.h"

#include "app/appearance.h"

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace app {

namespace {

constexpr int cardWidth = 560;
constexpr int buttonHeight = 48;
const QColor veil(0x17, 0x27, 0x3a, 115);

}  // namespace

Sheet::Sheet(const QString& name, const QString& title, QWidget* over)
    : QFrame(over), card_(new QFrame(this)), title_(new QLabel(title)), content_(new QVBoxLayout) {
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
    card_->setFixedWidth(cardWidth);
    auto* column = new QVBoxLayout(card_);
    column->setContentsMargins(20, 16, 20, 16);
    column->setSpacing(12);
    column->addWidget(title_);
    column->addLayout(content_);
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    row->addStretch(1);
    column->addLayout(row);
    buttons_ = row;
    addButton(QStringLiteral("btnSheetClose"), tr("关闭"));
    auto* middle = new QVBoxLayout(this);
    middle->addStretch(1);
    middle->addWidget(card_, 0, Qt::AlignHCenter);
    middle->addStretch(1);
    setFocusPolicy(Qt::StrongFocus);
    over->installEventFilter(this);
}

Sheet::~Sheet() = default;

void Sheet::open() {
    setStyleSheet(frameStyleSheet());
    focusBefore_ = QApplication::focusWidget();
    cover();
    show();
    // The card is centred, so its layout does not ask for the height of wrapped texts.
    const QList<QLabel*> texts = card_->findChildren<QLabel*>();
    for (QLabel* text : texts) {
        if (text->wordWrap() && !text->text().isEmpty()) {
            text->setMinimumHeight(text->heightForWidth(text->width()));
        }
    }
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
    button->setMinimumHeight(buttonHeight);
    button->setProperty("primary", primary);
    auto* row = static_cast<QHBoxLayout*>(buttons_);
    row->insertWidget(std::max(0, row->count() - 1), button);
    if (name == QLatin1String("btnSheetClose")) {
        row->addWidget(button);
        connect(button, &QAbstractButton::clicked, this, &Sheet::dismiss);
    }
    return button;
}

/// An aligned widget gets its size hint, which is too low for texts of several lines.
void Sheet::cover() {
    card_->ensurePolished();
    card_->layout()->activate();
    card_->setFixedHeight(card_->layout()->totalHeightForWidth(cardWidth));
    setGeometry(parentWidget()->rect());
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
    QPainter(this).fillRect(rect(), veil);
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
