#include "editor/iodialogs.h"

#include "ui_setdodialog.h"
#include "ui_waitdidialog.h"

#include <QComboBox>

using namespace lumo;
using namespace prog;

IoDialog::IoDialog(const IoDialogTable& table, QWidget* parent)
    : AnswerDialog(Closing::ByItself, parent), table_(table) {}

void IoDialog::build(const SelectorWidgets& widgets, QComboBox* value, const ModuleObject* statement) {
    selector_ = new SignalSelector(table_.side, false, widgets, this);
    selector_->fill(Signal::from(statement, table_.signal));
    value_ = value;
    value_->addItems({word::falseText, word::trueText});
    value_->setCurrentText(statement->c(table_.value)->getString());
}

void IoDialog::refreshSource() {
    selector_->refresh();
}

void IoDialog::announce(bool ok) {
    emit signalIsok(ok);
}

void IoDialog::save(ModuleObject* statement) {
    selector_->chosen().store(this, statement, table_.signal, word::registerKind, true);
    statement->set(this, table_.value, value_->currentText());
}

SetDODialog::SetDODialog(ModuleObject* statement, QWidget* parent)
    : IoDialog({SignalSide::Output, setOutput, field::value}, parent),
      ui_(std::make_unique<Ui::SetDODialog>()) {
    ui_->setupUi(this);
    setUpButtons(ui_->buttonBox, tr("确定"), tr("取消"));
    build({ui_->rdbIOOut, ui_->rdbRegOut, ui_->label_2, ui_->cmbDO, ui_->lblDOReg, ui_->cmbDOReg,
           ui_->cmbDORegBias},
          ui_->cmbValue, statement);
}

SetDODialog::~SetDODialog() = default;

WaitDIDialog::WaitDIDialog(ModuleObject* statement, QWidget* parent)
    : IoDialog({SignalSide::Input, awaitedInput, field::value1}, parent),
      ui_(std::make_unique<Ui::WaitDIDialog>()) {
    ui_->setupUi(this);
    setUpButtons(ui_->buttonBox, tr("确定"), tr("取消"));
    build({ui_->rdbIOIn, ui_->rdbRegIn, ui_->label_2, ui_->cmbDI, ui_->lblDIReg, ui_->cmbDIReg,
           ui_->cmbDIRegBias},
          ui_->cmbValue, statement);
}

WaitDIDialog::~WaitDIDialog() = default;
