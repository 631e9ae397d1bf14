#include "equipment/handlit.h"

#include "module/host.h"
#include "program/words.h"

using namespace prog;

namespace lumo {

namespace {

const QString lit = QStringLiteral("lit");
const QString off = QStringLiteral("off");

bool isNoted(const QString& what, I_PORT port) {
    return m(key::byHand)->r(mName(what, portInfo(port).word))->getBool();
}

/// Returns whether it was noted before.
bool note(QObject* sender, const QString& what, I_PORT port, bool value) {
    const bool wasNoted = isNoted(what, port);
    if (wasNoted != value) {
        m(key::lumo)->set(sender, mName(QStringLiteral("byHand"), what, portInfo(port).word), value);
    }
    return wasNoted;
}

}  // namespace

void noteByHand(I_PORT device, bool on) {
    if (portInfo(device).kind != word::portOutput) {
        return;
    }
    note(nullptr, lit, device, on);
    if (!on) {
        note(nullptr, off, device, true);
    }
}

bool isOffByHand(I_PORT device) {
    return isNoted(off, device);
}

void forgetOffByHand(QObject* sender, I_PORT device) {
    note(sender, off, device, false);
}

bool isLitByHand() {
    for (int port = 0; port < portCount; ++port) {
        if (isLitByHand(static_cast<I_PORT>(port))) {
            return true;
        }
    }
    return false;
}

bool mustStopAtOnce() {
    return m(key::executeState)->getString() == word::busy || isLitByHand(DO_LASER_ENABLE);
}

bool isLitByHand(I_PORT device) {
    return isNoted(lit, device);
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

std::vector<I_PORT> takeLitByHand(QObject* sender) {
    std::vector<I_PORT> outputs;
    for (const ShutdownOutput& row : shutdownOrder) {
        if (isLitByHand(row.device)) {
            outputs.push_back(row.output);
        }
    }
    for (const ShutdownOutput& row : shutdownOrder) {
        note(sender, lit, row.device, false);
    }
    for (int port = 0; port < portCount; ++port) {  // a test's: alarm and locks
        const auto output = static_cast<I_PORT>(port);
        if (note(sender, lit, output, false)) {
            outputs.push_back(output);
        }
    }
    return outputs;
}

}  // namespace lumo
