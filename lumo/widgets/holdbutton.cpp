#include "widgets/holdbutton.h"

#include <QEvent>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QWindow>

namespace lumo {

HoldButton::HoldButton(QWidget* parent) : WrapButton(parent) {
    connect(this, &QPushButton::pressed, this, &HoldButton::hold);
    connect(this, &QPushButton::released, this, &HoldButton::letGo);
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this](const QWindow* focused) {
        if (focused != window()->windowHandle()) {
            letGo();
        }
    });
}

void HoldButton::hold() {
    if (!held_ && isEnabled()) {
        held_ = true;
        emit held(true);
    }
}

void HoldButton::letGo() {
    if (held_) {
        held_ = false;
        setDown(false);
        emit held(false);
    }
}

/// QPushButton would be pressed again when the finger returns to it.
void HoldButton::mouseMoveEvent(QMouseEvent* event) {
    if (held_) {
        WrapButton::mouseMoveEvent(event);
    }
}

void HoldButton::hideEvent(QHideEvent* event) {
    letGo();
    WrapButton::hideEvent(event);
}

void HoldButton::changeEvent(QEvent* event) {
    WrapButton::changeEvent(event);
    if (event->type() == QEvent::EnabledChange && !isEnabled()) {
        letGo();
    }
}

}  // namespace lumo
