#pragma once

#include <QObject>

#include <functional>

namespace sim {

/// How much later a controller answers and acts than it could, ms.
struct Latency {
    int resultMs = 0;   ///< the result of a motion is written so long after its end
    int postureMs = 0;  ///< "sys.posture" shows where the arm was so long ago
    int writeMs = 0;    ///< a write of a register or output takes effect, and is answered, so much later

    bool isAny() const { return resultMs > 0 || postureMs > 0 || writeMs > 0; }
};

/// Carries out what it is given after a fixed time, in the order given; with a time of 0 at once.
class DelayLine : public QObject {
    Q_OBJECT
public:
    DelayLine(int delayMs, QObject* parent) : QObject(parent), delayMs_(delayMs) {}

    void run(const std::function<void()>& action);
    /// Whether nothing is left to be carried out.
    bool idle() const { return pending_ == 0; }

signals:
    /// The last thing that was delayed has been carried out.
    void emptied();

private:
    int delayMs_;
    int pending_ = 0;
};

}  // namespace sim
