#pragma once

#include "telemetry/exchange.h"

#include <memory>
#include <thread>

namespace telemetry {

/// Keeps the newest document of each topic at an MQTT broker, retained, from a thread of its own. Before the
/// first settings that switch it on there is neither a thread nor a socket. No call waits for the network
/// but the destructor, and that for endMs at most.
class Client {
public:
    /// How long the end of the program waits until the broker has the last documents and "offline". What
    /// ends it earlier is the broker's answer; without a connection it ends at once.
    static constexpr int endMs = 500;

    Client();
    ~Client();
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    /// Settings with a flaw are not used: it is off then.
    void setSettings(const Settings& settings);
    void publish(const QByteArray& topic, Document document) { exchange_->put(topic, std::move(document)); }
    [[nodiscard]] LinkStatus status() const { return exchange_->status(); }
    /// Waits until the broker has acknowledged all documents; what ends it earlier is a connection that
    /// fails, and `ms`. False then. For programs that have nothing else to do.
    [[nodiscard]] bool flush(int ms) const;

private:
    std::shared_ptr<Exchange> exchange_;  ///< outlives the client where its thread hangs in the network
    std::thread thread_;
};

}  // namespace telemetry
