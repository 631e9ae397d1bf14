#include "module/qtloops.h"

#include <QApplication>
#include <QDrag>
#include <QFileDialog>
#include <QMessageBox>

namespace lumo {

void endLoopsOfQt() {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    QWidget* popup = QApplication::activePopupWidget();
    if (popup) {
        // A menu can have opened another one; one that refuses to close would be asked for ever.
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
