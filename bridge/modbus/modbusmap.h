#pragma once

#include "bridge/signalport.h"
#include "json/jsontext.h"

#include <QModbusDataUnit>
#include <QString>
#include <QVector>

#include <optional>
#include <vector>

namespace bridge {

/// A bit or a number of the package, and where it lies in the device.
struct ModbusElement {
    SignalRow::Kind kind = SignalRow::Kind::Register;
    QString name;  ///< of its register, input or output
    int bias = 0;  ///< element of a register
    bool isOutput = false;
    bool isBit = true;         ///< else an int16
    bool isInRegister = true;  ///< of a register of several elements, or of bits: labelled with its element

    QModbusDataUnit::RegisterType table = QModbusDataUnit::Coils;
    int address = 0;   ///< from 0, as in the telegram
    int bit = -1;      ///< of the device's register, from 0 for the lowest; -1 for all else
    double scale = 1;  ///< the device's number is the package's times this, rounded
    int pollMs = 0;    ///< of an input

    /// "LUMO_DO.#3", "LUMO_AO_1", "DO3".
    QString label() const;
    /// What the device gets for a value of the package: 0 or 1, or an int16 as its 16 bits. Nothing for a
    /// value that does not fit.
    std::optional<quint16> toDevice(int value) const;
    /// The package's value of a word that was read.
    int fromDevice(quint16 word) const;
};

/// Which registers, inputs and outputs of the package lie where in a Modbus TCP device, from a file;
/// docs/controllers.md explains it.
struct ModbusMap {
    struct Heartbeat {
        int address = 0;  ///< a holding register
        int periodMs = 0;
        int watchdogMs = 0;  ///< after which the device switches off; 0: unknown
    };

    QString host;
    int port = 502;
    int unit = 1;
    int timeoutMs = 100;   ///< for an answer; then the connection is given up
    int connectMs = 1000;  ///< for a connection
    int lateMs = 500;      ///< for a write to wait its turn; then the connection is given up
    std::optional<Heartbeat> heartbeat;
    QVector<SignalRow> rows;  ///< in the file's order
    std::vector<ModbusElement> elements;

    /// "192.168.0.20:502".
    QString place() const;

    /// Nothing, with place and reason in `problem`, for a file that cannot be read or describes no device.
    [[nodiscard]] static std::optional<ModbusMap> read(const QString& file, mendo::FileProblem* problem);
    /// "FILE:LINE:COLUMN: what is wrong".
    [[nodiscard]] static QString shown(const mendo::FileProblem& problem);
    [[nodiscard]] static std::optional<ModbusMap> from(const mendo::JsonText& text,
                                                       mendo::FileProblem* problem);
};

}  // namespace bridge
