#include "devices/devicestate.h"

#include "equipment/ports.h"

#include <algorithm>
#include <iterator>

using namespace prog;

namespace lumo {

namespace {

bool isLock(I_PORT port) {
    return std::any_of(std::begin(devices), std::end(devices),
                       [port](const Device& device) { return device.lock == port; });
}

Sign signOf(I_PORT port) {
    switch (port) {
        case DO_LASER_ENABLE:
            return Sign::Laser;
        case DO_RED_LIGHT:
            return Sign::Pilot;
        default:
            return Sign::LampOn;
    }
}

}  // namespace

DeviceState::DeviceState(I_PORT port, QWidget* parent) : SignLabel(parent), port_(port) {
    setWordWrap(true);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
}

void DeviceState::refresh() {
    const bool isOn = portState(port_);
    if (!portEnabled(port_)) {
        show(Sign::Locked, tr("端口未启用"));
    } else if (isLock(port_)) {
        isOn ? show(Sign::Armed, tr("已解锁，再按即锁定")) : show(Sign::Locked, tr("保护已锁定"));
    } else if (isOn) {
        show(signOf(port_), tr("已打开，再按即关闭"));
    } else {
        const Device* const device = deviceOf(port_);
        const bool isLocked = device && !portState(device->lock);
        isLocked ? show(Sign::Locked, tr("已锁定")) : show(Sign::LampOff, tr("关"));
    }
}

}  // namespace lumo
