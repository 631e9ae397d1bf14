#include "mendo/clock.h"

#include <QElapsedTimer>

namespace mendo {

namespace {

class WallClock final : public Clock {
public:
    WallClock() { timer_.start(); }
    QDateTime now() const override { return QDateTime::currentDateTime(); }
    qint64 elapsedMs() const override { return timer_.elapsed(); }

private:
    QElapsedTimer timer_;
};

const Clock* installed = nullptr;

}  // namespace

const Clock& Clock::current() {
    static const WallClock wallClock;
    return installed ? *installed : wallClock;
}

void Clock::install(const Clock* clock) {
    installed = clock;
}

}  // namespace mendo
