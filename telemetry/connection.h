#pragma once

#include "telemetry/exchange.h"
#include "telemetry/mosquittolibrary.h"

#include <QElapsedTimer>
#include <QHash>

#include <memory>

namespace telemetry {

/// One connection to the broker, from its making to its end, in the network's thread. While it lasts it
/// hands over what the exchange has; a topic's next document waits for the acknowledgement of the one
/// before, so that no more than one of each is under way.
class Connection {
public:
    /// `change`: number of these settings' change; `library` and `exchange` must outlive it.
    Connection(const MosquittoLibrary* library, const Settings& settings, int change, Exchange* exchange);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Returns when the connection is broken, with the reason in the exchange's status, or when it has taken
    /// leave because the settings have changed or the program ends.
    void run();

private:
    [[nodiscard]] bool prepare();
    [[nodiscard]] bool prepareTls();
    void begin();
    [[nodiscard]] bool step();
    void wait(int mostMs);
    void sendDue();
    void send(const QByteArray& topic, const QByteArray& payload);
    void sendOnline(bool online);
    [[nodiscard]] bool isOverdue() const;
    void leave();
    void fail(LinkStatus::Reason reason, const QString& words = {});
    void failWith(int code, int systemError);

    static void onConnect(mosquitto*, void* self, int code);
    static void onPublish(mosquitto*, void* self, int message);
    static void onLog(mosquitto*, void* self, int level, const char* text);

    const MosquittoLibrary& library_;
    const Settings settings_;
    const int change_;
    Exchange* exchange_;
    const QByteArray root_;
    std::unique_ptr<mosquitto, void (*)(mosquitto*)> mosquitto_;
    QElapsedTimer clock_;
    qint64 beganMs_ = 0;
    bool isConnected_ = false;
    bool hasHungUp_ = false;           ///< the socket, at the last wait
    int refusal_ = 0;                  ///< of the broker's answer to the connection; 0: none
    QString tlsWords_;                 ///< the last words of the library about TLS
    QHash<int, QByteArray> underWay_;  ///< topics by the number of the message
    qint64 oldestMs_ = 0;              ///< since when messages are under way without an answer
};

}  // namespace telemetry
