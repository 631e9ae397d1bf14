// A whole bridge. Its controller is a gantry: three slides and three wrist axes, whose angles are rx, ry and
// rz of the tool. It moves by a timer, at the ordered speed, and has its signals in an array.

#include <bridge/chords.h>
#include <bridge/plugin.h>
#include <mendo/clock.h>

#include <QHash>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <deque>
#include <utility>

using bridge::Motion;
using Place = std::array<double, 6>;  // x, y, z in m, rx, ry, rz in rad: tool pose and axes

class Signals : public bridge::SignalPort {
public:
    QVector<bridge::SignalRow> rows() const override {
        using Kind = bridge::SignalRow::Kind;
        return {{Kind::Input, "DI1", "", false, 1},
                {Kind::Output, "DO1", "", false, 1},
                {Kind::Register, "LUMO_DI", "bit", false, 16},
                {Kind::Register, "LUMO_DO", "bit", true, 16},
                {Kind::Register, "LUMO_AO_0", "int16", true, 1},
                {Kind::Register, "LUMO_AO_1", "int16", true, 1},
                {Kind::Register, "LUMO_AO_2", "int16", true, 1},
                {Kind::Register, "LUMO_AO_3", "int16", true, 1}};
    }
    void start() override {}
    void write(const QVector<bridge::SignalWrite>& writes, int ticket) override {
        for (const bridge::SignalWrite& write : writes) {
            values_[write.name + '#' + QString::number(write.bias)] = write.value;
            if (write.name == "LUMO_DO" && write.bias == 15) {  // wired to an input
                emit changed(bridge::SignalRow::Kind::Register, "LUMO_DI", 15, write.value);
            }
        }
        emit written(ticket, true);  // a real one when its device has answered
    }

private:
    QHash<QString, int> values_;
};

class Gantry : public bridge::Controller {
public:
    Gantry() {
        timer_.setTimerType(Qt::PreciseTimer);
        connect(&timer_, &QTimer::timeout, this, &Gantry::step);
    }
    int axes() const override { return 6; }
    bridge::Abilities abilities() const override { return {false, true, true}; }
    bridge::SignalPort* signalPort() override { return &signals_; }

    void start() override {  // a real one begins to connect here, and tells this when it has
        emit powerChanged(false);
        emit modeChanged(bridge::Mode::Auto);
        emit postureChanged(posture());
        emit linkChanged(true, {});
    }
    void setPower(bool on) override {
        stop();
        emit powerChanged(on);
    }
    void setMode(bridge::Mode mode) override { emit modeChanged(mode); }
    void queue(const Motion& motion) override { waiting_.push_back(motion); }
    void stop() override {
        waiting_.clear();
        halt();
    }

    void release() override {
        std::deque<Point> batch;
        Place from = path_.empty() ? at_ : path_.back().place;
        for (const Motion& motion : std::exchange(waiting_, {})) {
            const int code = plan(motion, &from, &batch);
            if (code != bridge::MotionDone) {
                batch.push_back({from, motion.speed, 0, motion.id, code});
                break;  // what comes behind is dropped
            }
        }
        round(&batch);
        path_.insert(path_.end(), batch.begin(), batch.end());
        if (!timer_.isActive()) {
            lastMs_ = mendo::Clock::current().elapsedMs();
            seconds_ = 0;
            timer_.start(2);
            emit movingChanged(true);
        }
    }

private:
    struct Point {
        Place place;
        double speed = 0, zone = 0;
        int id = 0, code = 0;  // of the motion that ends here; id 0: on the way
    };

    static Place placeOf(const bridge::Pose& p) {
        return {p.trans[0], p.trans[1], p.trans[2], p.rot[0], p.rot[1], p.rot[2]};
    }
    static bridge::Pose poseOf(const Place& p) { return {{p[0], p[1], p[2]}, {p[3], p[4], p[5]}}; }
    /// Metres; a radian of turning counts as 20 mm where the tool moves less.
    static double way(const Place& a, const Place& b) {
        return std::max(std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]),
                        0.02 * std::hypot(a[3] - b[3], a[4] - b[4], a[5] - b[5]));
    }
    static Place between(const Place& a, const Place& b, double part) {
        Place place;
        for (size_t i = 0; i < place.size(); ++i) {
            place[i] = a[i] + part * (b[i] - a[i]);
        }
        return place;
    }

    /// Appends the points of a motion; returns why it cannot be made.
    static int plan(const Motion& motion, Place* from, std::deque<Point>* batch) {
        Place to = *from;
        if (motion.kind == Motion::Kind::Joint) {
            std::copy(motion.joints.begin(), motion.joints.end(), to.begin());
        }
        for (const Motion::Via& via : motion.poses) {
            const auto arc = bridge::chords(poseOf(to), via, 0.00001);
            if (motion.kind == Motion::Kind::Arc && !arc) {
                return bridge::NoCircle;
            }
            for (size_t i = 0; motion.kind == Motion::Kind::Arc && i + 1 < arc->size(); ++i) {
                batch->push_back({placeOf((*arc)[i]), motion.speed});
            }
            to = placeOf(via.end);
        }
        if (std::hypot(to[0], to[1], to[2]) > 2) {
            return bridge::OutOfReach;
        }
        *from = to;
        batch->push_back({to, motion.speed, motion.zone, motion.id});
        return bridge::MotionDone;
    }

    /// Replaces each corner with a zone by a parabola; its middle is the end of the motion.
    void round(std::deque<Point>* batch) const {
        constexpr int parts = 10;
        std::deque<Point> rounded;
        for (size_t i = 0; i < batch->size(); ++i) {
            const Point& p = (*batch)[i];
            const Place before = i > 0 ? (*batch)[i - 1].place : path_.empty() ? at_ : path_.back().place;
            const bool isCorner =
                p.zone > 0 && p.id > 0 && i + 1 < batch->size() && (*batch)[i + 1].code == 0;
            const double in = way(before, p.place), out = isCorner ? way(p.place, (*batch)[i + 1].place) : 0;
            const double r = isCorner ? std::min({p.zone, in / 2, out / 2}) : 0;
            if (r <= 0) {
                rounded.push_back(p);
                continue;
            }
            const Place from = between(p.place, before, r / in),
                        to = between(p.place, (*batch)[i + 1].place, r / out);
            for (int k = 0; k <= parts; ++k) {
                const double u = double(k) / parts;
                const Place place = between(between(from, p.place, u), between(p.place, to, u), u);
                rounded.push_back({place, p.speed, 0, k == parts / 2 ? p.id : 0});
            }
        }
        *batch = rounded;
    }

    /// Goes on by the time since the last step, at most to the end of one motion.
    void step() {
        const qint64 now = mendo::Clock::current().elapsedMs();
        seconds_ += double(now - std::exchange(lastMs_, now)) / 1000;
        while (!path_.empty()) {
            const Point next = path_.front();
            const double needed = way(at_, next.place) / next.speed;
            if (needed > seconds_) {
                at_ = between(at_, next.place, std::exchange(seconds_, 0) / needed);
                break;
            }
            seconds_ -= needed;
            at_ = next.place;
            path_.pop_front();
            if (next.id > 0) {
                pass(next);
                return;
            }
        }
        emit postureChanged(posture());
    }

    /// Posture, then the state, then the result.
    void pass(const Point& point) {
        emit postureChanged(posture());
        if (point.code != bridge::MotionDone || path_.empty()) {
            halt();
        }
        emit finished(point.id, point.code);
    }

    void halt() {
        path_.clear();
        timer_.stop();
        emit movingChanged(false);
    }

    bridge::Posture posture() const { return {poseOf(at_), {at_.begin(), at_.end()}}; }

    Signals signals_;
    QTimer timer_;
    Place at_ = {0.5, 0, 0.4, std::acos(-1.0), 0, 0};
    std::vector<Motion> waiting_;
    std::deque<Point> path_;
    qint64 lastMs_ = 0;
    double seconds_ = 0;  // that have passed since the place at_
};

LUMO_BRIDGE_CONTROLLER(, ) {
    return new Gantry;
}
