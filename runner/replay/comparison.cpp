#include "runner/replay/comparison.h"

#include "mendo/clock.h"
#include "mendo/modulemanager.h"
#include "program/words.h"

#include <algorithm>
#include <limits>

namespace run::replay {

using flight::Record;

Comparison::Comparison(const Script* script, qint64 toleranceMs, QObject* parent)
    : QObject(parent), script_(script), toleranceMs_(toleranceMs) {
    missing_.setSingleShot(true);
    missing_.setTimerType(Qt::PreciseTimer);
    connect(&missing_, &QTimer::timeout, this, [this] { differ(nullptr); });
}

void Comparison::begin() {
    clockOffsetMs_ = script_->startMs - mendo::Clock::current().elapsedMs();
    isOver_ = false;
    awaitNext();
}

void Comparison::end() {
    isOver_ = true;
    missing_.stop();
}

qint64 Comparison::nowMs() const {
    return mendo::Clock::current().elapsedMs() + clockOffsetMs_;
}

/// The last moment at which what is expected can still come; none where the recording has nothing more.
void Comparison::awaitNext() {
    if (next_ >= script_->outputs.size()) {
        missing_.stop();
        return;
    }
    const qint64 latest = script_->outputs[next_]->ms + toleranceMs_ + 1 - nowMs();
    missing_.start(int(std::clamp<qint64>(latest, 0, std::numeric_limits<int>::max())));
}

quint64 Comparison::append(const Record& record) {
    if (isOver_ || !record.isByExecutor()) {
        return 0;
    }
    if (next_ >= script_->outputs.size()) {
        if (nowMs() < script_->endMs) {
            differ(&record);
        }
        return 0;
    }
    const Record& expected = *script_->outputs[next_];
    if (std::abs(expected.ms - nowMs()) > toleranceMs_ || !isSame(expected, record)) {
        differ(&record);
        return 0;
    }
    ++next_;
    awaitNext();
    emit advanced();
    return 0;
}

/// `now`: null where the package does nothing.
void Comparison::differ(const Record* now) {
    Difference difference;
    difference.ms = nowMs() - script_->startMs;
    difference.line = m(prog::key::currentLine)->getInt() + 1;
    if (next_ < script_->outputs.size()) {
        const Record& expected = *script_->outputs[next_];
        difference.recorded = textOf(expected);
        difference.recordedMs = expected.ms - script_->startMs;
    }
    difference.now = now ? textOf(*now) : QString();
    difference_ = difference;
    end();
    emit differs();
}

}  // namespace run::replay
