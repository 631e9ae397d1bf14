#include "bridge/modbus/devicewatch.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdio>

namespace bridge {

namespace {

constexpr int usualTimes = 1000;
constexpr double nsPerMs = 1e6;

void print(const QElapsedTimer& clock, const QString& text) {
    std::printf("%9.3f %s\n", double(clock.nsecsElapsed()) / nsPerMs / 1e3, qPrintable(text));
    std::fflush(stdout);
}

}  // namespace

std::optional<DeviceTask> DeviceTask::from(const QStringList& arguments, QString* problem) {
    if (arguments.isEmpty()) {
        return DeviceTask{};
    }
    const bool isSet = arguments[0] == QLatin1String("set") && arguments.size() == 3;
    const bool isTime =
        arguments[0] == QLatin1String("time") && (arguments.size() == 2 || arguments.size() == 3);
    if (!isSet && !isTime) {
        return std::nullopt;
    }
    DeviceTask task{arguments[1], std::nullopt, usualTimes};
    if (arguments.size() == 3) {
        bool isNumber = false;
        const int number = arguments[2].toInt(&isNumber);
        if (!isNumber || (isTime && number < 1)) {
            *problem = QStringLiteral("\"%1\" is no number").arg(arguments[2]);
            return std::nullopt;
        }
        task.times = isTime ? number : 0;
        task.value = isSet ? std::optional<int>(number) : std::nullopt;
    }
    return task;
}

DeviceWatch::DeviceWatch(const ModbusMap& map, const DeviceTask& task) : map_(map), task_(task), port_(map_) {
    clock_.start();
    connect(&port_, &ModbusPort::linkChanged, this, &DeviceWatch::onLink);
    connect(&port_, &ModbusPort::written, this, &DeviceWatch::onWritten);
    connect(&port_, &ModbusPort::told, this, [this](const QString& text) { print(clock_, text); });
    connect(&port_, &ModbusPort::changed, this,
            [this](SignalRow::Kind kind, const QString& name, int bias, int value) {
                const auto found = std::find_if(
                    map_.elements.begin(), map_.elements.end(), [&](const ModbusElement& element) {
                        return element.kind == kind && element.name == name && element.bias == bias;
                    });
                print(clock_, QStringLiteral("%1 %2").arg(found->label()).arg(value));
            });
}

bool DeviceWatch::start(QString* problem) {
    if (!task_.output.isEmpty()) {
        const auto found =
            std::find_if(map_.elements.begin(), map_.elements.end(), [this](const ModbusElement& element) {
                return element.isOutput && element.label() == task_.output;
            });
        if (found == map_.elements.end()) {
            *problem = QStringLiteral("the map has no output \"%1\"").arg(task_.output);
            return false;
        }
        write_ = {found->kind, found->name, found->bias, task_.value.value_or(0)};
        if (!found->toDevice(write_.value)) {
            *problem = QStringLiteral("%1 is no value for %2").arg(write_.value).arg(task_.output);
            return false;
        }
    }
    port_.start();
    return true;
}

void DeviceWatch::onLink(bool isUp, const LinkReason& reason) {
    print(clock_, isUp ? QStringLiteral("link up") : QStringLiteral("link down: ") + reason.text());
    if (isUp && !task_.output.isEmpty()) {
        QMetaObject::invokeMethod(this, &DeviceWatch::writeOnce, Qt::QueuedConnection);  // behind the values
    } else if (!isUp && task_.times > 0) {
        QCoreApplication::exit(1);
    }
}

void DeviceWatch::writeOnce() {
    since_.start();
    port_.write({write_}, 0);
}

void DeviceWatch::onWritten(int, bool isAccepted) {
    if (!isAccepted) {
        print(clock_, QStringLiteral("not written: %1").arg(task_.output));
        QCoreApplication::exit(1);
        return;
    }
    if (task_.times == 0) {
        return;
    }
    timesMs_.push_back(double(since_.nsecsElapsed()) / nsPerMs);
    if (int(timesMs_.size()) < task_.times) {
        QMetaObject::invokeMethod(this, &DeviceWatch::writeOnce, Qt::QueuedConnection);
        return;
    }
    printTimes();
    QCoreApplication::quit();
}

void DeviceWatch::printTimes() {
    std::sort(timesMs_.begin(), timesMs_.end());
    const auto share = [this](int percent) {
        return timesMs_[(timesMs_.size() - 1) * std::size_t(percent) / 100];
    };
    print(clock_, QStringLiteral("%1 writes of %2, ms from order to answer: p50 %3, p99 %4, worst %5")
                      .arg(timesMs_.size())
                      .arg(task_.output)
                      .arg(share(50), 0, 'f', 2)
                      .arg(share(99), 0, 'f', 2)
                      .arg(timesMs_.back(), 0, 'f', 2));
}

}  // namespace bridge
