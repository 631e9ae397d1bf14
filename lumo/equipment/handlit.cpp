#include "equipment/handlit.h"

#include <array>
#include <bitset>

using namespace prog;

namespace lumo {

namespace {

std::bitset<portCount> lit;
std::array<int, portCount> offs{};

}  // namespace

void noteByHand(I_PORT device, bool on) {
    if (deviceOf(device)) {
        lit.set(device, on);
        offs[device] += on ? 0 : 1;
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
    for (const ShutdownOutput& row : shutdownOrder) {
        if (row.device == device) {
            outputs.push_back(row.output);
        }
    }
    return outputs;
}

std::vector<I_PORT> takeLitByHand() {
    std::vector<I_PORT> outputs;
    for (const ShutdownOutput& row : shutdownOrder) {
        if (lit.test(row.device)) {
            outputs.push_back(row.output);
        }
    }
    lit.reset();
    return outputs;
}

}  // namespace lumo
