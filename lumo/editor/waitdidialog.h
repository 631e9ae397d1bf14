#pragma once

#include "editor/iodialog.h"

#include <memory>

namespace Ui {
class WaitDIDialog;
}

/// Which input a "waitDI" statement waits for, and which state.
/// See IoDialog for how it is opened, answered and saved.
class WaitDIDialog final : public IoDialog {
    Q_OBJECT
public:
    /// Reads the statement, which is not kept.
    explicit WaitDIDialog(ModuleObject* statement, QWidget* parent = nullptr);
    ~WaitDIDialog() override;

    /// Shows the controller's inputs or the registers, as the radio buttons say.
    void refreshDICmb();

private:
    const std::unique_ptr<Ui::WaitDIDialog> ui_;
};
