#pragma once

#include "program/entryrange.h"
#include "widgets/answerdialog.h"

class QLineEdit;

namespace lumo {
class FieldAnswer;
}

/// For the event filter of a line whose text is typed over: true for a mouse press, which the filter must not
/// pass on. Selects the text when a mouse press gives the line the focus.
bool isPressOnLine(QLineEdit* line, const QEvent* event);

/// A dialog with OK, Cancel and one line edit. A mouse press on the line is reported and not passed on; the
/// line's window is activated, so that the panel's input method comes up.
class WatchedLineDialog : public AnswerDialog {
    Q_OBJECT
public:
    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void lineeditclicked();

protected:
    using AnswerDialog::AnswerDialog;

    /// Sets the form's line. Call it once, after setupUi().
    void watch(QLineEdit* line);
    /// Says below the line which figures it takes, and enables OK only while it holds one of them. Call it
    /// when the line has its text. `caption` is what the page calls the line.
    void require(const prog::EntryRange& range, const QString& caption);
    /// Whether OK may be enabled now.
    [[nodiscard]] virtual bool canAccept() const;
    /// Enables or disables OK. Call it when the result of canAccept() may have changed.
    void refreshOk();
    void showEvent(QShowEvent* event) override;

private:
    QLineEdit* line_ = nullptr;
    lumo::FieldAnswer* answer_ = nullptr;
};
