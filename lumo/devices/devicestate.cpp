#include "devices/devicestate.h"

#include "equipment/ports.h"
#include "module/host.h"
#include "program/words.h"
#include "widgets/dressing.h"

#include <algorithm>
#include <iterator>

using namespace prog;

namespace lumo {

namespace {

constexpr char offSheet[] = "color: #55667A;";
constexpr char armedSheet[] = "color: #7A4B00; background: #FFF3D6; font-weight: bold;";
constexpr char laserSheet[] = "color: #C5221B; font-weight: bold;";
constexpr char onSheet[] = "color: #17273A; font-weight: bold;";

struct Words {
    QString text;
    const char* sheet;
};

bool isLock(I_PORT port) {
    return std::any_of(std::begin(devices), std::end(devices),
                       [port](const Device& device) { return device.lock == port; });
}

/// The laser's sign is a diamond, the pilot light's a ring.
Words wordsOf(I_PORT port, bool isOn) {
    if (isLock(port)) {
        return isOn ? Words{DeviceState::tr("⚠ 已解锁"), armedSheet}
                    : Words{DeviceState::tr("已锁定"), offSheet};
    }
    const Device* const device = deviceOf(port);
    if (!isOn) {
        return {device && !portState(device->lock) ? DeviceState::tr("关，已锁定") : DeviceState::tr("关"),
                offSheet};
    }
    if (port == DO_LASER_ENABLE) {
        return {DeviceState::tr("◆ 激光已打开"), laserSheet};
    }
    return {port == DO_RED_LIGHT ? DeviceState::tr("◎ 指示红光已打开") : DeviceState::tr("● 已打开"),
            onSheet};
}

}  // namespace

DeviceState::DeviceState(I_PORT port, QWidget* parent) : QLabel(parent), port_(port) {
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    refresh();
}

void DeviceState::refresh() {
    Words words;
    if (portEnabled(port_)) {
        words = wordsOf(port_, portState(port_));
    } else {
        const QString name = m(key::port)->c(static_cast<int>(port_))->c(field::tag)->getString();
        words = {tr("端口“%1”未启用").arg(name), armedSheet};
    }
    setText(words.text);
    setStyleSheetOnChange(this, QLatin1String(words.sheet));
}

}  // namespace lumo
