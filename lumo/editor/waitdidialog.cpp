#include "editor/waitdidialog.h"

#include "ui_waitdidialog.h"

WaitDIDialog::WaitDIDialog(ModuleObject* statement, QWidget* parent)
    : IoDialog({lumo::SignalSide::Input, prog::awaitedInput, prog::field::value1}, parent),
      ui_(std::make_unique<Ui::WaitDIDialog>()) {
    ui_->setupUi(this);
    setUpButtons(ui_->buttonBox, tr("确定"), tr("取消"));
    build({ui_->rdbIOIn, ui_->rdbRegIn, ui_->label_2, ui_->cmbDI, ui_->lblDIReg, ui_->cmbDIReg,
           ui_->cmbDIRegBias},
          ui_->cmbValue, statement);
}

WaitDIDialog::~WaitDIDialog() = default;

void WaitDIDialog::refreshDICmb() {
    refreshSource();
}
