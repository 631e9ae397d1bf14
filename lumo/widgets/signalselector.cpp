#include "widgets/signalselector.h"

#include "program/words.h"

#include <QComboBox>
#include <QLabel>
#include <QRadioButton>

using namespace prog;

namespace lumo {

namespace {

constexpr int lengthRole = Qt::UserRole;
constexpr int typeRole = Qt::UserRole + 1;
/// A stored bit beyond is no bit of any register, and is not offered.
constexpr int mostBits = 1024;

bool isOfBits(const ModuleObject* entry) {
    const QString type = entry->c(field::type)->getString();
    return type == QLatin1String("bit") || type == QLatin1String("bool");
}

void offer(QComboBox* registers, const QString& name, const QString& type, int length) {
    registers->addItem(name, length);
    registers->setItemData(registers->count() - 1, type, typeRole);
}

}  // namespace

SignalSelector::SignalSelector(StationSignal which, const SelectorWidgets& widgets, QObject* parent)
    : QObject(parent), which_(which), ui_(widgets) {
    connect(ui_.io, &QRadioButton::clicked, this, &SignalSelector::refresh);
    connect(ui_.reg, &QRadioButton::clicked, this, &SignalSelector::refresh);
    connect(ui_.registers, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &SignalSelector::fillBits);
}

void SignalSelector::fill(const SignalSource& stored) {
    (stored.isIo ? ui_.io : ui_.reg)->setChecked(true);
    fillNames(stored.ioName);
    fillRegisters(stored);
    refresh();
}

void SignalSelector::fillNames(const QString& stored) {
    ui_.ioNames->clear();
    ui_.ioNames->addItem(QString());
    const QLatin1String group = isInput(which_) ? word::portInput : word::portOutput;
    const QList<ModuleObject*> offered = kordservice()->get(this, key::deviceIo, group)->cmobjs();
    for (const ModuleObject* signal : offered) {
        ui_.ioNames->addItem(signal->name());
    }
    if (ui_.ioNames->findText(stored) < 0) {
        ui_.ioNames->addItem(stored);
    }
    ui_.ioNames->setCurrentIndex(ui_.ioNames->findText(stored));
}

void SignalSelector::fillRegisters(const SignalSource& stored) {
    ui_.registers->clear();
    offer(ui_.registers, QString(), QString(), 0);
    const QLatin1String access = isInput(which_) ? "rd"_l1 : "rdwr"_l1;
    const QList<ModuleObject*> offered = m(key::registerList)->cmobjs();
    for (const ModuleObject* entry : offered) {
        if (entry->c(field::rw)->getString() == access && isOfBits(entry)) {
            offer(ui_.registers, entry->c(field::name)->getString(), entry->c(field::type)->getString(),
                  entry->c(field::len)->getInt(1));
        }
    }
    if (ui_.registers->findText(stored.registerName) < 0) {
        offer(ui_.registers, stored.registerName, stored.registerType, 1);
    }
    // Who goes over from an input or output to a register finds the first one chosen.
    const bool proposesFirst = stored.isIo && stored.registerName.isEmpty() && ui_.registers->count() > 1;
    ui_.registers->setCurrentIndex(proposesFirst ? 1 : ui_.registers->findText(stored.registerName));
    fillBits();
    if (!stored.registerName.isEmpty()) {
        if (stored.bias < mostBits) {
            offerBits(stored.bias + 1);
        }
        ui_.bits->setCurrentIndex(stored.bias);
    }
}

void SignalSelector::offerBits(int count) {
    for (int bit = ui_.bits->count(); bit < count; ++bit) {
        ui_.bits->addItem(QString::number(bit + 1));
    }
}

void SignalSelector::fillBits() {
    ui_.bits->clear();
    offerBits(ui_.registers->currentData(lengthRole).toInt());
}

void SignalSelector::refresh() {
    const bool isIo = ui_.io->isChecked();
    ui_.ioCaption->setVisible(isIo);
    ui_.ioNames->setVisible(isIo);
    ui_.registerCaption->setVisible(!isIo);
    ui_.registers->setVisible(!isIo);
    ui_.bits->setVisible(!isIo);
}

SignalSource SignalSelector::chosen() const {
    SignalSource source;
    source.isIo = ui_.io->isChecked();
    source.ioName = ui_.ioNames->currentText();
    source.registerName = ui_.registers->currentText();
    source.registerType = ui_.registers->currentData(typeRole).toString();
    source.bias = ui_.bits->currentIndex();
    return source;
}

}  // namespace lumo
