#pragma once

#include "simulator/motionqueue.h"
#include "simulator/virtualtime.h"

#include <array>
#include <cmath>
#include <functional>

namespace motiontest {

using sim::Arm;
using sim::Joints;
using sim::MotionCommand;
using sim::MotionQueue;
using sim::VirtualTime;
using Point = std::array<double, 3>;

constexpr double kPi = 3.14159265358979323846;
const Point kHome = {0.5, 0, 0.4};
const Point kDown = {kPi, 0, 0};

inline double distance(const Point& a, const Point& b) {
    return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

/// How far a point is from the line segment between two others.
inline double offSegment(const Point& p, const Point& a, const Point& b) {
    double along = 0, length = 0;
    for (size_t i = 0; i < 3; ++i) {
        along += (p[i] - a[i]) * (b[i] - a[i]);
        length += (b[i] - a[i]) * (b[i] - a[i]);
    }
    const double t = std::min(std::max(along / length, 0.0), 1.0);
    return distance(p, {a[0] + (b[0] - a[0]) * t, a[1] + (b[1] - a[1]) * t, a[2] + (b[2] - a[2]) * t});
}

/// Seconds of a motion from rest to rest with 2 m/s².
inline double trapezoid(double length, double speed) {
    return length < speed * speed / 2 ? 2 * std::sqrt(length / 2) : length / speed + speed / 2;
}

inline qint64 wholeMs(double seconds) {
    return qint64(std::ceil(seconds * 1000 - 1e-6));
}

/// An arm at home with its queue, and what was heard from it.
class Robot : public QObject {
public:
    explicit Robot(int axes = 6) : arm(axes), queue(arm, nullptr) {
        connect(&queue, &MotionQueue::started, this, [this](int id) { note("started", id); });
        connect(&queue, &MotionQueue::passed, this, [this](int id) { note("passed", id); });
        connect(&queue, &MotionQueue::stopped, this, [this](int id) { note("stopped", id); });
        connect(&queue, &MotionQueue::dropped, this, [this](int id) { note("dropped", id); });
        connect(&queue, &MotionQueue::failed, this, [this](int id) { note("failed", id); });
        connect(&queue, &MotionQueue::braked, this, [this] { note("braked", 0); });
        connect(&queue, &MotionQueue::finished, this, [this](int id, MotionCommand::Kind, int code) {
            results << QStringLiteral("%1:%2").arg(id).arg(code);
            times << now();
            places.push_back(place());
            movingThen << queue.moving();
        });
    }

    void add(MotionCommand motion, double speed, double zone) {
        motion.id = ++ids_;
        motion.speed = speed;
        motion.zone = zone;
        queue.add(std::move(motion));
    }
    void line(const Point& to, double speed = 0.1, double zone = 0, const Point& rot = kDown) {
        MotionCommand motion;
        motion.kind = MotionCommand::Kind::Line;
        motion.poses = {{{}, {to, rot}}};
        add(motion, speed, zone);
    }
    void arcs(const std::vector<std::pair<Point, Point>>& points, double speed = 0.1, double zone = 0) {
        MotionCommand motion;
        motion.kind = MotionCommand::Kind::Arc;
        for (const auto& via : points)
            motion.poses.push_back({{via.first, kDown}, {via.second, kDown}});
        add(motion, speed, zone);
    }
    void joints(const Joints& to, double speed = 0.1, double zone = 0) {
        MotionCommand motion;
        motion.kind = MotionCommand::Kind::Joint;
        motion.joints = to;
        add(motion, speed, zone);
    }
    void go() {
        start_ = VirtualTime::instance()->nowMs();
        queue.release();
    }
    /// Lets it move to the end; `look` is called every millisecond.
    void run(const std::function<void()>& look = {}) {
        while (queue.moving()) {
            VirtualTime::instance()->advance(1);
            if (look)
                look();
        }
    }
    qint64 now() const { return VirtualTime::instance()->nowMs() - start_; }
    Point place() const { return queue.stand().pose.trans; }

    Arm arm;
    MotionQueue queue;
    QStringList events, results;
    QList<qint64> times;
    std::vector<Point> places;
    QList<bool> movingThen;

private:
    void note(const char* what, int id) {
        events << QStringLiteral("%1 %2").arg(QLatin1String(what)).arg(id);
    }
    int ids_ = 0;
    qint64 start_ = 0;
};

}  // namespace motiontest
