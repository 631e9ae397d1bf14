#pragma once

#include <QObject>
#include <QTimer>

#include <functional>

namespace run {

/// Calls a function once, `ms` from now, unless `context` is gone by then. Longer than a QTimer can wait.
void callAfter(qint64 ms, QObject* context, const std::function<void()>& call);

/// A single-shot timer that can wait longer than a QTimer.
class LongTimer : public QObject {
    Q_OBJECT
public:
    explicit LongTimer(QObject* parent = nullptr);

    /// Starts it anew.
    void start(qint64 ms);
    void stop() { timer_.stop(); }
    bool isActive() const { return timer_.isActive(); }

signals:
    void timeout();

private:
    void startPiece();
    void onPiece();

    QTimer timer_{this};
    qint64 leftMs_ = 0;  ///< behind the piece that is being waited for
};

}  // namespace run
