#include "module/qtloops.h"

#include "module/globals.h"

#include <QApplication>
#include <QDrag>
#include <QFileDialog>
#include <QMessageBox>

namespace lumo {

MenuGuard::MenuGuard(QObject* parent) : QObject(parent) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool MenuGuard::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ContextMenu && isRunning()) {
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void endLoopsOfQt() {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    QWidget* popup = QApplication::activePopupWidget();
    if (popup) {
        // Menus can be nested. Stop at one that refuses to close.
        while (popup && popup->close()) {
            popup = QApplication::activePopupWidget();
        }
    } else if (box && qobject_cast<QFileDialog*>(box->parentWidget())) {
        box->reject();
    } else {
        QDrag::cancel();
    }
}

}  // namespace lumo
