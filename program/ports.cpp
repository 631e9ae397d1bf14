#include "program/ports.h"

#include <algorithm>
#include <iterator>

namespace prog {

namespace {

using Is = PortMeaning;

constexpr Port ports[portCount] = {
    {word::portInput, "laser_state"_l1, "DI2_0"_l1, false, Is::Health},
    {word::portInput, "laser_head_state"_l1, "DI2_1"_l1, false, Is::Health},
    {word::portInput, "cooling_state"_l1, "DI2_2"_l1, false, Is::Health},
    {word::portInput, "air_pressure_state"_l1, "DI2_3"_l1, false, Is::Health},
    {word::portInput, "temperature_state"_l1, "DI2_4"_l1, false, Is::Health},
    {word::portInput, "welding_state"_l1, "DI2_5"_l1, false, Is::Emission},
    {word::portOutput, "gas"_l1, "DO2_0"_l1, false, Is::Plain},
    {word::portOutput, "red_light"_l1, "DO2_1"_l1, false, Is::Plain},
    {word::portOutput, "wire_enable"_l1, "DO2_2"_l1, false, Is::Plain},
    {word::portOutput, "laser_enable"_l1, "DO2_3"_l1, true, Is::Emission},
    {word::portOutput, "alarm"_l1, "DO2_4"_l1, false, Is::Alarm},
    {word::portOutput, "laser_lock"_l1, "DO2_5"_l1, false, Is::Plain},
    {word::portOutput, "wire_lock"_l1, "DO2_6"_l1, false, Is::Plain},
    {word::portOutput, "gas_lock"_l1, "DO2_7"_l1, false, Is::Plain},
    {word::portOutput, "wire_pullback"_l1, "DO2_8"_l1, false, Is::Plain},
    {word::portAnalog, "wire_speed"_l1, "LUMO_AO_0"_l1, false, Is::Plain},
    {word::portAnalog, "laser_power"_l1, "LUMO_AO_1"_l1, false, Is::Emission},
    {word::portAnalog, "laser_frequency"_l1, "LUMO_AO_2"_l1, false, Is::Plain},
    {word::portAnalog, "laser_duty_cycle"_l1, "LUMO_AO_3"_l1, false, Is::Plain},
};

}  // namespace

const Port& portInfo(I_PORT port) {
    return ports[port];
}

const Device* deviceOf(I_PORT port) {
    const auto* const device = std::find_if(std::begin(devices), std::end(devices),
                                            [port](const Device& one) { return one.output == port; });
    return device == std::end(devices) ? nullptr : device;
}

}  // namespace prog
