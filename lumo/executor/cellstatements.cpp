#include "executor/cellstatements.h"

#include "equipment/signalio.h"
#include "program/words.h"

#include <QTimer>
#include <QVariant>

#include <algorithm>

using namespace prog;

namespace lumo {

/// An output is switched on by any value but "false", a bit of a register by "true" alone.
void CellStatements::setDO(const ModuleObject* stmt) {
    const Signal output = Signal::from(stmt, setOutput);
    const QString value = stmt->c(field::value)->getString();
    if (output.isIo) {
        writeSignal(nullptr, output, value == word::falseText ? 0 : 1);
    } else {
        writeSignal(sender_, output, value == word::trueText);
    }
}

void CellStatements::waitDI(const ModuleObject* stmt) {
    constexpr int pollMs = 100;
    const Signal input = Signal::from(stmt, awaitedInput);
    const bool awaited = stmt->c(field::value1)->getString() != word::falseText;
    QTimer poll;
    connect(&poll, &QTimer::timeout, this, [this, &input, awaited] {
        if (signalLevel(nullptr, input) == awaited && waiter_.waitsFor(waits::input)) {
            waiter_.end(WaitEnd::Input);
        }
    });
    poll.start(pollMs);
    // Ended by the input, a pause or an emergency stop; there is no time-out.
    waiter_.run(waits::input, -1, input.address());
}

void CellStatements::delay(const ModuleObject* stmt) {
    const int delayMs = std::max(0, stmt->c(field::delaytime, false)->getInt(0));
    // Ended by its time, a pause or an emergency stop.
    waiter_.run(waits::delay, mendo::Clock::current().elapsedMs() + delayMs);
}

}  // namespace lumo
