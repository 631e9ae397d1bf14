#include "equipment/ports.h"

#include "equipment/dryguard.h"
#include "equipment/handlit.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

using namespace prog;

namespace {

ModuleObject* portRow(I_PORT port) {
    return m(key::port)->c(static_cast<int>(port));
}

QString portName(I_PORT port) {
    return portRow(port)->c(field::name)->getString();
}

/// Sends a register write, or appends it to the batch. False, and nothing done, where a dry run forbids it.
bool writeRegister(QObject* sender, const QString& name, const QString& type, int value, int bias,
                   ModuleObject* batch) {
    if (lumo::isHeldDark(name, type, bias, value)) {
        return false;
    }
    ModuleObject record;
    record.set(sender, field::name, name)
        ->set(sender, field::type, type)
        ->set(sender, field::value, value)
        ->set(sender, field::bias, bias);
    if (batch) {
        batch->append(sender)->copyFrom(sender, &record);
    } else {
        kordservice()->command(sender, command::registerWrite, &record);
    }
    return true;
}

bool isAnalogue(I_PORT port) {
    return portInfo(port).kind == word::portAnalog;
}

/// The read-back of a device that was just switched on may still say that it is off.
bool isOn(I_PORT output) {
    return portState(output) || lumo::isLitByHand(output);
}

void switchOffOutput(QObject* sender, I_PORT output) {
    lumo::noteByHand(output, false);
    clearPort(sender, output);
}

}  // namespace

bool portEnabled(I_PORT port) {
    return portRow(port)->c(field::enable)->getBool(false);
}

bool setPortDO(QObject* sender, I_PORT port, bool on, ModuleObject* batch) {
    if (!portEnabled(port)) {
        return false;
    }
    const QString name = portName(port);
    const QString registerName = name.section(QLatin1Char('.'), 0, 0);
    return writeRegister(sender, registerName, QStringLiteral("bit"), on ? 1 : 0,
                         ModuleObject::indexOfRname(name), batch);
}

bool setPortAO(QObject* sender, I_PORT port, double fraction, ModuleObject* batch) {
    if (!portEnabled(port)) {
        return false;
    }
    return writeRegister(sender, portName(port), QStringLiteral("int16"), scaledFraction(fraction), 0, batch);
}

void clearPort(QObject* sender, I_PORT output) {
    if (isAnalogue(output)) {
        setPortAO(sender, output, 0.0);
    } else {
        setPortDO(sender, output, false);
    }
}

void switchOffPort(QObject* sender, I_PORT port) {
    if (portInfo(port).kind == word::portInput) {
        return;
    }
    for (const Device& device : devices) {
        if (device.lock == port && portEnabled(port) && (portState(port) || isOn(device.output))) {
            switchOffOutput(sender, device.output);
        }
    }
    if (isAnalogue(port) ? portPercent(port) != 0.0 : isOn(port)) {
        switchOffOutput(sender, port);
    }
}

bool portState(I_PORT port) {
    return portEnabled(port) &&
           kordservice()->dataNode(mName(key::registerValues, portName(port)))->getBool(false);
}

double portPercent(I_PORT port) {
    if (!portEnabled(port)) {
        return 0.0;
    }
    const QString path = mName(key::registerValues, portName(port), mIndex(0));
    return kordservice()->dataNode(path)->getInt(0) / analogueFullScale * 100.0;
}

int scaledFraction(double fraction) {
    if (std::isnan(fraction)) {
        return 0;
    }
    using Register = std::numeric_limits<qint16>;
    const double scaled = std::floor(fraction * analogueFullScale + 0.5);
    return static_cast<int>(std::clamp(scaled, double(Register::min()), double(Register::max())));
}
