#pragma once

#include "bridge/linkreason.h"

#include <QObject>
#include <QString>
#include <QVector>

namespace bridge {

/// A register, or a single digital input or output, that a controller or a device offers.
struct SignalRow {
    enum class Kind { Input, Output, Register };

    Kind kind = Kind::Register;
    QString name;           ///< "DI3", "DO3"; of a register "LUMO_DO", "LUMO_AO_1"
    QString type;           ///< of a register: "bit", "bool", "int16" or "int"; empty for inputs and outputs
    bool writable = false;  ///< of a register
    int length = 1;         ///< elements of a register
};

/// The value of one element. Inputs, outputs and one-element registers have the element 0.
struct SignalWrite {
    SignalRow::Kind kind = SignalRow::Kind::Register;
    QString name;
    int bias = 0;   ///< element of a register
    int value = 0;  ///< 0 or 1 of a bit, input or output
};

/// Registers, inputs and outputs of a controller, or of an I/O device beside it. Called and answered on the
/// GUI thread; nothing waits. Signals may be emitted inside a call.
class SignalPort : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// What it offers, in the order in which a panel lists it. Constant.
    virtual QVector<SignalRow> rows() const = 0;
    /// Called once, by the adapter that has connected itself: from now on the port may tell. It begins with
    /// `linkChanged` (where there is no link, up at once) and `changed` of all inputs and outputs; outputs
    /// that nobody has ordered on are off.
    virtual void start() = 0;
    /// Writes in this order, all of one call together, behind those of earlier calls. Names, elements and
    /// values are right. Answered by one `written`, in the order of the calls. Not called while the link is
    /// down: a port writes nothing late, and after the link is back it first switches every output off.
    virtual void write(const QVector<SignalWrite>& writes, int ticket) = 0;

signals:
    /// Whether the writes were accepted; false also when the link was lost before the answer.
    void written(int ticket, bool accepted);
    /// An element has this value now.
    void changed(bridge::SignalRow::Kind kind, const QString& name, int bias, int value);
    /// False: the device cannot be reached, with the reason. Told anew when the reason changes.
    void linkChanged(bool up, const bridge::LinkReason& reason);
};

}  // namespace bridge
