#include "equipment/dryguard.h"

#include "module/host.h"
#include "program/ports.h"
#include "program/words.h"

#include <QVariant>

#include <algorithm>
#include <iterator>

using namespace prog;

namespace lumo {

namespace {

bool isUp = false;

constexpr I_PORT welding[] = {DO_GAS,        DO_WIRE_ENABLE, DO_LASER_ENABLE,    DO_WIRE_PULLBACK,
                              AO_WIRE_SPEED, AO_LASER_POWER, AO_LASER_FREQUENCY, AO_LASER_DUTY_CYCLE};

bool tellLeftOut(const QString& name) {
    logW() << "dry run: not switched on:" << name;
    return true;
}

/// Whether a write touches an address of a port: the same bit, or a register of which the bit is a part.
bool touches(const QString& port, const QString& registerName, const QString& type, int bit) {
    const bool isBit = type == QLatin1String("bit");
    return port.section(QLatin1Char('.'), 0, 0) == registerName &&
           (!isBit || !port.contains(QLatin1Char('.')) || ModuleObject::indexOfRname(port) == bit);
}

}  // namespace

void setDryGuard(bool up) {
    isUp = up;
}

bool isDryGuardUp() {
    return isUp;
}

bool isHeldDark(const QString& registerName, const QString& type, int bit, int value) {
    if (!isUp || value == 0) {
        return false;
    }
    const bool isOfWeld = std::any_of(std::begin(welding), std::end(welding), [&](I_PORT port) {
        const ModuleObject* const row = m(key::port)->c(static_cast<int>(port));
        return row->c(field::enable)->getBool(false) &&
               touches(row->c(field::name)->getString(), registerName, type, bit);
    });
    return isOfWeld && tellLeftOut(registerName);
}

bool isHeldDark(const Signal& output, const QVariant& state) {
    const int value = state.toBool() ? 1 : 0;
    return output.isIo ? isHeldDark(output.ioName, QStringLiteral("bit"), 0, value)
                       : isHeldDark(output.registerName, output.registerType, output.bit, value);
}

}  // namespace lumo
