#include "campaign/programs.h"

#include "simulator/arm.h"

#include <QJsonObject>

#include <array>
#include <cmath>

namespace campaign {

namespace {

using Position = std::array<double, 3>;  // metres

QJsonArray asList(const Position& position) {
    QJsonArray list;
    for (const double metres : position) {
        list.append(std::round(metres * 1e6) / 1e6);
    }
    return list;
}

QJsonObject poseAt(const Position& position) {
    return {{"trans", asList(position)}, {"rot", QJsonArray{M_PI, 0.0, 0.0}}, {"near", QJsonArray()}};
}

/// Writes one program, line by line, following where the robot would be.
class Writer {
public:
    explicit Writer(Random& random) : random_(random) {}

    QJsonArray program() {
        const int count = random_.between(1, 25);
        while (lines_.size() < count) {
            if (random_.chance(30)) {
                weld();
            } else {
                add(single());
            }
        }
        while (lines_.size() > 25) {
            lines_.removeLast();
        }
        return lines_;
    }

private:
    /// A seam as it should be, or nearly.
    void weld() {
        if (!random_.chance(7)) {
            add(open());
        }
        const int count = random_.between(0, 4);
        for (int i = 0; i < count; ++i) {
            add(random_.chance(70) ? move() : inSeam());
        }
        if (!random_.chance(12)) {
            add({{"type", "close"}});
        }
    }

    QJsonObject single() {
        switch (random_.weighted({50, 10, 8, 8, 8, 6, 5, 5})) {
            case 0:
                return move();
            case 1:
                return delay();
            case 2:
                return output();
            case 3:
                return input();
            case 4:
                return open();
            case 5:
                return {{"type", "close"}};
            case 6:
                return param();
            default:
                return {{"type", random_.oneOf({"moveX", "", "Open", "MOVEL"})}};
        }
    }

    QJsonObject inSeam() {
        switch (random_.weighted({4, 3, 2, 2})) {
            case 0:
                return param();
            case 1:
                return delay();
            case 2:
                return output();
            default:
                return input();
        }
    }

    void add(QJsonObject line) {
        if (random_.chance(8)) {
            line["execute"] = random_.oneOf({false, false, true});
        }
        lines_.append(line);
    }

    Position next() {
        const Position home{0.5, 0.0, 0.4};
        for (int i = 0; i < 3; ++i) {
            const double wanted = at_[i] + random_.between(-30, 30) / 1000.0;
            at_[i] = std::min(std::max(wanted, home[i] - 0.08), home[i] + 0.08);
        }
        return at_;
    }

    QJsonObject move() {
        QJsonObject line{{"speed", random_.between(20, 250)}, {"zone", random_.between(0, 8)}};
        switch (random_.weighted({3, 8, 3, 2})) {
            case 0:
                line["type"] = "moveJ";
                line["point"] = joints();
                break;
            case 1:
                line["type"] = "moveL";
                line["point"] = poseAt(next());
                break;
            case 2:
                line["type"] = "moveC";
                line["point"] = poseAt(next());
                line["point1"] = poseAt(next());
                break;
            default:
                line["type"] = "moveCC";
                circle(line);
        }
        return random_.chance(7) ? spoiled(line) : line;
    }

    QJsonObject joints() {
        static const sim::Arm arm(6);
        sim::Joints angles = arm.home();
        for (double& angle : angles) {
            angle += random_.between(-40, 40) / 1000.0;
        }
        const sim::Pose pose = arm.forward(angles);
        at_ = pose.trans;
        QJsonArray near;
        for (const double angle : angles) {
            near.append(angle);
        }
        QJsonObject point = poseAt(at_);
        point["near"] = near;
        return point;
    }

    /// Two more points of a circle that begins where the robot is; sometimes they make none.
    void circle(QJsonObject& line) {
        const double r = random_.between(2, 12) / 1000.0;
        Position second = at_;
        Position third = at_;
        second[0] += r;
        second[1] += r;
        third[0] += 2 * r;
        third[1] += random_.chance(10) ? 2 * r : 0.0;
        if (random_.chance(4)) {
            third = second;
        }
        line["point"] = poseAt(second);
        line["point1"] = poseAt(third);
    }

    QJsonObject spoiled(QJsonObject line) {
        switch (random_.below(6)) {
            case 0:
                line["point"] = QJsonObject();
                break;
            case 1:
                line["speed"] = random_.oneOf({0, -20});
                break;
            case 2:
                line["point"] = poseAt({3.0, 0.0, 0.4});
                break;
            case 3:
                line.remove("zone");
                break;
            case 4:
                line["speed"] = "60.0";
                line["zone"] = "2";
                break;
            default:
                line.remove("point");
        }
        return line;
    }

    QJsonObject open() {
        QJsonObject line{{"type", "open"}, {"index", index()}, {"weldspeed", random_.between(15, 120)}};
        if (random_.chance(5)) {
            line["weldspeed"] = 0;
        }
        return line;
    }

    QJsonObject param() { return {{"type", "param"}, {"index", index()}}; }
    int index() { return random_.chance(8) ? random_.oneOf({-1, 7}) : random_.below(3); }

    QJsonObject delay() {
        return {{"type", "delay"}, {"delaytime", random_.oneOf({0, 1, 19, 100, 250, 700, -50})}};
    }

    QJsonObject output() {
        const char* const value = random_.oneOf({"true", "false", ""});
        if (random_.chance(50)) {
            const char* const name = random_.oneOf({"DO1", "DO2", "DO3", "DO99"});
            return {{"type", "setDO"}, {"DO_type", "IO"}, {"doName", name}, {"value", value}};
        }
        const QJsonObject reg{{"name", random_.oneOf({"FIXTURE_DO", "TABLE_DO", "NOWHERE"})},
                              {"type", "bit"},
                              {"bias", random_.below(5)}};
        return {{"type", "setDO"}, {"DO_type", "register"}, {"DO_reg", reg}, {"value", value}};
    }

    QJsonObject input() {
        const char* const value = random_.oneOf({"true", "false", ""});
        if (random_.chance(60)) {
            const char* const name = random_.chance(4) ? "DI99" : random_.oneOf({"DI1", "DI2"});
            return {{"type", "waitDI"}, {"DI_type", "IO"}, {"diName", name}, {"value1", value}};
        }
        const QJsonObject reg{{"name", "FIXTURE_DI"}, {"bias", random_.below(2)}};
        return {{"type", "waitDI"}, {"DI_type", "register"}, {"DI_reg", reg}, {"value1", value}};
    }

    Random& random_;
    QJsonArray lines_;
    Position at_{0.5, 0.0, 0.4};
};

}  // namespace

QJsonArray drawProgram(Random& random) {
    return Writer(random).program();
}

QJsonArray drawSets(Random& random) {
    static const char* const times[] = {"increase_time",     "decrease_time",    "stay_time",
                                        "close_delay",       "open_time",        "open_interval",
                                        "delay_before_blow", "delay_after_blow", "move_wire_time",
                                        "stop_wire_time",    "give_wire_time"};
    QJsonArray sets;
    const int count = random.between(1, 3);
    for (int i = 0; i < count; ++i) {
        QJsonObject set{{"name", QStringLiteral("set %1").arg(i)},
                        {"power", random.oneOf({0, 1, 40, 70, 100, 130})},
                        {"frequency", random.between(0, 100)},
                        {"ratio", random.between(0, 100)},
                        {"speed", random.between(0, 100)}};
        for (const char* const time : times) {
            set[QLatin1String(time)] = random.oneOf({0, 0, 1, 10, 20, 21, 50, 100, 200, 333, 600});
        }
        if (random.chance(60)) {
            set["open_interval"] = 0;
        }
        if (random.chance(6)) {
            set.remove(QLatin1String(times[random.below(11)]));
        }
        if (random.chance(6)) {
            set[QLatin1String(times[random.below(11)])] = -100;
        }
        sets.append(set);
    }
    return sets;
}

}  // namespace campaign
