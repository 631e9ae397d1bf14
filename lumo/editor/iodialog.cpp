#include "editor/iodialog.h"

#include "program/words.h"

#include <QComboBox>
#include <QLabel>
#include <QRadioButton>

using namespace lumo;
using namespace prog;

namespace {

bool isBitRegister(const ModuleObject* entry) {
    const QString type = entry->r(field::type)->getString();
    return type == QLatin1String("bit") || type == QLatin1String("bool");
}

/// Selects a stored text, which is added where it is not offered.
void selectText(QComboBox* combo, const QString& text, const QVariant& dataIfAdded = {}) {
    if (text.isEmpty()) {
        return;
    }
    if (combo->findText(text) < 0) {
        combo->addItem(text, dataIfAdded);
    }
    combo->setCurrentText(text);
}

}  // namespace

IoDialog::IoDialog(const IoDialogTable& table, QWidget* parent)
    : AnswerDialog(Closing::ByItself, parent), table_(table) {}

void IoDialog::build(const IoDialogWidgets& widgets, const ModuleObject* statement) {
    ui_ = widgets;
    ui_.value->addItems({word::falseText, word::trueText});
    connect(ui_.io, &QRadioButton::clicked, this, &IoDialog::refreshSource);
    connect(ui_.reg, &QRadioButton::clicked, this, &IoDialog::refreshSource);
    const bool isIo = statement->r(table_.kindField)->getString() == word::io;
    (isIo ? ui_.io : ui_.reg)->setChecked(true);
    fillSignals(statement->r(table_.signalField)->getString());
    fillRegisters(statement->r(table_.registerField));
    ui_.value->setCurrentText(statement->r(table_.valueField)->getString());
    refreshSource();
}

void IoDialog::fillSignals(const QString& stored) {
    const QList<ModuleObject*> offered =
        kordservice()->get(this, key::deviceIo, table_.signalGroup)->cmobjs();
    for (const ModuleObject* signal : offered) {
        ui_.signalNames->addItem(signal->name());
    }
    selectText(ui_.signalNames, stored);
}

void IoDialog::fillRegisters(const ModuleObject* stored) {
    const QList<ModuleObject*> offered = m(key::registerList)->cmobjs();
    for (const ModuleObject* entry : offered) {
        if (entry->r(field::rw)->getString() == table_.registerAccess && isBitRegister(entry)) {
            const QString name = entry->r(field::name)->getString();
            ui_.registers->addItem(name, entry->r(field::len)->getInt(1));
            registerTypes_.insert(name, entry->r(field::type)->getString());
        }
    }
    const QString name = stored->r(field::name)->getString();
    const int bias = stored->r(field::bias)->getInt();
    if (!name.isEmpty() && !registerTypes_.contains(name)) {
        registerTypes_.insert(name, stored->r(field::type)->getString());
    }
    selectText(ui_.registers, name, 1);
    fillElements();
    if (!name.isEmpty() && bias >= ui_.elements->count()) {
        ui_.elements->addItem(QString::number(qint64(bias) + 1), bias);
    }
    ui_.elements->setCurrentIndex(qMax(0, ui_.elements->findData(bias)));
    connect(ui_.registers, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &IoDialog::fillElements);
}

void IoDialog::fillElements() {
    ui_.elements->clear();
    const int length = ui_.registers->currentData().toInt();
    for (int bias = 0; bias < length; ++bias) {
        ui_.elements->addItem(QString::number(bias + 1), bias);
    }
}

void IoDialog::refreshSource() {
    const bool isIo = ui_.io->isChecked();
    ui_.signalCaption->setVisible(isIo);
    ui_.signalNames->setVisible(isIo);
    ui_.registerCaption->setVisible(!isIo);
    ui_.registers->setVisible(!isIo);
    ui_.elements->setVisible(!isIo);
}

void IoDialog::announce(bool ok) {
    emit signalIsok(ok);
}

void IoDialog::save(ModuleObject* statement) {
    const QString registerName = ui_.registers->currentText();
    const QString kind = ui_.io->isChecked() ? word::io : word::registerKind;
    statement->set(this, table_.signalField, ui_.signalNames->currentText())
        ->set(this, table_.valueField, ui_.value->currentText())
        ->set(this, table_.kindField, kind)
        ->set(this, mName(table_.registerField, field::name), registerName)
        ->set(this, mName(table_.registerField, field::bias), ui_.elements->currentData().toInt())
        ->set(this, mName(table_.registerField, field::type), registerTypes_.value(registerName));
}
