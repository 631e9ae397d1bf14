#pragma once

#include "editor/iodialog.h"

#include <memory>

namespace Ui {
class SetDODialog;
}

/// Which output a "setDO" statement sets, and how.
/// See IoDialog for how it is opened, answered and saved.
class SetDODialog final : public IoDialog {
    Q_OBJECT
public:
    /// Reads the statement, which is not kept.
    explicit SetDODialog(ModuleObject* statement, QWidget* parent = nullptr);
    ~SetDODialog() override;

    /// Shows the controller's outputs or the registers, as the radio buttons say.
    void refreshDOCmb();

private:
    const std::unique_ptr<Ui::SetDODialog> ui_;
};
