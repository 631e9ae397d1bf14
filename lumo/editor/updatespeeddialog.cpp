#include "editor/updatespeeddialog.h"

#include "program/words.h"
#include "ui_updatespeeddialog.h"
#include "widgets/fieldlimits.h"

UpdateSpeedDialog::UpdateSpeedDialog(ModuleObject* program, const QList<QModelIndex>& rows, QWidget* parent)
    : BatchDialog(prog::field::speed, program, rows, parent), ui_(std::make_unique<Ui::UpdateSpeedDialog>()) {
    ui_->setupUi(this);
    setUpButtons(ui_->buttonBox, tr("确定"), tr("取消"));
    build(ui_->lineEdit);
    require(isSpeed);
}

UpdateSpeedDialog::~UpdateSpeedDialog() = default;
