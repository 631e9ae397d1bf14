#include "app/pendant/holdbutton.h"

#include <QGuiApplication>
#include <QWindow>

namespace app {

HoldButton::HoldButton(const QString& text, QWidget* parent) : QPushButton(text, parent) {
    setFocusPolicy(Qt::TabFocus);
    setMinimumHeight(48);
    connect(this, &QPushButton::pressed, this, &HoldButton::hold);
    connect(this, &QPushButton::released, this, &HoldButton::release);
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &HoldButton::release);
}

void HoldButton::hold() {
    if (held_ || !isEnabled()) {
        return;
    }
    held_ = true;
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
