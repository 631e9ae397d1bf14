#include "app/help/helpkey.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace app {

HelpKey::HelpKey(QObject* parent) : QObject(parent) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool HelpKey::eventFilter(QObject*, QEvent* event) {
    if (event->type() != QEvent::KeyPress) {
        return false;
    }
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() != Qt::Key_F1 || key->modifiers() != Qt::NoModifier) {
        return false;
    }
    if (!key->isAutoRepeat()) {
        emit pressed();
    }
    return true;
}

}  // namespace app
