#include "equipment/handlit.h"

#include <array>
#include <bitset>

namespace lumo {

namespace {

/// An output that goes to 0, and the device of the page that it belongs to.
struct Belonging {
    I_PORT output;
    I_PORT device;
};

constexpr Belonging shutdownOrder[] = {
    {DO_WIRE_ENABLE, DO_WIRE_ENABLE},       {AO_WIRE_SPEED, DO_WIRE_ENABLE},
    {AO_LASER_POWER, DO_LASER_ENABLE},      {DO_LASER_ENABLE, DO_LASER_ENABLE},
    {AO_LASER_DUTY_CYCLE, DO_LASER_ENABLE}, {AO_LASER_FREQUENCY, DO_LASER_ENABLE},
    {DO_RED_LIGHT, DO_RED_LIGHT},           {DO_GAS, DO_GAS},
};

std::bitset<AO_LASER_DUTY_CYCLE + 1> lit;
std::array<int, AO_LASER_DUTY_CYCLE + 1> offs{};

}  // namespace

void noteByHand(I_PORT device, bool on) {
    for (const Belonging& belonging : shutdownOrder) {
        if (belonging.output == device && belonging.device == device) {
            lit.set(device, on);
            offs[device] += on ? 0 : 1;
        }
    }
}

int offsByHand(I_PORT device) {
    return offs[device];
}

bool isLitByHand() {
    return lit.any();
}

bool isLitByHand(I_PORT device) {
    return lit.test(device);
}

std::vector<I_PORT> outputsOf(I_PORT device) {
    std::vector<I_PORT> outputs;
    for (const Belonging& belonging : shutdownOrder) {
        if (belonging.device == device) {
            outputs.push_back(belonging.output);
        }
    }
    return outputs;
}

std::vector<I_PORT> takeLitByHand() {
    std::vector<I_PORT> outputs;
    for (const Belonging& belonging : shutdownOrder) {
        if (lit.test(belonging.device)) {
            outputs.push_back(belonging.output);
        }
    }
    lit.reset();
    return outputs;
}

}  // namespace lumo
