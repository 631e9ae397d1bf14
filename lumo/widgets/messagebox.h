#pragma once

#include <QMessageBox>

namespace lumo {

/// Shows a message with one OK button and returns at once. It is modal to the panel's window, but not while a
/// program runs, because Stop must stay usable. The box deletes itself when it is closed. A message that is
/// already shown (same title and text) is not shown twice.
void showMessage(QMessageBox::Icon icon, const QString& title, const QString& text);

}  // namespace lumo
