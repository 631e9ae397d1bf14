#include "app/pendant/holdbutton.h"

#include <QGuiApplication>
#include <QWindow>

namespace app {

HoldButton::HoldButton(const QString& text, QWidget* parent) : QPushButton(text, parent) {
    setFocusPolicy(Qt::TabFocus);
    setMinimumHeight(48);
    connect(this, &QPushButton::pressed, this, &HoldButton::hold);
    connect(this, &QPushButton::released, this, &HoldButton::letGo);
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &HoldButton::letGo);
}

void HoldButton::hold() {
    if (held_ || !isEnabled()) {
        return;
    }
    held_ = true;
    setDown(true);
    emit held(true);
}

void HoldButton::letGo() {
    if (!held_) {
        return;
    }
    held_ = false;
    setDown(false);
    emit held(false);
}

/// A plain button is pressed again when the finger comes back to it.
void HoldButton::mouseMoveEvent(QMouseEvent* event) {
    if (held_) {
        QPushButton::mouseMoveEvent(event);
    }
}

void HoldButton::hideEvent(QHideEvent* event) {
    letGo();
    QPushButton::hideEvent(event);
}

}  // namespace app
