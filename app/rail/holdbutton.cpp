#include "app/rail/holdbutton.h"

#include <QApplication>
#include <QWindow>

namespace app {

HoldButton::HoldButton(const QString& text, QWidget* parent) : QPushButton(text, parent) {
    setFocusPolicy(Qt::TabFocus);
    connect(this, &QPushButton::pressed, this, &HoldButton::hold);
    connect(this, &QPushButton::released, this, &HoldButton::release);
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &HoldButton::onFocusWindow);
}

void HoldButton::hold() {
    if (held_ || !isEnabled()) {
        return;
    }
    held_ = true;
    dialog_ = QApplication::activeModalWidget();
    setDown(true);
    emit held(true);
}

void HoldButton::release() {
    if (!held_) {
        return;
    }
    held_ = false;
    setDown(false);
    emit held(false);
}

void HoldButton::onFocusWindow(QWindow* window) {
    const bool isSame = dialog_ && dialog_ == QApplication::activeModalWidget();
    if (!window || !isSame) {
        release();
    }
}

/// QPushButton would be pressed again when the finger returns to it.
void HoldButton::mouseMoveEvent(QMouseEvent* event) {
    if (held_) {
        QPushButton::mouseMoveEvent(event);
    }
}

void HoldButton::hideEvent(QHideEvent* event) {
    release();
    QPushButton::hideEvent(event);
}

}  // namespace app
