#pragma once

#include <QDateTime>

namespace mendo {

/// The host's clock, which everything that needs the time asks. The wall clock unless another one
/// is installed (virtual time in tests and in the runner).
class Clock {
public:
    virtual ~Clock() = default;
    /// Local date and time.
    virtual QDateTime now() const = 0;
    /// Milliseconds since an arbitrary origin; never goes back.
    virtual qint64 elapsedMs() const = 0;

    static const Clock& current();
    /// Not owned; null restores the wall clock.
    static void install(const Clock* clock);
};

}  // namespace mendo
