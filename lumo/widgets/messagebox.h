#pragma once

#include "widgets/way.h"

#include <QMessageBox>

namespace lumo {

/// What stands below the text of a message. Each is a sentence or empty.
struct Advice {
    QString reason;  ///< why it is so, with the line of the program
    QString remedy;  ///< what the operator can do
    Way way;         ///< where a button of the message leads
};

/// Shows a message with an OK button and returns at once. With a way in the advice there is a button that
/// closes the message and leads there. It is modal to the panel's window, but not while a program runs,
/// because Stop must stay usable. The box deletes itself when it is closed. A message that is already shown
/// (same title and text) is not shown twice: it gets the new advice and comes to the front.
void showMessage(QMessageBox::Icon icon, const QString& title, const QString& text,
                 const Advice& advice = {});

}  // namespace lumo
