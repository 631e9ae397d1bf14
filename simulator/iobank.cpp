#include "simulator/iobank.h"
#include "simulator/words.h"

#include "kord/kordservice.h"
#include "mendo/modulemanager.h"

#include <cmath>

namespace sim {

namespace {

constexpr int deviceSignals = 16;

struct Row {
    const char* name;
    const char* type;
    bool writable;
    int length;
};

// The registers of the welding equipment, then of other machines in the cell.
constexpr Row registerRows[] = {
    {"LUMO_DI", "bit", false, 16},   {"LUMO_DO", "bit", true, 16},     {"LUMO_AO_0", "int16", true, 1},
    {"LUMO_AO_1", "int16", true, 1}, {"LUMO_AO_2", "int16", true, 1},  {"LUMO_AO_3", "int16", true, 1},
    {"LUMO_AO_4", "int16", true, 1}, {"LUMO_AO_5", "int16", true, 1},  {"LUMO_AO_6", "int16", true, 1},
    {"LUMO_AO_7", "int16", true, 1}, {"FIXTURE_DI", "bit", false, 8},  {"FIXTURE_DO", "bit", true, 8},
    {"PLC_READY", "bool", false, 1}, {"PLC_REQUEST", "bool", true, 1}, {"TABLE_DI", "bool", false, 4},
    {"TABLE_DO", "bool", true, 4},   {"PART_NUMBER", "int", false, 1}, {"PART_COUNT", "int", true, 2},
};

bool isDigital(const QString& type) {
    return type == QLatin1String("bit") || type == QLatin1String("bool");
}

/// The value converted to an element of the type; invalid when it does not fit.
QVariant fitted(const QString& type, const QVariant& value) {
    if (isDigital(type)) {
        return value.canConvert<bool>() ? QVariant(value.toBool()) : QVariant();
    }
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    const double limit = type == QLatin1String("int16") ? 32768.0 : 2147483648.0;
    if (!isNumber || !(number >= -limit && number < limit)) {
        return {};
    }
    return int(std::lround(number));
}

}  // namespace

IoBank::IoBank(KordService* service, QObject* parent) : QObject(parent), service_(service) {
    for (const QString& group : {QStringLiteral("DI"), QStringLiteral("DO")}) {
        for (int i = 1; i <= deviceSignals; ++i) {
            const QString name = group + QString::number(i);
            const QString node = QStringLiteral("%1.%2.%3").arg(word::deviceIo, group, name);
            add({name, node, true, group == QLatin1String("DO"), false});
        }
    }
    m(word::registerList)->clear(this, true, false);
    for (const Row& row : registerRows) {
        addRegister(QLatin1String(row.name), QLatin1String(row.type), row.writable, row.length);
    }
}

void IoBank::add(const Element& element) {
    byName_.insert(element.name, elements_.size());
    elements_.push_back(element);
    show(element);
}

/// Writes the data node. The first two sections of its path exist from the start, the others are made
/// here.
void IoBank::show(const Element& element) {
    service_->dataNode(element.node.section(QLatin1Char('.'), 0, 1))
        ->set(this, element.node.section(QLatin1Char('.'), 2), element.value, true);
}

void IoBank::addRegister(const QString& name, const QString& type, bool writable, int length) {
    registers_.insert(name, {type, elements_.size(), length, writable});
    const bool plain = !isDigital(type) && length == 1;
    for (int i = 0; i < length; ++i) {
        const QString element = QStringLiteral("%1.#%2").arg(name).arg(i);
        const QVariant zero = isDigital(type) ? QVariant(false) : QVariant(0);
        add({plain ? name : element, word::registerValues + QLatin1Char('.') + element, isDigital(type),
             writable, zero});
    }
    auto* row = m(word::registerList)->append(this);
    row->set(this, QStringLiteral("name"), name)
        ->set(this, QStringLiteral("type"), type)
        ->set(this, QStringLiteral("rw"), writable ? QStringLiteral("rdwr") : QStringLiteral("rd"))
        ->set(this, QStringLiteral("len"), length);
}

const IoBank::Element* IoBank::find(const QString& name) const {
    const auto found = byName_.constFind(name);
    return found == byName_.constEnd() ? nullptr : &elements_[*found];
}

bool IoBank::setInput(const QString& name, bool value) {
    const auto found = byName_.constFind(name);
    if (found == byName_.constEnd() || elements_[*found].writable || !elements_[*found].digital) {
        return false;
    }
    change(elements_[*found], value);
    return true;
}

bool IoBank::input(const QString& name) const {
    const Element* element = find(name);
    return element && !element->writable && element->value.toBool();
}

QVariant IoBank::output(const QString& name) const {
    const Element* element = find(name);
    return element && element->writable ? element->value : QVariant();
}

QStringList IoBank::inputNames() const {
    QStringList names;
    for (const Element& element : elements_) {
        if (!element.writable && element.digital) {
            names << element.name;
        }
    }
    return names;
}

QStringList IoBank::outputNames() const {
    QStringList names;
    for (const Element& element : elements_) {
        if (element.writable) {
            names << element.name;
        }
    }
    return names;
}

bool IoBank::writeRegister(const QString& name, const QString& type, const QVariant& value, int bias) {
    const auto refuse = [&](const QString& reason) {
        emit rejected(name, reason);
        return false;
    };
    const auto found = registers_.constFind(name);
    if (found == registers_.constEnd()) {
        return refuse(QStringLiteral("no such register"));
    }
    if (!found->writable) {
        return refuse(QStringLiteral("read-only register"));
    }
    if (bias < 0 || bias >= found->length) {
        return refuse(QStringLiteral("no element %1, length is %2").arg(bias).arg(found->length));
    }
    if (!type.isEmpty() && isDigital(type) != isDigital(found->type)) {
        return refuse(QStringLiteral("type %1 does not fit a register of type %2").arg(type, found->type));
    }
    const QVariant fit = fitted(found->type, value);
    if (!fit.isValid()) {
        return refuse(QStringLiteral("value does not fit type %1").arg(found->type));
    }
    change(elements_[found->first + size_t(bias)], fit);
    return true;
}

bool IoBank::writeOutput(const QString& name, const QVariant& value) {
    const auto found = byName_.constFind(name);
    const bool known = found != byName_.constEnd() && elements_[*found].writable &&
                       elements_[*found].node.startsWith(word::deviceIo);
    if (!known || !value.canConvert<bool>()) {
        emit rejected(name,
                      known ? QStringLiteral("value is no switch state") : QStringLiteral("no such output"));
        return false;
    }
    change(elements_[*found], value.toBool());
    return true;
}

/// Stores a new value, writes its node, then emits the signal.
void IoBank::change(Element& element, const QVariant& value) {
    if (element.value == value) {
        return;
    }
    element.value = value;
    show(element);
    if (element.writable) {
        emit outputChanged(element.name, value);
    } else {
        emit inputChanged(element.name, value.toBool());
    }
}

}  // namespace sim
