#include "editor/iodialog.h"

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
