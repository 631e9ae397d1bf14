#pragma once

#include "kord/kordservice.h"
#include "mendo/modulemanager.h"
#include "simulator/controller.h"
#include "simulator/time/virtualtime.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QMetaEnum>

#include <array>
#include <cmath>

namespace test {

using Point = std::array<double, 3>;

constexpr double pi = 3.14159265358979323846;
const Point homePoint = {0.5, 0, 0.4};
const Point downwards = {pi, 0, 0};

inline double distance(const Point& a, const Point& b) {
    return std::hypot(std::hypot(a[0] - b[0], a[1] - b[1]), a[2] - b[2]);
}

/// Orders motions from a simulated controller as the package does, and logs what it did, with the
/// milliseconds since start().
class Robot : public QObject {
public:
    explicit Robot(const sim::Controller::Options& options = {}) : controller(kordservice(), options) {
        using sim::Controller;
        connect(&controller, &Controller::motion, this, [this](int id, Controller::MotionEvent event) {
            const QMetaEnum names = QMetaEnum::fromType<Controller::MotionEvent>();
            note(QString("%1 %2").arg(QString(names.valueToKey(int(event))).toLower()).arg(id));
        });
        connect(&controller, &Controller::result, this, [this](const QString& command, int id, int code) {
            note(QString("result %1 %2 %3").arg(command).arg(id).arg(code));
        });
        connect(&controller, &Controller::outputChanged, this,
                [this](auto name, const QVariant& value) { note(name + '=' + value.toString()); });
        connect(&controller, &Controller::inputChanged, this,
                [this](auto name, bool value) { note(name + (value ? "=true" : "=false")); });
        connect(&controller, &Controller::rejected, this,
                [this](auto name, auto reason) { note("rejected " + name + ": " + reason); });
        connect(m("kord.r.state"), &mendo::ModuleObject::changed, this,
                [this](const QVariant& value) { note(value.toString()); });
        start();
    }

    void start() {
        lines.clear();
        start_ = sim::VirtualTime::instance()->nowMs();
    }
    qint64 now() const { return sim::VirtualTime::instance()->nowMs() - start_; }
    void advance(qint64 ms) { sim::VirtualTime::instance()->advance(ms); }
    /// Waits until the controller stands still, then returns the log.
    QString log() {
        sim::VirtualTime::instance()->advanceUntil([this] { return controller.standsStill(); }, 60000);
        return lines.join(", ");
    }
    /// Releases the ordered motions and calls `check` every millisecond until the robot stands.
    template <typename Check>
    void go(Check check) {
        for (order("move.opr.enough"); !controller.standsStill(); check()) {
            advance(1);
        }
    }
    /// Plays a script such as "line 100 50 0.1 0.02; go; wait 500; mark; stop" (positions in millimetres from
    /// home) and waits until the robot stands. Returns the log since the last "mark", and the position.
    QString play(const QString& script) {
        for (const QString& step : script.split("; ")) {
            const QStringList words = step.split(' ');
            const QString word = words[0];
            const auto number = [&words](int i, double otherwise = 0) {
                return i < words.size() ? words[i].toDouble() : otherwise;
            };
            const Point to = {0.5 + number(1) / 1000, number(2) / 1000, 0.4};
            sim::Quirk quirk;
            if (word == "line") {
                line(to, number(3, 0.1), number(4));
            } else if (word == "arc") {
                arcs({{to, {0.5 + number(3) / 1000, number(4) / 1000, 0.4}}});
            } else if (word == "turn") {
                joints({0, number(1), 0, 0, 0, 0});
            } else if (word == "nowhere") {
                move("move.l", {}, 0.1, 0);
            } else if (word == "wait") {
                advance(qint64(number(1)));
            } else if (word == "mark") {
                start();
            } else if (word == "power") {
                controller.setPower(number(1) > 0);
            } else if (word == "fail") {
                controller.failMotion(int(number(1)));
            } else if (word == "release") {
                controller.stopJog();
            } else if (sim::Controller::quirkFromName(word, &quirk)) {
                controller.setQuirk(quirk, true);
            } else {
                order(qPrintable("move." + QString(word).replace("go", "opr.enough")));
            }
        }
        const QString lastLog = log();
        return QString("%1 at %2 %3").arg(lastLog).arg(position()[0] * 1000 - 500).arg(position()[1] * 1000);
    }

    void order(const char* name) { kordservice()->command(this, name, mendo::ModuleObject::null()); }
    void move(const QString& command, QJsonObject arguments, double speed, double zone) {
        mendo::ModuleObject node("tmp");
        arguments["traj"] = QJsonObject{{"speed", speed}, {"zone", zone}};
        node.loadJson(this, arguments);
        kordservice()->command(this, command, &node);
    }
    static QJsonObject pose(const Point& trans, const Point& rot = downwards) {
        return {{"trans", QJsonArray{trans[0], trans[1], trans[2]}},
                {"rot", QJsonArray{rot[0], rot[1], rot[2]}}};
    }
    void line(const Point& to, double speed = 0.1, double zone = 0, const Point& rot = downwards) {
        move("move.l", {{"point", pose(to, rot)}}, speed, zone);
    }
    void arcs(const std::vector<std::pair<Point, Point>>& parts) {
        QJsonArray path;
        for (const auto& part : parts) {
            path.append(QJsonObject{{"aux", pose(part.first)}, {"point", pose(part.second)}});
        }
        move("move.c", {{"path", path}}, 0.1, 0);
    }
    /// Orders a joint motion by these angles; returns the target.
    sim::Joints joints(const sim::Joints& by) {
        sim::Joints target = controller.posture().joints;
        QJsonArray point;
        for (size_t i = 0; i < target.size(); ++i) {
            point.append(target[i] += by[i]);
        }
        move("move.j", {{"point", point}}, 0.1, 0);
        return target;
    }
    void write(const char* name, const QVariant& value, int bias = 0) {
        const QVariantHash record{{"name", name}, {"value", value}, {"bias", bias}};
        kordservice()->execCommand(this, "register.write", record);
    }
    Point position() const { return controller.posture().pose.trans; }

    sim::Controller controller;
    QStringList lines;

private:
    void note(const QString& what) { lines << QString::number(now()) + ' ' + what; }
    qint64 start_ = 0;
};

}  // namespace test
