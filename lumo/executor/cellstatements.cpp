#include "executor/cellstatements.h"

#include "equipment/signalio.h"
#include "module/host.h"
#include "program/words.h"

#include <QTimer>
#include <QVariant>

using namespace prog;

namespace lumo {

void CellStatements::setDO(const Statement& statement) {
    if (statement.signal.isIo) {
        writeSignal(nullptr, statement.signal, statement.value ? 1 : 0);
    } else {
        writeSignal(sender_, statement.signal, statement.value);
    }
}

void CellStatements::waitDI(const Statement& statement) {
    constexpr int pollMs = 100;
    QTimer poll;
    connect(&poll, &QTimer::timeout, this, [this, &statement] {
        if (signalLevel(nullptr, statement.signal) == statement.value && waiter_.waitsFor(waits::input)) {
            waiter_.end(WaitEnd::Input);
        }
    });
    poll.start(pollMs);
    // Ended by the input, a pause or an emergency stop; there is no time-out.
    waiter_.run(waits::input, -1, statement.signal.address());
}

void CellStatements::delay(const Statement& statement) {
    // Ended by its time, a pause or an emergency stop.
    waiter_.run(waits::delay, mendo::Clock::current().elapsedMs() + statement.delayMs);
}

}  // namespace lumo
