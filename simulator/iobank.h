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
/// An element is a digital input or output ("DI3", "DO3"), an element of a digital register
/// ("LUMO_DO.#3") or an integer register ("LUMO_AO_1"; "PART_COUNT.#1" where it has several
/// elements). Read-only registers are inputs, the others outputs.
class IoBank : public QObject {
    Q_OBJECT
public:
    /// Fills "device.io", "register.values" and "rova.robot.register._list".
    IoBank(KordService* service, QObject* parent);

    /// False for a name that is no digital input.
    bool setInput(const QString& name, bool value);
    bool input(const QString& name) const;
    /// A bool or an int; invalid for an unknown name.
    QVariant output(const QString& name) const;
    /// Digital inputs, and all outputs, in their order.
    QStringList inputNames() const;
    QStringList outputNames() const;

    /// Writes one element of a register; `type` may be empty, else it has to be digital ("bit",
    /// "bool") or integer as the register is. False after `rejected`.
    bool writeRegister(const QString& name, const QString& type, const QVariant& value, int bias);
    /// Writes a digital output.
    bool writeOutput(const QString& name, const QVariant& value);

signals:
    void outputChanged(const QString& name, const QVariant& value);
    void inputChanged(const QString& name, bool value);
    void rejected(const QString& name, const QString& reason);

private:
    struct Element {
        QString name;  ///< as it is announced
        QString node;  ///< data node
        bool digital = true;
        bool writable = false;
        QVariant value;
    };
    struct Register {
        QString type;
        size_t first = 0;  ///< its elements follow each other
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
