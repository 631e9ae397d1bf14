#pragma once

#include <QDialog>

class QDialogButtonBox;
class QPushButton;

/// A frameless dialog that is answered once: true by OK, false by Cancel, Escape or closing the window.
///
/// Show it with open(), never exec(): a nested event loop would block a run that waits below it. Derived
/// classes announce the answer with a signal of their own. The owner reads the results in its slot and
/// deletes the dialog later. A dialog that is shown again can be answered again.
class AnswerDialog : public QDialog {
    Q_OBJECT
public:
    /// OK.
    void accept() override;
    /// Cancel and Escape.
    void reject() override;

protected:
    enum class Closing {
        ByOwner,   ///< stays visible after the answer until the owner deletes it
        ByItself,  ///< hides before it announces the answer
    };
    AnswerDialog(Closing closing, QWidget* parent);

    /// Connects the box's OK and Cancel and sets their captions. Call it once, after setupUi().
    void setUpButtons(QDialogButtonBox* box, const QString& okText, const QString& cancelText);
    QPushButton* okButton() const { return okButton_; }
    /// Emits the dialog's answer.
    virtual void announce(bool ok) = 0;

    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void measure(QDialogButtonBox* buttons);
    void answer(bool ok);

    const Closing closing_;
    QPushButton* okButton_ = nullptr;
    bool answered_ = false;
};
