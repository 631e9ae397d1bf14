#include "editor/updatespeeddialog.h"

#include "editor/fieldlimits.h"
#include "module/keys.h"
#include "ui_updatespeeddialog.h"

UpdateSpeedDialog::UpdateSpeedDialog(ModuleObject* program, const QList<QModelIndex>& rows, QWidget* parent)
    : BatchDialog(lumo::field::speed, program, rows, parent), ui_(std::make_unique<Ui::UpdateSpeedDialog>()) {
    ui_->setupUi(this);
    setUpButtons(ui_->buttonBox, tr("确定"), tr("取消"));
    build(ui_->lineEdit);
    require(isSpeed);
}

UpdateSpeedDialog::~UpdateSpeedDialog() = default;
