#include "equipment/handlit.h"

#include "module/host.h"
#include "program/words.h"

#include <array>
#include <bitset>

using namespace prog;

namespace lumo {

namespace {

std::bitset<portCount> lit;
std::array<int, portCount> offs{};

}  // namespace

void noteByHand(I_PORT device, bool on) {
    if (portInfo(device).kind == word::portOutput) {
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

bool mustStopAtOnce() {
    return m(key::executeState)->getString() == word::busy || isLitByHand(DO_LASER_ENABLE);
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
    return outputs.empty() ? std::vector<I_PORT>{device} : outputs;
}

std::vector<I_PORT> takeLitByHand() {
    std::vector<I_PORT> outputs;
    for (const ShutdownOutput& row : shutdownOrder) {
        if (lit.test(row.device)) {
            outputs.push_back(row.output);
        }
    }
    for (const ShutdownOutput& row : shutdownOrder) {
        lit.reset(row.device);
    }
    for (int port = 0; port < portCount; ++port) {  // a test's: alarm and locks
        if (lit.test(port)) {
            outputs.push_back(static_cast<I_PORT>(port));
        }
    }
    lit.reset();
    return outputs;
}

}  // namespace lumo
