#include "app/rail/rail.h"

#include "app/appearance.h"
#include "app/rail/modebox.h"
#include "app/rail/stopbox.h"
#include "look/icon.h"
#include "look/scale.h"

#include <QApplication>
#include <QEvent>
#include <QShortcut>
#include <QToolButton>
#include <QVBoxLayout>

namespace app {

namespace {

/// Needs no more than its word: Qt's own would add two spaces, which a rail of 80 px does not have.
class RailKey : public QToolButton {
public:
    QSize minimumSizeHint() const override {
        return {fontMetrics().horizontalAdvance(text()) + look::px(4), look::px(48)};
    }
};

}  // namespace

Rail::Rail(sim::Controller* controller, QWidget* parent)
    : QFrame(parent), stop_(new StopBox(controller)), column_(new QVBoxLayout(this)) {
    setObjectName(QStringLiteral("rail"));
    column_->addWidget(stop_);
    column_->addWidget(new ModeBox(controller));
    column_->addStretch(1);
    auto* keyboard = new QShortcut(Qt::Key_F9, this);
    keyboard->setContext(Qt::ApplicationShortcut);
    connect(keyboard, &QShortcut::activated, this, &Rail::toggleFocus);
    dress(this, {QStringLiteral("base"), QStringLiteral("rail")});
    fit();
}

StopButton* Rail::stop() const {
    return stop_->button();
}

QToolButton* Rail::addKey(const QString& name, const QString& icon, const QString& text) {
    auto* key = new RailKey;
    key->setObjectName(name);
    key->setText(text);
    key->setIcon(look::icon(icon, look::ink2, look::white));
    key->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    key->setCheckable(true);
    key->setFocusPolicy(Qt::TabFocus);
    key->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    column_->addWidget(key);
    fit();
    return key;
}

void Rail::takeFocus() {
    stop_->takeFocus();
}

void Rail::toggleFocus() {
    QWidget* const focused = QApplication::focusWidget();
    if (focused && isAncestorOf(focused)) {
        if (focusBefore_) {
            focusBefore_->setFocus();
        } else {
            focused->clearFocus();
        }
        return;
    }
    focusBefore_ = focused;
    takeFocus();
}

void Rail::fit() {
    constexpr int normalPx = 96;
    const int margin = look::px(8), side = width() < look::px(normalPx) ? look::px(2) : margin;
    column_->setContentsMargins(side, margin, side, margin);
    column_->setSpacing(look::px(8));
    const QList<QToolButton*> keys = findChildren<QToolButton*>(QString(), Qt::FindDirectChildrenOnly);
    for (QToolButton* const key : keys) {
        key->setFixedHeight(look::px(56));
        key->setIconSize(QSize(look::px(22), look::px(22)));
    }
}

void Rail::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        fit();
    }
}

void Rail::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    fit();
}

}  // namespace app
