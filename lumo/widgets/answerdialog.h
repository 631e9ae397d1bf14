#pragma once

#include <QDialog>

class QDialogButtonBox;
class QPushButton;

/// A frameless dialog that is answered once: true by OK, false by Cancel, Escape or the window's close.
///
/// Show it with open(), never exec(): a nested loop would keep a run that waits below it from going on.
/// Derived classes announce the answer with a signal of their own; the owner reads the results in its
/// handler and deletes the dialog later. A dialog that is shown anew can be answered anew.
class AnswerDialog : public QDialog {
    Q_OBJECT
public:
    /// OK.
    void accept() override;
    /// Cancel and Escape.
    void reject() override;

protected:
    enum class Closing {
        ByOwner,   ///< stays as it is after the answer until the owner deletes it
        ByItself,  ///< hides before it announces the answer
    };
    AnswerDialog(Closing closing, QWidget* parent);

    /// Captions of the box's OK and Cancel. Call it when the form is built.
    void setUpButtons(QDialogButtonBox* box, const QString& okText, const QString& cancelText);
    QPushButton* okButton() const { return okButton_; }
    /// Emits the dialog's answer.
    virtual void announce(bool ok) = 0;

    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void answer(bool ok);

    const Closing closing_;
    QPushButton* okButton_ = nullptr;
    bool answered_ = false;
};
