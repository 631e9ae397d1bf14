#include "simulator/latency.h"

#include <QTimer>

namespace sim {

void DelayLine::run(const std::function<void()>& action) {
    if (delayMs_ <= 0) {
        action();
        return;
    }
    ++pending_;
    // Timers due together fire in the order they were armed.
    QTimer::singleShot(delayMs_, Qt::PreciseTimer, this, [this, action] {
        --pending_;
        action();
        if (pending_ == 0) {
            emit emptied();
        }
    });
}

}  // namespace sim
