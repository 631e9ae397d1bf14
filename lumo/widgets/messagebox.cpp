#include "widgets/messagebox.h"

#include "module/globals.h"
#include "module/host.h"

#include <QApplication>
#include <QStackedWidget>

namespace lumo {

namespace {

bool isShown(const QString& title, const QString& text) {
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QWidget* window : windows) {
        const auto* box = qobject_cast<const QMessageBox*>(window);
        if (box && box->isVisible() && box->windowTitle() == title && box->text() == text) {
            return true;
        }
    }
    return false;
}

}  // namespace

void showMessage(QMessageBox::Icon icon, const QString& title, const QString& text) {
    if (isShown(title, text)) {
        return;
    }
    const QStackedWidget* center = instantiatedCenterWidget();
    auto* box =
        new QMessageBox(icon, title, text, QMessageBox::Ok, center ? center->currentWidget() : nullptr);
    box->setAttribute(Qt::WA_DeleteOnClose);
    if (isRunning()) {  // a modal box would block the Stop button
        box->setWindowModality(Qt::NonModal);
        box->show();
    } else {
        box->open();
    }
}

}  // namespace lumo
