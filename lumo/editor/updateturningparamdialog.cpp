#include "editor/updateturningparamdialog.h"

#include "program/words.h"
#include "ui_updateturningparamdialog.h"
#include "widgets/fieldlimits.h"

UpdateTurningParamDialog::UpdateTurningParamDialog(ModuleObject* program, const QList<QModelIndex>& rows,
                                                   QWidget* parent)
    : BatchDialog(prog::field::zone, program, rows, parent),
      ui_(std::make_unique<Ui::UpdateTurningParamDialog>()) {
    ui_->setupUi(this);
    setUpButtons(ui_->buttonBox, tr("确定"), tr("取消"));
    build(ui_->lineEdit);
    limitToZone(ui_->lineEdit);
}

UpdateTurningParamDialog::~UpdateTurningParamDialog() = default;
