#include "modbus/deviceprocess.h"

#include <QMap>
#include <QTcpServer>

#include <csignal>

#include <sys/prctl.h>

namespace test {

DeviceProcess::DeviceProcess(Kind kind, int watchdogMs) : kind_(kind) {
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    port_ = probe.serverPort();
    probe.close();
    setProcessChannelMode(QProcess::ForwardedErrorChannel);
    arguments_ = QStringList{QString::number(port_)};
    if (watchdogMs > 0) {
        arguments_ << QString::number(watchdogMs);
    }
    restart();
}

DeviceProcess::~DeviceProcess() {
    crash();
}

QStringList DeviceProcess::log() {
    printed_ += readAllStandardOutput();
    return QString::fromUtf8(printed_).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

bool DeviceProcess::isOff() {
    QMap<QString, int> values;
    for (const QString& line : log()) {
        const QStringList words = line.split(QLatin1Char(' '));
        for (int i = 2; i < words.size(); ++i) {
            values[words[0] + QString::number(words[1].toInt() + i - 2)] = words[i].toInt();
        }
    }
    return !values.isEmpty() && values.values().count(0) == values.size();
}

void DeviceProcess::hang() const {
    ::kill(pid_t(processId()), SIGSTOP);
}

void DeviceProcess::goOn() const {
    ::kill(pid_t(processId()), SIGCONT);
}

void DeviceProcess::crash() {
    kill();
    waitForFinished();
}

void DeviceProcess::restart() {
    printed_.clear();
    if (kind_ == Kind::Pymodbus) {
        start(QStringLiteral("/usr/bin/python3"), QStringList{MODBUS_DEVICE_PY} + arguments_);
    } else {
        start(QStringLiteral(MODBUS_DEVICE), arguments_);
    }
    waitForStarted();
}

/// The system ends it also when the test is killed.
void DeviceProcess::setupChildProcess() {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}

}  // namespace test
