// Statements that talk to the rest of the cell: set an output, wait for an input, wait a time.

#include "equipment/signalio.h"
#include "executor/lumoexecutor.h"

#include <QVariant>

#include <algorithm>

using namespace lumo;
using namespace prog;

namespace {

constexpr int inputPollMs = 100;

}  // namespace

/// An output is switched on by any value but "false", a bit of a register by "true" alone.
int LumoExecutor::setDO(ModuleObject* stmt) {
    const Signal output = Signal::from(stmt, setOutput);
    const QString value = stmt->c(field::value)->getString();
    if (output.isIo) {
        writeSignal(nullptr, output, value == word::falseText ? 0 : 1);
    } else {
        writeSignal(this, output, value == word::trueText);
    }
    return 0;
}

bool LumoExecutor::inputState(const ModuleObject* stmt) {
    return signalLevel(nullptr, Signal::from(stmt, awaitedInput));
}

int LumoExecutor::waitDI(ModuleObject* stmt) {
    const bool awaited = stmt->c(field::value1)->getString() != word::falseText;
    QTimer poll;
    connect(&poll, &QTimer::timeout, this, [this, stmt, awaited] {
        if (inputState(stmt) == awaited && waiter_.waitsFor(WaitKind::Input)) {
            waiter_.end(WaitEnd::Input);
        }
    });
    poll.start(inputPollMs);
    // Ended by the input, a pause or an emergency stop; there is no time-out.
    if (waiter_.run(WaitKind::Input, Signal::from(stmt, awaitedInput).address(), -1) == WaitEnd::Quit) {
        quit();
    }
    return 0;
}

int LumoExecutor::delay(ModuleObject* stmt) {
    const int delayMs = std::max(0, stmt->c(field::delaytime, false)->getInt(0));
    // Ended by its time, a pause or an emergency stop.
    waitFor(WaitKind::Delay, mendo::Clock::current().elapsedMs() + delayMs);
    return 0;
}
