#pragma once

#include "widgets/answerdialog.h"

class QLineEdit;

/// For the event filter of a line that is typed over rather than edited: true for a mouse press, which
/// is not to go on to the line. The press that brings the keyboard to the line selects its text.
bool isPressOnLine(QLineEdit* line, const QEvent* event);

/// A dialog with OK, Cancel and one line to type in, which it watches: a mouse press on the line is
/// reported and goes no further, and the line's window is activated, so that the panel's input method
/// comes up.
class WatchedLineDialog : public AnswerDialog {
    Q_OBJECT
public:
    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void lineeditclicked();

protected:
    using AnswerDialog::AnswerDialog;

    /// The line is the form's; call it once, when the form is built.
    void watch(QLineEdit* line);
    /// OK is enabled only while the line's text passes the test.
    void require(bool (*passes)(const QString& text));
    /// Whether OK is to be offered as things are.
    [[nodiscard]] virtual bool canAccept() const;
    /// Offers OK, or does not: call it when what canAccept() looks at has changed.
    void refreshOk();
    void showEvent(QShowEvent* event) override;

private:
    QLineEdit* line_ = nullptr;
    bool (*passes_)(const QString& text) = nullptr;
};
