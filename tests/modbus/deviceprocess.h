#pragma once

#include <QProcess>
#include <QStringList>

namespace test {

/// A Modbus TCP device that is not ours, in a process of its own on a free port. It ends with the test.
class DeviceProcess : public QProcess {
    Q_OBJECT
public:
    enum class Kind { Pymodbus, Libmodbus };
    Q_ENUM(Kind)

    /// Starts it. With `watchdogMs` (of libmodbus) it switches off when its heartbeat is missing for so long.
    explicit DeviceProcess(Kind kind, int watchdogMs = 0);
    ~DeviceProcess() override;

    int port() const { return port_; }
    /// The writes that the process carried out, as device.py prints them.
    QStringList log();
    /// Whether all outputs were off after these writes.
    bool isOff();

    void hang() const;
    void goOn() const;
    /// Ends at once, as by a loss of its supply.
    void crash();
    /// The same again, on the same port, with an empty log.
    void restart();

protected:
    void setupChildProcess() override;

private:
    Kind kind_;
    int port_ = 0;
    QStringList arguments_;
    QByteArray printed_;
};

}  // namespace test
