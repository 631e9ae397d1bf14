#include "equipment/ports.h"

#include "equipment/handlit.h"
#include "program/words.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace {

constexpr double fullScale = 32767.0;

ModuleObject* portRow(I_PORT port) {
    return m(prog::key::port)->c(static_cast<int>(port));
}

QString portName(I_PORT port) {
    return portRow(port)->c(prog::field::name)->getString();
}

/// Sends a register write, or appends it to the batch.
void writeRegister(QObject* sender, const QString& name, const QString& type, int value, int bias,
                   ModuleObject* batch) {
    ModuleObject record;
    record.set(sender, prog::field::name, name)
        ->set(sender, prog::field::type, type)
        ->set(sender, prog::field::value, value)
        ->set(sender, prog::field::bias, bias);
    if (batch) {
        batch->append(sender)->copyFrom(sender, &record);
    } else {
        kordservice()->command(sender, prog::command::registerWrite, &record);
    }
}

/// The devices that can be switched by hand only while this lock is on.
std::vector<I_PORT> gatedBy(I_PORT lock) {
    switch (lock) {
        case DO_LASER_SAFETY_LOCK:
            return {DO_LASER_ENABLE, DO_RED_LIGHT};
        case DO_WIRE_SAFETY_LOCK:
            return {DO_WIRE_ENABLE};
        case DO_GAS_SAFETY_LOCK:
            return {DO_GAS};
        default:
            return {};
    }
}

/// Also one that was switched on so lately that its read-back does not say so yet.
bool isOn(I_PORT output) {
    return portState(output) || lumo::isLitByHand(output);
}

void switchOffOutput(QObject* sender, I_PORT output) {
    lumo::noteByHand(output, false);
    setPortDO(sender, output, false);
}

}  // namespace

bool portEnabled(I_PORT port) {
    return portRow(port)->c(prog::field::enable)->getBool(false);
}

bool setPortDO(QObject* sender, I_PORT port, bool on, ModuleObject* batch) {
    if (!portEnabled(port)) {
        return false;
    }
    const QString name = portName(port);
    const QString registerName = name.section(QLatin1Char('.'), 0, 0);
    writeRegister(sender, registerName, QStringLiteral("bit"), on ? 1 : 0, ModuleObject::indexOfRname(name),
                  batch);
    return true;
}

bool setPortAO(QObject* sender, I_PORT port, double fraction, ModuleObject* batch) {
    if (!portEnabled(port)) {
        return false;
    }
    writeRegister(sender, portName(port), QStringLiteral("int16"), scaledFraction(fraction), 0, batch);
    return true;
}

void switchOffPort(QObject* sender, I_PORT port) {
    for (const I_PORT device : gatedBy(port)) {
        if (portEnabled(port) && (portState(port) || isOn(device))) {
            switchOffOutput(sender, device);
        }
    }
    if (port >= AO_WIRE_SPEED && portPercent(port) != 0.0) {
        setPortAO(sender, port, 0.0);
    } else if (port >= DO_GAS && port < AO_WIRE_SPEED && isOn(port)) {
        switchOffOutput(sender, port);
    }
}

bool portState(I_PORT port) {
    return portEnabled(port) &&
           kordservice()->dataNode(mName(prog::key::registerValues, portName(port)))->getBool(false);
}

double portPercent(I_PORT port) {
    if (!portEnabled(port)) {
        return 0.0;
    }
    const QString path = mName(prog::key::registerValues, portName(port), mIndex(0));
    return kordservice()->dataNode(path)->getInt(0) / fullScale * 100.0;
}

int scaledFraction(double fraction) {
    if (std::isnan(fraction)) {
        return 0;
    }
    using Register = std::numeric_limits<qint16>;
    const double scaled = std::floor(fraction * fullScale + 0.5);
    return static_cast<int>(std::clamp(scaled, double(Register::min()), double(Register::max())));
}
