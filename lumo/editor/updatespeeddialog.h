#pragma once

#include "editor/batchdialog.h"

#include <memory>

namespace Ui {
class UpdateSpeedDialog;
}

/// One speed for the chosen moves of a program, in mm/s: more than 0, without an upper limit.
class UpdateSpeedDialog final : public BatchDialog {
    Q_OBJECT
public:
    UpdateSpeedDialog(ModuleObject* program, const QList<QModelIndex>& rows, QWidget* parent = nullptr);
    ~UpdateSpeedDialog() override;

signals:
    void signalUpdateSpeedIsok(bool ok);

protected:
    void announce(bool ok) override { emit signalUpdateSpeedIsok(ok); }

private:
    const std::unique_ptr<Ui::UpdateSpeedDialog> ui_;
};
