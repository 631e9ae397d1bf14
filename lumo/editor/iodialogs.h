#pragma once

#include "module/host.h"
#include "widgets/answerdialog.h"
#include "widgets/signalselector.h"

#include <memory>

class QComboBox;

namespace Ui {
class SetDODialog;
class WaitDIDialog;
}  // namespace Ui

/// How the output and the input dialog differ, apart from their forms.
struct IoDialogTable {
    lumo::SignalSide side;
    prog::SignalFields signal;  ///< fields of the statement
    QLatin1String value;        ///< field of the statement
};

/// Chooses a signal and its state. The dialog only reads the statement; save() stores what was chosen.
///
/// `dialog->open()`, then on `signalIsok(true)` (or `accepted()`) `dialog->save(statement)`, and in any case
/// `dialog->deleteLater()`.
class IoDialog : public AnswerDialog {
    Q_OBJECT
public:
    /// Writes the signal, with its register whichever kind is chosen, and the state.
    void save(ModuleObject* statement);

signals:
    /// The dialog was answered and is already hidden. Emitted after `accepted()` or `rejected()`.
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

/// The output that a "setDO" statement sets, and to what.
class SetDODialog final : public IoDialog {
    Q_OBJECT
public:
    /// Does not keep the statement.
    explicit SetDODialog(ModuleObject* statement, QWidget* parent = nullptr);
    ~SetDODialog() override;

    /// Shows the controller's outputs or the registers, as the radio buttons say.
    void refreshDOCmb() { refreshSource(); }

private:
    const std::unique_ptr<Ui::SetDODialog> ui_;
};

/// The input that a "waitDI" statement waits for, and its state.
class WaitDIDialog final : public IoDialog {
    Q_OBJECT
public:
    /// Does not keep the statement.
    explicit WaitDIDialog(ModuleObject* statement, QWidget* parent = nullptr);
    ~WaitDIDialog() override;

    /// Shows the controller's inputs or the registers, as the radio buttons say.
    void refreshDICmb() { refreshSource(); }

private:
    const std::unique_ptr<Ui::WaitDIDialog> ui_;
};
