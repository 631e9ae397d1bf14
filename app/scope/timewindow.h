#pragma once

#include "app/scope/signalrecorder.h"

#include <algorithm>

namespace app {

/// The section of time that the scope shows. Its end is the current time, or is held. Milliseconds of the
/// host's clock.
class TimeWindow {
public:
    static constexpr qint64 shortestMs = 100, longestMs = SignalRecord::keptMs;

    TimeSpan span(qint64 nowMs) const {
        const qint64 end = held_ ? endMs_ : nowMs;
        return {end - lengthMs_, end};
    }
    qint64 lengthMs() const { return lengthMs_; }
    bool isHeld() const { return held_; }

    void hold(qint64 nowMs) { scrollTo(nowMs - lengthMs_); }
    void release() { held_ = false; }
    /// Shows the section that begins at `fromMs`, held.
    void scrollTo(qint64 fromMs) {
        held_ = true;
        endMs_ = fromMs + lengthMs_;
    }
    /// Multiplies the length by `factor`. While held, `fixedMs` stays at its position.
    void stretch(double factor, qint64 fixedMs) {
        const qint64 old = lengthMs_;
        lengthMs_ = std::clamp(qint64(double(old) * factor), shortestMs, longestMs);
        endMs_ = fixedMs + (endMs_ - fixedMs) * lengthMs_ / old;
    }
    /// Holds, and scrolls if necessary, so that a time is in view.
    void reveal(qint64 ms, qint64 nowMs) {
        const TimeSpan shown = span(nowMs);
        if (ms < shown.fromMs || ms > shown.toMs) {
            scrollTo(ms - lengthMs_ / 2);
        } else if (!held_) {
            hold(nowMs);
        }
    }

private:
    qint64 lengthMs_ = 60 * 1000;
    qint64 endMs_ = 0;
    bool held_ = false;
};

}  // namespace app
