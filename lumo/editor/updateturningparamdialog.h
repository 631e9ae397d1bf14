#pragma once

#include "editor/batchdialog.h"

#include <memory>

namespace Ui {
class UpdateTurningParamDialog;
}

/// One blending zone for the chosen moves of a program, 0 to 5 mm.
class UpdateTurningParamDialog final : public BatchDialog {
    Q_OBJECT
public:
    UpdateTurningParamDialog(ModuleObject* program, const QList<QModelIndex>& rows,
                             QWidget* parent = nullptr);
    ~UpdateTurningParamDialog() override;

signals:
    void signalUpdateturningIsok(bool ok);

protected:
    void announce(bool ok) override { emit signalUpdateturningIsok(ok); }

private:
    const std::unique_ptr<Ui::UpdateTurningParamDialog> ui_;
};
