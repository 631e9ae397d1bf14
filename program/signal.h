#pragma once

#include "program/record.h"
#include "program/words.h"

#include <QString>

namespace prog {

/// The fields of a record that hold one signal. `reg` has the children `name`, `type` and `bias`.
struct SignalFields {
    QLatin1String ioName;
    QLatin1String kind;
    QLatin1String reg;
};

/// The output of a "setDO" and the input of a "waitDI" statement.
constexpr SignalFields setOutput{field::doName, field::doType, field::doReg};
constexpr SignalFields awaitedInput{field::diName, field::diType, field::diReg};
/// The four signals of a station.
constexpr SignalFields startInput{"DI"_l1, "DI_type"_l1, "DI_reg"_l1};
constexpr SignalFields stopInput{"DI2"_l1, "DI2_type"_l1, "DI2_reg"_l1};
constexpr SignalFields startOutput{"DO"_l1, "DO_type"_l1, "DO_reg"_l1};
constexpr SignalFields stopOutput{"DO2"_l1, "DO2_type"_l1, "DO2_reg"_l1};

/// A digital input or output of the controller, or one bit of a register. A record keeps both; its kind says
/// which of them counts: "IO" the input or output, any other word the register.
struct Signal {
    bool isIo = true;
    QString ioName;
    QString registerName;
    QString registerType;  ///< "bit" or "bool"
    int bit = 0;           ///< from 0; negative: none

    /// Missing fields read as empty texts and bit 0.
    [[nodiscard]] static Signal from(const Record& record, const SignalFields& fields);
    /// Stores it in a record. `registerKind` is the kind of a signal that is not "IO"; `withRegister`: writes
    /// the register's fields too.
    void store(QObject* sender, mendo::ModuleObject* record, const SignalFields& fields,
               const QString& registerKind, bool withRegister) const;

    /// Name of what counts; empty when nothing is connected.
    [[nodiscard]] QString name() const { return isIo ? ioName : registerName; }
    /// As the controller names it: "DI3", or "R1.#2" for the third bit of a register.
    [[nodiscard]] QString address() const;
    /// As it is shown: "DI3", or "R1[3]" for the third bit of a register.
    [[nodiscard]] QString text() const;
    /// Whether both are the same input or output, or the same bit.
    [[nodiscard]] bool isSameAs(const Signal& other) const {
        return isIo == other.isIo && name() == other.name() && (isIo || bit == other.bit);
    }
};

}  // namespace prog
