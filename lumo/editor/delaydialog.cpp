#include "editor/delaydialog.h"

#include "program/statement.h"
#include "program/words.h"
#include "ui_delaydialog.h"
#include "widgets/fieldlimits.h"
#include "widgets/fieldnote.h"

DelayDialog::DelayDialog(ModuleObject* statement, QWidget* parent)
    : WatchedLineDialog(Closing::ByOwner, parent), ui_(std::make_unique<Ui::DelayDialog>()) {
    ui_->setupUi(this);
    setUpButtons(ui_->buttonBox, tr("确定"), tr("取消"));
    watch(ui_->lineEdit);
    allowOnlyDigits(ui_->lineEdit);
    ui_->lineEdit->setText(statement->r(prog::field::delaytime)->getString());
    require(prog::entryRange(prog::statement::delay, prog::field::delaytime), ui_->label_2->text());
    lumo::showUnit(ui_->lineEdit, ui_->label_3);
}

DelayDialog::~DelayDialog() = default;

QString DelayDialog::value() const {
    return ui_->lineEdit->text();
}
