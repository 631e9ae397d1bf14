#pragma once

#include <QObject>

#include <functional>

namespace sim {

/// How a controller differs from one that answers and acts at once.
struct Latency {
    int resultMs = 0;   ///< the result of a motion is written so long after its end
    int postureMs = 0;  ///< "sys.posture" shows where the arm was so long ago
    int writeMs = 0;    ///< a write of a register or output takes effect, and is answered, so much later
    int startMs = 0;    ///< the first motion of a batch begins so long after the batch was ordered
    int periodMs = 0;   ///< between two postures of a moving arm; 0: 10
    /// Across the path in a corner, mm/s²: a corner is cut no wider than the faster of its two motions needs,
    /// and taken as fast as the acceleration allows, up to that motion's speed; joint motions are not
    /// blended. 0: it is cut as wide as the zone and taken at the speed of the slower motion.
    int cornerMmPerS2 = 0;

    bool isAny() const {
        return resultMs > 0 || postureMs > 0 || writeMs > 0 || startMs > 0 || periodMs > 0 ||
               cornerMmPerS2 > 0;
    }
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
