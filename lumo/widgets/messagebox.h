#pragma once

#include <QMessageBox>

namespace lumo {

/// Shows a message with one OK button, modal to the panel's window, and returns at once: whoever
/// runs below goes on. While something runs it is not modal: Stop has to stay in reach. The box deletes
/// itself when it is closed. A message that is on the screen already (same title and text) is not shown
/// twice.
void showMessage(QMessageBox::Icon icon, const QString& title, const QString& text);

}  // namespace lumo
