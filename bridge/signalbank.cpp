#include "bridge/signalbank.h"

#include "bridge/words.h"
#include "kord/kordservice.h"
#include "mendo/modulemanager.h"

#include <algorithm>
#include <cmath>

namespace bridge {

namespace {

bool isDigital(const QString& type) {
    return type.isEmpty() || type == QLatin1String("bit") || type == QLatin1String("bool");
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

QStringList namesOf(const SignalPort* port) {
    QStringList names;
    if (port) {
        const QVector<SignalRow> rows = port->rows();
        for (const SignalRow& row : rows) {
            names << row.name;
        }
    }
    return names;
}

/// As elements are named; of an input or output its own name.
QString elementName(SignalRow::Kind kind, const QString& name, int bias) {
    return kind == SignalRow::Kind::Register ? QStringLiteral("%1.#%2").arg(name).arg(bias) : name;
}

}  // namespace

SignalBank::SignalBank(KordService* service, SignalPort* controller, SignalPort* device, QObject* parent)
    : QObject(parent), service_(service) {
    m(word::registerList)->clear(this, true, false);
    addPort(controller, namesOf(device));
    if (device) {
        addPort(device, {});
    }
}

// --- What there is -------------------------------------------------------------------------------

void SignalBank::addPort(SignalPort* port, const QStringList& names) {
    const size_t index = ports_.size();
    ports_.push_back({port, false, {}});
    const QVector<SignalRow> rows = port->rows();
    for (const SignalRow& row : rows) {
        if (names.contains(row.name)) {
            continue;
        }
        if (row.kind == SignalRow::Kind::Register) {
            addRegister(index, row);
        } else {
            addDevice(index, row);
        }
    }
    connect(port, &SignalPort::written, this,
            [this, index](int ticket, bool accepted) { onWritten(index, ticket, accepted); });
    connect(port, &SignalPort::changed, this,
            [this, index](SignalRow::Kind kind, const QString& name, int bias, int value) {
                onChanged(index, kind, name, bias, value);
            });
}

void SignalBank::addDevice(size_t port, const SignalRow& row) {
    const bool writable = row.kind == SignalRow::Kind::Output;
    const QString group = writable ? QStringLiteral("DO") : QStringLiteral("DI");
    add({row.name,
         QStringLiteral("%1.%2.%3").arg(word::deviceIo, group, row.name),
         true,
         writable,
         {row.kind, row.name, 0, 0},
         port,
         false});
}

void SignalBank::addRegister(size_t port, const SignalRow& row) {
    registers_.insert(row.name, {row.type, elements_.size(), row.length, row.writable});
    const bool digital = isDigital(row.type);
    const bool plain = !digital && row.length == 1;
    for (int i = 0; i < row.length; ++i) {
        const QString element = elementName(row.kind, row.name, i);
        const QVariant zero = digital ? QVariant(false) : QVariant(0);
        add({plain ? row.name : element,
             word::registerValues + QLatin1Char('.') + element,
             digital,
             row.writable,
             {row.kind, row.name, i, 0},
             port,
             zero,
             zero});
    }
    auto* entry = m(word::registerList)->append(this);
    entry->set(this, QStringLiteral("name"), row.name)
        ->set(this, QStringLiteral("type"), row.type)
        ->set(this, QStringLiteral("rw"), row.writable ? QStringLiteral("rdwr") : QStringLiteral("rd"))
        ->set(this, QStringLiteral("len"), row.length);
}

void SignalBank::add(const Element& element) {
    byName_.insert(element.name, elements_.size());
    elements_.push_back(element);
    elements_.back().accepted = element.value;
    show(element);
}

/// Writes the data node. The first two sections of its path exist from the start, the others are made
/// here.
void SignalBank::show(const Element& element) {
    service_->dataNode(element.node.section(QLatin1Char('.'), 0, 1))
        ->set(this, element.node.section(QLatin1Char('.'), 2), element.value, true);
}

const SignalBank::Element* SignalBank::find(const QString& name) const {
    const auto found = byName_.constFind(name);
    return found == byName_.constEnd() ? nullptr : &elements_[*found];
}

bool SignalBank::input(const QString& name) const {
    const Element* element = find(name);
    return element && !element->writable && element->value.toBool();
}

QVariant SignalBank::output(const QString& name) const {
    const Element* element = find(name);
    return element && element->writable ? element->value : QVariant();
}

QStringList SignalBank::inputNames() const {
    QStringList names;
    for (const Element& element : elements_) {
        if (!element.writable && element.digital) {
            names << element.name;
        }
    }
    return names;
}

QStringList SignalBank::outputNames() const {
    QStringList names;
    for (const Element& element : elements_) {
        if (element.writable) {
            names << element.name;
        }
    }
    return names;
}

/// Stores a new value, writes its node, then emits the signal.
void SignalBank::change(Element& element, const QVariant& value) {
    if (element.value == value) {
        return;
    }
    element.value = value;
    show(element);
    if (element.writable) {
        emit outputChanged(element.name, value);
    } else if (element.digital) {
        emit inputChanged(element.name, value.toBool());
    }
}

// --- Writes --------------------------------------------------------------------------------------

void SignalBank::writeRegisters(const std::vector<RegisterWrite>& records, const Answer& answer) {
    Batch batch;
    bool accepted = true;
    for (const RegisterWrite& record : records) {
        accepted = order(record, &batch) && accepted;
    }
    send(batch, accepted, answer);
}

void SignalBank::writeOutput(const QString& name, const QVariant& value, const Answer& answer) {
    const auto found = byName_.constFind(name);
    const bool known = found != byName_.constEnd() && elements_[*found].writable &&
                       elements_[*found].node.startsWith(word::deviceIo);
    Batch batch;
    bool accepted = false;
    if (!known || !value.canConvert<bool>()) {
        emit rejected(name,
                      known ? QStringLiteral("value is no switch state") : QStringLiteral("no such output"));
    } else {
        accepted = order(*found, value.toBool(), &batch);
    }
    send(batch, accepted, answer);
}

/// Checks a write and shows its value.
bool SignalBank::order(const RegisterWrite& record, Batch* batch) {
    const auto refuse = [&](const QString& reason) {
        emit rejected(record.name, reason);
        return false;
    };
    const auto found = registers_.constFind(record.name);
    if (found == registers_.constEnd()) {
        return refuse(QStringLiteral("no such register"));
    }
    if (!found->writable) {
        return refuse(QStringLiteral("read-only register"));
    }
    if (record.bias < 0 || record.bias >= found->length) {
        return refuse(QStringLiteral("no element %1, length is %2").arg(record.bias).arg(found->length));
    }
    if (!record.type.isEmpty() && isDigital(record.type) != isDigital(found->type)) {
        return refuse(
            QStringLiteral("type %1 does not fit a register of type %2").arg(record.type, found->type));
    }
    const QVariant fit = fitted(found->type, record.value);
    if (!fit.isValid()) {
        return refuse(QStringLiteral("value does not fit type %1").arg(found->type));
    }
    return order(found->first + size_t(record.bias), fit, batch);
}

bool SignalBank::order(size_t element, const QVariant& value, Batch* batch) {
    const Port& port = ports_[elements_[element].port];
    if (!port.linked) {
        emit rejected(elements_[element].name, QStringLiteral("no connection: %1").arg(port.reason));
        return false;
    }
    ++elements_[element].pending;
    batch->push_back({element, value});
    change(elements_[element], value);
    return true;
}

/// Gives each port its writes. Ports may answer inside the call.
void SignalBank::send(const Batch& batch, bool accepted, const Answer& answer) {
    const int request = ++lastRequest_;
    ++sending_;
    requests_.insert(request, {1, accepted, answer});
    for (size_t port = 0; port < ports_.size(); ++port) {
        Ticket ticket{port, request, {}};
        QVector<SignalWrite> writes;
        for (const auto& [element, value] : batch) {
            if (elements_[element].port == port) {
                ticket.values.push_back({element, value});
                writes.append(elements_[element].address);
                writes.last().value = value.toInt();
            }
        }
        if (!writes.isEmpty()) {
            const int number = ++lastTicket_;
            tickets_.insert(number, ticket);
            ++requests_[request].open;
            ports_[port].port->write(writes, number);
        }
    }
    --sending_;
    settle({0, request, {}}, true);
}

void SignalBank::onWritten(size_t port, int ticket, bool accepted) {
    const auto found = tickets_.constFind(ticket);
    if (found == tickets_.constEnd() || found->port != port) {
        return;  // given up with the link
    }
    const Ticket written = *found;
    tickets_.erase(found);
    settle(written, accepted);
    if (tickets_.isEmpty() && sending_ == 0) {
        emit answered();
    }
}

/// Takes over what a port has accepted, or falls back; answers the request behind its last port.
void SignalBank::settle(const Ticket& ticket, bool accepted) {
    for (const auto& [index, value] : ticket.values) {
        Element& element = elements_[index];
        --element.pending;
        if (accepted) {
            element.accepted = value;
        } else {
            emit rejected(element.name, QStringLiteral("the device did not accept the write"));
            if (element.pending == 0) {
                change(element, element.accepted);
            }
        }
    }
    Request& request = requests_[ticket.request];
    request.accepted = request.accepted && accepted;
    if (--request.open == 0) {
        const Request done = requests_.take(ticket.request);
        done.answer(done.accepted);
    }
}

void SignalBank::setLinked(SignalPort* port, bool linked, const QString& reason) {
    for (size_t index = 0; index < ports_.size(); ++index) {
        if (ports_[index].port != port) {
            continue;
        }
        ports_[index].linked = linked;
        ports_[index].reason = reason;
        QList<int> lost = tickets_.keys();
        std::sort(lost.begin(), lost.end());
        for (const int ticket : linked ? QList<int>() : lost) {
            onWritten(index, ticket, false);
        }
    }
}

void SignalBank::onChanged(size_t port, SignalRow::Kind kind, const QString& name, int bias, int value) {
    auto found = byName_.constFind(elementName(kind, name, bias));
    if (found == byName_.constEnd() && bias == 0) {
        found = byName_.constFind(name);
    }
    if (found == byName_.constEnd() || elements_[*found].port != port) {
        return;  // the device's own
    }
    Element& element = elements_[*found];
    element.accepted = element.digital ? QVariant(value != 0) : QVariant(value);
    if (element.pending == 0) {
        change(element, element.accepted);
    }
}

}  // namespace bridge
