#pragma once

#include "telemetry/linkstatus.h"
#include "telemetry/settings.h"

#include <QByteArray>

#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <optional>

namespace telemetry {

/// Makes the bytes of a message. Called in the network's thread, so it holds values only.
using Document = std::function<QByteArray()>;

/// What the cell's thread and the network's thread share. Of each topic it keeps the newest document and
/// nothing older, so it never grows; no call waits for the network. Times are in ms of one steady clock.
class Exchange {
public:
    /// The least time between two documents of a topic.
    static constexpr qint64 gapMs = 200;

    /// A document that is due. In the network's thread it is sent, acknowledged, or given back by
    /// resendAll().
    struct Letter {
        QByteArray topic;  ///< below the cell's root: "state"
        Document document;
    };

    Exchange();
    ~Exchange();
    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;

    // For the cell's thread.
    void put(const QByteArray& topic, Document document);
    /// Takes effect in the network's thread, which takes leave of the broker before.
    void setSettings(const Settings& settings);
    /// The network's thread is to take leave of the broker and to end.
    void end();
    /// Waits until it has ended; what ends the wait earlier is the time. False then.
    [[nodiscard]] bool waitForEnd(int ms);
    [[nodiscard]] LinkStatus status() const;

    // For the network's thread.
    /// The next document that is due. One of its topic that is not yet acknowledged holds it back.
    [[nodiscard]] std::optional<Letter> take(qint64 nowMs, bool ignoreGap = false);
    void acknowledge(const QByteArray& topic);
    /// A new connection: the newest document of every topic is due, sent or not.
    void resendAll();
    /// Until a document is due, at most `most`.
    [[nodiscard]] int msUntilDue(qint64 nowMs, int most) const;
    /// Whether documents are neither sent nor acknowledged.
    [[nodiscard]] bool hasUnsent() const;
    void setState(LinkStatus::State state, LinkStatus::Reason reason = LinkStatus::Reason::None,
                  const QString& words = {});
    /// The settings, and the number of their change.
    [[nodiscard]] Settings settings(int* change) const;
    /// Whether the thread has to leave the connection that it has made with these settings.
    [[nodiscard]] bool isObsolete(int change) const;
    [[nodiscard]] bool isEnding() const;
    /// Waits; what ends it is the time, a change of the settings and the end.
    void sleep(int ms, int change);
    void sleepUntilChanged(int change);
    void setEnded();
    /// Readable as soon as a document or a change waits.
    [[nodiscard]] int wakeDescriptor() const { return wake_; }
    void clearWake() const;

private:
    struct Slot {
        Document document;
        bool isNew = false;   ///< not yet handed over
        bool isSent = false;  ///< handed over and not yet acknowledged
        qint64 notBeforeMs = 0;
    };
    void wake() const;

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::map<QByteArray, Slot> slots_;
    Settings settings_;
    LinkStatus status_;
    int change_ = 0;
    bool isEnding_ = false;
    bool hasEnded_ = false;
    int wake_;
};

}  // namespace telemetry
