#include "editor/setdodialog.h"

#include "ui_setdodialog.h"

SetDODialog::SetDODialog(ModuleObject* statement, QWidget* parent)
    : IoDialog({lumo::SignalSide::Output, prog::setOutput, prog::field::value}, parent),
      ui_(std::make_unique<Ui::SetDODialog>()) {
    ui_->setupUi(this);
    setUpButtons(ui_->buttonBox, tr("确定"), tr("取消"));
    build({ui_->rdbIOOut, ui_->rdbRegOut, ui_->label_2, ui_->cmbDO, ui_->lblDOReg, ui_->cmbDOReg,
           ui_->cmbDORegBias},
          ui_->cmbValue, statement);
}

SetDODialog::~SetDODialog() = default;

void SetDODialog::refreshDOCmb() {
    refreshSource();
}
