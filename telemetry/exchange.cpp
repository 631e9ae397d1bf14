#include "telemetry/exchange.h"

#include <sys/eventfd.h>
#include <unistd.h>
#include <algorithm>
#include <chrono>
#include <utility>

namespace telemetry {

using Lock = std::lock_guard<std::mutex>;

Exchange::Exchange() : wake_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {}

Exchange::~Exchange() {
    ::close(wake_);
}

// --- For the cell's thread ------------------------------------------------------------------------

void Exchange::put(const QByteArray& topic, Document document) {
    bool wasNew = false;
    {
        const Lock lock(mutex_);
        Slot& slot = slots_[topic];
        slot.document.swap(document);  // the old one is freed outside of the lock
        wasNew = std::exchange(slot.isNew, true);
        status_.replaced += wasNew && status_.state != LinkStatus::State::Off ? 1 : 0;
    }
    if (!wasNew) {
        wake();
    }
}

void Exchange::setSettings(const Settings& settings) {
    {
        const Lock lock(mutex_);
        settings_ = settings;
        ++change_;
    }
    changed_.notify_all();
    wake();
}

void Exchange::end() {
    {
        const Lock lock(mutex_);
        isEnding_ = true;
        ++change_;
    }
    changed_.notify_all();
    wake();
}

bool Exchange::waitForEnd(int ms) {
    std::unique_lock<std::mutex> lock(mutex_);
    return changed_.wait_for(lock, std::chrono::milliseconds(ms), [this] { return hasEnded_; });
}

LinkStatus Exchange::status() const {
    const Lock lock(mutex_);
    return status_;
}

// --- For the network's thread ---------------------------------------------------------------------

std::optional<Exchange::Letter> Exchange::take(qint64 nowMs, bool ignoreGap) {
    const Lock lock(mutex_);
    for (auto& [topic, slot] : slots_) {
        if (slot.isNew && !slot.isSent && (ignoreGap || slot.notBeforeMs <= nowMs)) {
            slot.isNew = false;
            slot.isSent = true;
            slot.notBeforeMs = nowMs + gapMs;
            return Letter{topic, slot.document};
        }
    }
    return std::nullopt;
}

void Exchange::acknowledge(const QByteArray& topic) {
    const Lock lock(mutex_);
    const auto slot = slots_.find(topic);
    if (slot != slots_.end() && slot->second.isSent) {
        slot->second.isSent = false;
        ++status_.sent;
    }
}

void Exchange::resendAll() {
    const Lock lock(mutex_);
    for (auto& [topic, slot] : slots_) {
        slot.isNew = true;
        slot.isSent = false;
        slot.notBeforeMs = 0;
    }
}

int Exchange::msUntilDue(qint64 nowMs, int most) const {
    const Lock lock(mutex_);
    qint64 ms = most;
    for (const auto& [topic, slot] : slots_) {
        if (slot.isNew && !slot.isSent) {
            ms = std::min(ms, std::max<qint64>(0, slot.notBeforeMs - nowMs));
        }
    }
    return int(ms);
}

bool Exchange::hasUnsent() const {
    const Lock lock(mutex_);
    return std::any_of(slots_.begin(), slots_.end(),
                       [](const auto& entry) { return entry.second.isNew || entry.second.isSent; });
}

void Exchange::setState(LinkStatus::State state, LinkStatus::Reason reason, const QString& words) {
    const Lock lock(mutex_);
    status_.state = state;
    status_.reason = reason;
    status_.words = words;
}

Settings Exchange::settings(int* change) const {
    const Lock lock(mutex_);
    *change = change_;
    return settings_;
}

bool Exchange::isObsolete(int change) const {
    const Lock lock(mutex_);
    return change != change_;
}

bool Exchange::isEnding() const {
    const Lock lock(mutex_);
    return isEnding_;
}

void Exchange::sleep(int ms, int change) {
    std::unique_lock<std::mutex> lock(mutex_);
    changed_.wait_for(lock, std::chrono::milliseconds(ms), [this, change] { return change != change_; });
}

void Exchange::sleepUntilChanged(int change) {
    std::unique_lock<std::mutex> lock(mutex_);
    changed_.wait(lock, [this, change] { return change != change_; });
}

void Exchange::setEnded() {
    {
        const Lock lock(mutex_);
        hasEnded_ = true;
    }
    changed_.notify_all();
}

/// Never waits: at worst the descriptor is readable already.
void Exchange::wake() const {
    const quint64 one = 1;
    [[maybe_unused]] const ssize_t written = ::write(wake_, &one, sizeof one);
}

void Exchange::clearWake() const {
    quint64 count = 0;
    [[maybe_unused]] const ssize_t read = ::read(wake_, &count, sizeof count);
}

}  // namespace telemetry
