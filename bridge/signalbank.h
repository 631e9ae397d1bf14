#pragma once

#include "bridge/registerwrite.h"
#include "bridge/signalport.h"

#include <QHash>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <vector>

class KordService;

namespace bridge {

/// The registers, inputs and outputs of a controller and of the device beside it, and the data nodes that
/// show them.
///
/// An element is a digital input or output ("DI3", "DO3"), one bit of a digital register ("LUMO_DO.#3")
/// or an integer register ("LUMO_AO_1"; with several elements "PART_COUNT.#1"). Read-only registers
/// are inputs, writable ones outputs.
///
/// A node shows an output as ordered last, at once: a package that has switched something on must see it on,
/// or it would not switch it off. What the device refuses falls back to what it had accepted before.
class SignalBank : public QObject {
    Q_OBJECT
public:
    /// Called once with whether all writes were accepted.
    using Answer = std::function<void(bool accepted)>;

    /// Fills "device.io", "register.values" and "rova.robot.register._list". `device` may be null; names that
    /// it offers are its own.
    SignalBank(KordService* service, SignalPort* controller, SignalPort* device, QObject* parent);

    bool input(const QString& name) const;
    /// A bool or an int; invalid for an unknown name.
    QVariant output(const QString& name) const;
    /// Names of the digital inputs, and of all outputs.
    QStringList inputNames() const;
    QStringList outputNames() const;
    /// No write waits for an answer.
    bool idle() const { return tickets_.isEmpty(); }

    /// Writes elements of registers, in this order and together. `type` is empty or as digital ("bit",
    /// "bool") or integer as the register. Emits `rejected` for each that is wrong and writes the others.
    void writeRegisters(const std::vector<RegisterWrite>& records, const Answer& answer);
    /// Writes a digital device output; or emits `rejected`.
    void writeOutput(const QString& name, const QVariant& value, const Answer& answer);
    /// Without a link (`reason` says why) every write to the port is rejected, and those under way count as
    /// refused.
    void setLinked(SignalPort* port, bool linked, const QString& reason);

signals:
    void outputChanged(const QString& name, const QVariant& value);
    void inputChanged(const QString& name, bool value);
    void rejected(const QString& name, const QString& reason);
    /// The last write that waited was answered, not inside the call.
    void answered();

private:
    struct Port {
        SignalPort* port = nullptr;
        bool linked = false;
        QString reason;  ///< why not
    };
    struct Element {
        QString name;
        QString node;  ///< path of its data node
        bool digital = true;
        bool writable = false;
        SignalWrite address;
        size_t port = 0;
        QVariant value;       ///< shown
        QVariant accepted{};  ///< the last value that the port has confirmed
        int pending = 0;      ///< writes without an answer
    };
    struct Register {
        QString type;
        size_t first = 0;  ///< index of its first element; the others follow
        int length = 1;
        bool writable = false;
    };
    /// The writes of one call.
    struct Request {
        int open = 0;  ///< ports that have not answered
        bool accepted = true;
        Answer answer;
    };
    struct Ticket {
        size_t port = 0;
        int request = 0;
        std::vector<std::pair<size_t, QVariant>> values;  ///< of elements, by index
    };
    using Batch = std::vector<std::pair<size_t, QVariant>>;

    void addPort(SignalPort* port, const QStringList& names);
    void add(const Element& element);
    void addDevice(size_t port, const SignalRow& row);
    void addRegister(size_t port, const SignalRow& row);
    void show(const Element& element);
    void change(Element& element, const QVariant& value);
    const Element* find(const QString& name) const;
    bool order(const RegisterWrite& record, Batch* batch);
    bool order(size_t element, const QVariant& value, Batch* batch);
    void send(const Batch& batch, bool accepted, const Answer& answer);
    void onWritten(size_t port, int ticket, bool accepted);
    void settle(const Ticket& ticket, bool accepted);
    void onChanged(size_t port, SignalRow::Kind kind, const QString& name, int bias, int value);

    KordService* service_;
    std::vector<Port> ports_;
    std::vector<Element> elements_;
    QHash<QString, size_t> byName_;
    QHash<QString, Register> registers_;
    QHash<int, Ticket> tickets_;
    QHash<int, Request> requests_;
    int lastTicket_ = 0, lastRequest_ = 0;
    int sending_ = 0;  ///< calls under way
};

}  // namespace bridge
