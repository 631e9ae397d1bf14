#pragma once

#include <QHash>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <vector>

class KordService;

namespace sim {

/// The controller's inputs, outputs and registers, and the data nodes that show them.
///
/// An element is a digital input or output ("DI3", "DO3"), one bit of a digital register ("LUMO_DO.#3")
/// or an integer register ("LUMO_AO_1"; with several elements "PART_COUNT.#1"). Read-only registers
/// are inputs, writable ones outputs.
class IoBank : public QObject {
    Q_OBJECT
public:
    /// Fills "device.io", "register.values" and "rova.robot.register._list".
    IoBank(KordService* service, QObject* parent);

    /// False when `name` is not a digital input.
    bool setInput(const QString& name, bool value);
    bool input(const QString& name) const;
    /// A bool or an int; invalid for an unknown name.
    QVariant output(const QString& name) const;
    /// Names of the digital inputs, and of all outputs; device signals first.
    QStringList inputNames() const;
    QStringList outputNames() const;

    /// Writes element `bias` of a register. `type` is empty or as digital ("bit", "bool") or integer as
    /// the register. Otherwise emits `rejected` and returns false.
    bool writeRegister(const QString& name, const QString& type, const QVariant& value, int bias);
    /// Writes a digital device output; else emits `rejected` and returns false.
    bool writeOutput(const QString& name, const QVariant& value);

signals:
    void outputChanged(const QString& name, const QVariant& value);
    void inputChanged(const QString& name, bool value);
    void rejected(const QString& name, const QString& reason);

private:
    struct Element {
        QString name;
        QString node;  ///< path of its data node
        bool digital = true;
        bool writable = false;
        QVariant value;
    };
    struct Register {
        QString type;
        size_t first = 0;  ///< index of its first element; the others follow
        int length = 1;
        bool writable = false;
    };
    void add(const Element& element);
    void addRegister(const QString& name, const QString& type, bool writable, int length);
    void show(const Element& element);
    void change(Element& element, const QVariant& value);
    const Element* find(const QString& name) const;

    KordService* service_;
    std::vector<Element> elements_;
    QHash<QString, size_t> byName_;
    QHash<QString, Register> registers_;
};

}  // namespace sim
