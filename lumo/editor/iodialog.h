#pragma once

#include "module/host.h"
#include "widgets/answerdialog.h"

#include <QHash>
#include <QLatin1String>

class QComboBox;
class QLabel;
class QRadioButton;

/// What an output and a wait-input dialog differ in, apart from their forms.
struct IoDialogTable {
    QLatin1String signalGroup;     ///< child of the robot's "device.io"
    QLatin1String registerAccess;  ///< registers offered: their "rw"
    // Fields of the statement.
    QLatin1String signalField;
    QLatin1String valueField;
    QLatin1String kindField;
    QLatin1String registerField;  ///< holds "name", "bias" and "type"
};

/// The widgets of either form.
struct IoDialogWidgets {
    QRadioButton* io;
    QRadioButton* reg;
    QLabel* signalCaption;
    QComboBox* signalNames;
    QLabel* registerCaption;
    QComboBox* registers;
    QComboBox* elements;
    QComboBox* value;
};

/// Chooses a controller signal, or an element of a register, and its state: the output and the
/// wait-input dialog in one. It only reads the statement; what was chosen is stored by save().
///
/// `dialog->open()`, then on `signalIsok(true)` (or `accepted()`) `dialog->save(statement)`, and in
/// any case `dialog->deleteLater()`.
class IoDialog : public AnswerDialog {
    Q_OBJECT
public:
    /// Writes the six fields, whichever source is chosen.
    void save(ModuleObject* statement);

signals:
    /// The dialog was answered and is hidden already. Emitted after `accepted()` or `rejected()`.
    void signalIsok(bool ok);

protected:
    IoDialog(const IoDialogTable& table, QWidget* parent);

    /// Fills the widgets of the derived class's form with what the robot offers and the statement
    /// holds. A stored name that is not offered is offered too.
    void build(const IoDialogWidgets& widgets, const ModuleObject* statement);
    /// Shows the widgets of the chosen source and hides the other's.
    void refreshSource();
    void announce(bool ok) override;

private:
    void fillSignals(const QString& stored);
    void fillRegisters(const ModuleObject* stored);
    void fillElements();

    const IoDialogTable table_;
    IoDialogWidgets ui_{};
    QHash<QString, QString> registerTypes_;
};
