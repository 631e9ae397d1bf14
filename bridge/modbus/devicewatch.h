#pragma once

#include "bridge/modbus/modbusport.h"

#include <QElapsedTimer>
#include <QObject>
#include <QStringList>

#include <optional>
#include <vector>

namespace bridge {

/// What `lumo-modbus` is to do besides showing values.
struct DeviceTask {
    QString output;            ///< "LUMO_DO.#3"; empty: nothing
    std::optional<int> value;  ///< to be written once
    int times = 0;             ///< how often 0 is written, to take the time

    /// Of the arguments behind the map; nothing, with words in `problem` if there are any, for wrong ones.
    [[nodiscard]] static std::optional<DeviceTask> from(const QStringList& arguments, QString* problem);
};

/// Prints on standard output what a device tells, a line each, and does a task. Ends the application when
/// times were taken, or when the task cannot be done.
class DeviceWatch : public QObject {
    Q_OBJECT
public:
    DeviceWatch(const ModbusMap& map, const DeviceTask& task);

    /// False, with words in `problem`, where the map has no such output, or the value does not fit.
    [[nodiscard]] bool start(QString* problem);

private:
    void onLink(bool isUp, const LinkReason& reason);
    void onWritten(int ticket, bool isAccepted);
    void writeOnce();
    void printTimes();

    const ModbusMap map_;
    const DeviceTask task_;
    ModbusPort port_;
    SignalWrite write_;
    QElapsedTimer clock_, since_;
    std::vector<double> timesMs_;
};

}  // namespace bridge
