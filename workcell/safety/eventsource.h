#pragma once

#include "workcell/safety/event.h"
#include "workcell/treefollower.h"

#include <QObject>
#include <QVariantMap>

struct KordCall;

namespace workcell::safety {

/// Reports what the executor and the robot do, without the state. Slots are called in the order of
/// connecting: a source made before the controller and the package reports before these react, one made
/// afterwards when they have reacted.
class EventSource : public QObject {
    Q_OBJECT
public:
    /// `follower` must have been made at the same time, and outlive it.
    explicit EventSource(TreeFollower* follower, QObject* parent = nullptr);

    /// Reports the executor's activity, too. When two sources follow it, the first to be told reports first.
    void setExecutor(QObject* executor);

    /// When the innermost wait ends, in ms of the host's clock; -1: open-ended, or nothing is awaited.
    [[nodiscard]] qint64 waitDueMs() const;

signals:
    void happened(const workcell::safety::Event& event);

private slots:
    void onActivity();  // connected by name: the signal's class is unknown here

private:
    void report(Kind kind, const QString& text = {}, int value = 0, int port = -1);
    void onChanged(const Change& change);
    void onIssued(const KordCall& call);
    void onRegister(const QString& name, int bit, int value, bool byHand);
    void onLog(const QString& level, const QString& text);

    QObject* executor_ = nullptr;
    QVariantMap wait_;
    int depth_ = 0;
    bool isPending_ = false;
};

}  // namespace workcell::safety
