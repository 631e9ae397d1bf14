#include "telemetry/client.h"

#include "telemetry/connection.h"
#include "telemetry/mosquittolibrary.h"

#include <QElapsedTimer>

#include <algorithm>

namespace telemetry {

namespace {

constexpr int firstWaitMs = 1000, longestWaitMs = 30000;
/// A connection that lasted as long is made anew at once; shorter ones wait longer each time.
constexpr int stableMs = 30000;

/// Null, and the failure told, where there is no library.
const MosquittoLibrary* load(Exchange* exchange) {
    const MosquittoLibrary* const library = MosquittoLibrary::load();
    if (library) {
        library->init();
    } else {
        exchange->setState(LinkStatus::State::Failed, LinkStatus::Reason::NoLibrary);
    }
    return library;
}

/// The network's thread. It makes connections until it is told to end.
void work(const std::shared_ptr<Exchange>& exchange) {
    const MosquittoLibrary* library = nullptr;
    int waitMs = firstWaitMs;
    while (!exchange->isEnding()) {
        int change = 0;
        const Settings settings = exchange->settings(&change);
        if (!settings.isOn) {
            exchange->setState(LinkStatus::State::Off);
            exchange->sleepUntilChanged(change);
            continue;
        }
        library = library ? library : load(exchange.get());
        if (!library) {
            exchange->sleepUntilChanged(change);
            continue;
        }
        QElapsedTimer lasted;
        lasted.start();
        Connection(library, settings, change, exchange.get()).run();
        if (exchange->isObsolete(change)) {
            waitMs = firstWaitMs;
            continue;
        }
        waitMs = lasted.elapsed() > stableMs ? firstWaitMs : waitMs;
        exchange->sleep(waitMs, change);
        waitMs = std::min(2 * waitMs, longestWaitMs);
    }
    if (library) {
        library->cleanup();
    }
    exchange->setEnded();
}

}  // namespace

Client::Client() : exchange_(std::make_shared<Exchange>()) {}

/// A thread that hangs in the system's resolver of names is left to itself: it has its own hold on all that
/// it uses.
Client::~Client() {
    if (!thread_.joinable()) {
        return;
    }
    exchange_->end();
    if (exchange_->waitForEnd(endMs)) {
        thread_.join();
    } else {
        thread_.detach();
    }
}

void Client::setSettings(const Settings& settings) {
    Settings used = settings;
    used.isOn = settings.isOn && !settings.flaw();
    if (!used.isOn && !thread_.joinable()) {
        return;
    }
    exchange_->setSettings(used);
    if (!thread_.joinable()) {
        exchange_->setState(LinkStatus::State::Connecting);
        thread_ = std::thread(work, exchange_);
    }
}

bool Client::flush(int ms) const {
    constexpr int stepMs = 5;
    QElapsedTimer passed;
    passed.start();
    while (exchange_->hasUnsent() && passed.elapsed() < ms &&
           exchange_->status().state != LinkStatus::State::Failed) {
        std::this_thread::sleep_for(std::chrono::milliseconds(stepMs));
    }
    return !exchange_->hasUnsent();
}

}  // namespace telemetry
