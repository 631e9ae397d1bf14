#include "widgets/signalselector.h"

#include "module/host.h"

#include <QComboBox>
#include <QLabel>
#include <QRadioButton>

using namespace prog;

namespace lumo {

namespace {

/// Data of a register's entry.
constexpr int lengthRole = Qt::UserRole;
constexpr int typeRole = Qt::UserRole + 1;

void offerRegister(QComboBox* registers, const QString& name, const QString& type, int length) {
    registers->addItem(name, length);
    registers->setItemData(registers->count() - 1, type, typeRole);
}

void offerBit(QComboBox* bits, int bit) {
    bits->addItem(QString::number(qint64(bit) + 1), bit);
}

}  // namespace

SignalSelector::SignalSelector(SignalSide side, bool offersNone, const SelectorWidgets& widgets,
                               QObject* parent)
    : QObject(parent), side_(side), offersNone_(offersNone), ui_(widgets) {
    connect(ui_.io, &QRadioButton::clicked, this, &SignalSelector::refresh);
    connect(ui_.reg, &QRadioButton::clicked, this, &SignalSelector::refresh);
    connect(ui_.registers, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &SignalSelector::fillBits);
}

void SignalSelector::fill(const Signal& stored) {
    stored_ = stored;
    (stored.isIo ? ui_.io : ui_.reg)->setChecked(true);
    fillNames();
    fillRegisters();
    refresh();
}

void SignalSelector::fillNames() {
    ui_.ioNames->clear();
    if (offersNone_) {
        ui_.ioNames->addItem(QString());
    }
    const QLatin1String group = side_ == SignalSide::Input ? word::portInput : word::portOutput;
    const QList<ModuleObject*> offered = kordservice()->get(this, key::deviceIo, group)->cmobjs();
    for (const ModuleObject* signal : offered) {
        ui_.ioNames->addItem(signal->name());
    }
    if (!stored_.ioName.isEmpty() && ui_.ioNames->findText(stored_.ioName) < 0) {
        ui_.ioNames->addItem(stored_.ioName);
    }
    ui_.ioNames->setCurrentText(stored_.ioName);
}

void SignalSelector::fillRegisters() {
    ui_.registers->clear();
    if (offersNone_) {
        offerRegister(ui_.registers, QString(), QString(), 0);
    }
    const QLatin1String access = side_ == SignalSide::Input ? "rd"_l1 : "rdwr"_l1;
    const QList<ModuleObject*> offered = m(key::registerList)->cmobjs();
    for (const ModuleObject* entry : offered) {
        const QString type = entry->c(field::type)->getString();
        if (entry->c(field::rw)->getString() == access && (type == "bit"_l1 || type == "bool"_l1)) {
            offerRegister(ui_.registers, entry->c(field::name)->getString(), type,
                          entry->c(field::len)->getInt(1));
        }
    }
    if (!stored_.registerName.isEmpty() && ui_.registers->findText(stored_.registerName) < 0) {
        offerRegister(ui_.registers, stored_.registerName, stored_.registerType, 1);
    }
    // An operator who changes over to a register finds the first one chosen.
    const bool proposesFirst = stored_.isIo && stored_.registerName.isEmpty() && ui_.registers->count() > 1;
    ui_.registers->setCurrentIndex(
        proposesFirst && offersNone_ ? 1 : qMax(0, ui_.registers->findText(stored_.registerName)));
    fillBits();
    if (!stored_.registerName.isEmpty()) {
        if (stored_.bit >= ui_.bits->count()) {
            offerBit(ui_.bits, stored_.bit);
        }
        ui_.bits->setCurrentIndex(ui_.bits->findData(stored_.bit));
    }
}

void SignalSelector::fillBits() {
    ui_.bits->clear();
    const int length = ui_.registers->currentData(lengthRole).toInt();
    for (int bit = 0; bit < length; ++bit) {
        offerBit(ui_.bits, bit);
    }
}

void SignalSelector::refresh() {
    const bool isIo = ui_.io->isChecked();
    ui_.ioCaption->setVisible(isIo);
    ui_.ioNames->setVisible(isIo);
    ui_.registerCaption->setVisible(!isIo);
    ui_.registers->setVisible(!isIo);
    ui_.bits->setVisible(!isIo);
}

Signal SignalSelector::chosen() const {
    Signal signal;
    signal.isIo = ui_.io->isChecked();
    signal.ioName = ui_.ioNames->currentText();
    signal.registerName = ui_.registers->currentText();
    signal.registerType = ui_.registers->currentData(typeRole).toString();
    if (ui_.bits->currentIndex() >= 0) {
        signal.bit = ui_.bits->currentData().toInt();
    } else if (signal.registerName == stored_.registerName) {
        signal.bit = stored_.bit;
    }
    return signal;
}

}  // namespace lumo
