#pragma once

#include <QMessageBox>
#include <QStringList>

#include <functional>

namespace lumo {

/// A question about the program, with answers of its own words.
struct Choice {
    QString title;
    QString text;
    QStringList answers;  ///< the last one changes nothing
    int preferred = 0;
};

/// Shows the question and returns at once. `answered` gets the position of the answer, from the event loop
/// and while `owner` lives. The last answer is also that of a box that is closed, as it is by itself when a
/// run begins or the program changes: the question would be about something else.
QMessageBox* askChoice(QObject* owner, QWidget* page, const Choice& choice,
                       const std::function<void(int)>& answered);

}  // namespace lumo
