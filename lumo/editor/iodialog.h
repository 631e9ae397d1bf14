#pragma once

#include "module/host.h"
#include "widgets/answerdialog.h"
#include "widgets/signalselector.h"

class QComboBox;

/// How the output and the wait-input dialog differ, apart from their forms.
struct IoDialogTable {
    lumo::SignalSide side;
    prog::SignalFields signal;  ///< fields of the statement
    QLatin1String value;        ///< field of the statement
};

/// Chooses a signal and its state: the output and the wait-input dialog in one. It only reads the statement;
/// save() stores what was chosen.
///
/// `dialog->open()`, then on `signalIsok(true)` (or `accepted()`) `dialog->save(statement)`, and in any case
/// `dialog->deleteLater()`.
class IoDialog : public AnswerDialog {
    Q_OBJECT
public:
    /// Writes the signal, with its register whichever kind is chosen, and the state.
    void save(ModuleObject* statement);

signals:
    /// The dialog was answered and is hidden already. Emitted after `accepted()` or `rejected()`.
    void signalIsok(bool ok);

protected:
    IoDialog(const IoDialogTable& table, QWidget* parent);

    /// Fills the widgets of the derived class's form from the robot and the statement.
    void build(const lumo::SelectorWidgets& widgets, QComboBox* value, const ModuleObject* statement);
    /// Shows the widgets of the chosen kind and hides the others.
    void refreshSource();
    void announce(bool ok) override;

private:
    const IoDialogTable table_;
    lumo::SignalSelector* selector_ = nullptr;
    QComboBox* value_ = nullptr;
};
