#pragma once

#include <QDateTime>

namespace mendo {

/// The host's clock, the only source of time for host, package and simulator. It is the wall clock unless
/// another one is installed (as tests and the runner do).
class Clock {
public:
    virtual ~Clock() = default;
    /// Local date and time.
    virtual QDateTime now() const = 0;
    /// Milliseconds since an arbitrary origin; never goes back.
    virtual qint64 elapsedMs() const = 0;

    static const Clock& current();
    /// Does not take ownership; null restores the wall clock.
    static void install(const Clock* clock);
};

}  // namespace mendo
