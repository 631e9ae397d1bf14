#include "campaign/draw.h"

#include "kinematics/arm.h"
#include "program/ports.h"
#include "runner/stress/course.h"

#include <cmath>

namespace campaign {

namespace {

/// Programs, parameter sets and settings.
class Draw {
public:
    explicit Draw(quint64 seed) : dice_(seed) {}

    run::stress::Trial trial(const QStringList& inputNames) {
        run::stress::Trial trial;
        trial.program = program();
        const QJsonArray other = program();
        const auto set = [&trial](const QString& path, const QJsonValue& value) {
            trial.settings.append(QJsonObject{{"path", path}, {"value", value}});
        };
        set("lumo.param", QJsonArray{parameterSet(), parameterSet(), parameterSet()});
        set("lumo.signalbind_program", other);
        set("lumo.execute.dt", chance(75) ? 20 : oneOf({0, -5, 1, 7, 1000}));
        if (chance(30)) {
            set(QString("lumo.port.#%1.enable")
                    .arg(oneOf({DO_GAS, DO_WIRE_ENABLE, DO_LASER_ENABLE, DO_WIRE_PULLBACK, AO_WIRE_SPEED,
                                AO_LASER_POWER, AO_LASER_FREQUENCY, AO_LASER_DUTY_CYCLE})),
                false);
        }
        trial.options = {{"noWriteMulti", chance(35)},
                         {"mode", chance(15) ? "manual" : "auto"},
                         {"weld", !chance(5)},
                         {"handWeld", chance(60)},
                         {"line", chance(40) ? 1 : between(1, trial.program->size())}};
        if (chance(10)) {
            trial.options["once"] = between(1, trial.program->size());
        }
        run::stress::Ground ground = run::stress::Ground::of(*trial.program, {}, 3, inputNames);
        ground.replace = {{"do", "set"}, {"path", "lumo.program"}, {"value", other}};
        ground.runMs = 3000;
        ground.hasPages = chance(30);
        ground.hasStation = true;
        trial.scenario = run::stress::Course(ground, &dice_).draw();
        trial.untilMs = 600000;
        drawDryRuns(&trial);
        if (chance(40)) {
            set("lumo.execute.overlap", oneOf({1, 5, 20}));
        }
        return trial;
    }

private:
    /// Sometimes the run is dry, and the switch is moved at any moment.
    void drawDryRuns(run::stress::Trial* trial) {
        const auto entry = [this](bool on) {
            return QJsonObject{
                {"at", between(0, 4000)}, {"do", "set"}, {"path", "lumo.execute.dry"}, {"value", on}};
        };
        if (chance(30)) {
            trial->settings.append(QJsonObject{{"path", "lumo.execute.dry"}, {"value", true}});
            trial->settings.append(
                QJsonObject{{"path", "lumo.execute.drySpeed"}, {"value", oneOf({100, 300, 1000, 0, -5})}});
        }
        for (int left = chance(30) ? between(1, 3) : 0; left > 0; --left) {
            trial->scenario.prepend(entry(chance(50)));
        }
    }

    int below(int n) { return dice_.below(n); }
    int between(int first, int last) { return dice_.between(first, last); }
    bool chance(int percent) { return dice_.chance(percent); }
    template <typename T>
    T oneOf(std::initializer_list<T> choices) {
        return dice_.oneOf(choices);
    }

    /// 1 to 25 lines: mostly sensible ones, sometimes disabled lines, unknown types, impossible circles or
    /// welds without an end.
    QJsonArray program() {
        QJsonArray lines;
        const auto add = [&](QJsonObject line) {
            line["execute"] = !chance(5);
            lines.append(line);
        };
        const int count = between(1, 25);
        while (lines.size() < count) {
            if (chance(70)) {
                add(statement());
                continue;
            }
            // A seam, sometimes with a fault.
            add(chance(93) ? open() : statement());
            for (int left = below(5); left > 0; --left) {
                add(chance(75) ? move() : statement());
            }
            add(chance(88) ? QJsonObject{{"type", "close"}} : statement());
        }
        return lines;
    }

    QJsonObject statement() {
        switch (dice_.weighted({50, 11, 10, 8, 8, 8, 5})) {
            case 0:
                return move();
            case 1:
                return {{"type", oneOf({"close", "moveX"})}};
            case 2:
                return {{"type", "delay"}, {"delaytime", oneOf({0, 1, 19, 100, 250, 700, -50})}};
            case 3:
                return signal("setDO", "DO", oneOf({"DO1", "DO99"}));
            case 4:
                return signal("waitDI", "DI", oneOf({"DI1", "DI2"}));
            case 5:
                return {{"type", "param"}, {"index", index()}};
            default:
                return open();
        }
    }

    int index() { return chance(8) ? oneOf({-1, 7}) : below(3); }

    QJsonObject open() {
        return {{"type", "open"}, {"index", index()}, {"weldspeed", chance(5) ? 0 : between(15, 120)}};
    }

    QJsonObject signal(const char* type, const QString& kind, const char* name) {
        const QJsonObject bit{{"name", "FIXTURE_" + kind}, {"type", "bit"}, {"bias", below(2)}};
        const QString value = oneOf({"true", "false", ""});
        return {{"type", type},
                {kind.toLower() + "Name", name},
                {kind + "_type", oneOf({"IO", "register"})},
                {kind + "_reg", bit},
                {"value", value},
                {"value1", value}};
    }

    static QJsonObject pose(double x, double y, double z) {
        return {{"trans", QJsonArray{x, y, z}}, {"rot", QJsonArray{M_PI, 0.0, 0.0}}};
    }

    QJsonObject nextPose() {
        const double home[] = {0.5, 0.0, 0.4};
        for (size_t i = 0; i < 3; ++i) {
            at_[i] = qBound(home[i] - 0.08, at_[i] + between(-30, 30) / 1000.0, home[i] + 0.08);
        }
        return pose(at_[0], at_[1], at_[2]);
    }

    QJsonObject nextJoints() {
        static const kin::Arm arm(6);
        kin::Joints angles = arm.home();
        QJsonArray near;
        for (double& angle : angles) {
            angle += between(-40, 40) / 1000.0;
            near.append(angle);
        }
        at_ = arm.forward(angles).trans;
        QJsonObject point = pose(at_[0], at_[1], at_[2]);
        point["near"] = near;
        return point;
    }

    QJsonObject move() {
        const QString type = oneOf({"moveJ", "moveL", "moveL", "moveL", "moveC", "moveCC"});
        QJsonObject line{{"type", type}, {"speed", between(20, 250)}, {"zone", between(0, 8)}};
        if (type == "moveCC") {
            // Two more points of a circle that begins where the robot is; sometimes they are collinear.
            const double r = between(2, 12) / 1000.0;
            line["point"] = pose(at_[0] + r, at_[1] + r, at_[2]);
            line["point1"] = pose(at_[0] + 2 * r, at_[1] + (chance(10) ? 2 * r : 0.0), at_[2]);
        } else {
            line["point"] = type == "moveJ" ? nextJoints() : nextPose();
            line["point1"] = type == "moveC" ? nextPose() : QJsonValue(QJsonValue::Undefined);
        }
        if (chance(1)) {
            line["point"] = pose(3.0, 0.0, 0.4);  // out of reach
        }
        return line;
    }

    /// Short times in any order.
    QJsonObject parameterSet() {
        QJsonObject set{{"power", oneOf({0, 1, 40, 70, 100, 130})}};
        for (const char* percentage : {"frequency", "ratio", "speed"}) {
            set[percentage] = between(0, 100);
        }
        for (const char* time :
             {"increase_time", "decrease_time", "stay_time", "close_delay", "open_time", "delay_before_blow",
              "delay_after_blow", "move_wire_time", "stop_wire_time", "give_wire_time"}) {
            set[time] = oneOf({0, 0, 1, 10, 20, 21, 50, 100, 200, 333, 600});
        }
        set["open_interval"] = oneOf({0, 0, 0, 1, 20, 50, 100, 333});
        return set;
    }

    run::stress::Dice dice_;
    std::array<double, 3> at_{0.5, 0.0, 0.4};
};

}  // namespace

run::stress::Trial drawTrial(quint64 seed, const QStringList& inputNames) {
    return Draw(seed).trial(inputNames);
}

}  // namespace campaign
