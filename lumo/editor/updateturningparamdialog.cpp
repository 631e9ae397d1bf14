#include "editor/updateturningparamdialog.h"

#include "editor/fieldlimits.h"
#include "module/keys.h"
#include "ui_updateturningparamdialog.h"

UpdateTurningParamDialog::UpdateTurningParamDialog(ModuleObject* program, const QList<QModelIndex>& rows,
                                                   QWidget* parent)
    : BatchDialog(lumo::field::zone, program, rows, parent),
      ui_(std::make_unique<Ui::UpdateTurningParamDialog>()) {
    ui_->setupUi(this);
    setUpButtons(ui_->buttonBox, tr("确定"), tr("取消"));
    build(ui_->lineEdit);
    limitToZone(ui_->lineEdit);
}

UpdateTurningParamDialog::~UpdateTurningParamDialog() = default;
