#include "campaign/draw.h"
#include "simulator/arm.h"

#include <cmath>

namespace campaign {

namespace {

/// Writes one program, line by line, following where the robot would be.
class Writer {
public:
    explicit Writer(Random& random) : random_(random) {}

    QJsonArray program() {
        const int count = random_.between(1, 25);
        while (lines_.size() < count) {
            if (random_.chance(70)) {
                add(drawLine({50, 6, 5, 10, 8, 8, 8, 5}));
                continue;
            }
            // A seam as it should be, or nearly.
            if (random_.chance(93)) {
                add(open());
            }
            for (int left = random_.below(5); left > 0; --left) {
                add(drawLine({26, 0, 0, 3, 2, 2, 4, 0}));
            }
            if (random_.chance(88)) {
                add({{"type", "close"}});
            }
        }
        return lines_;
    }

private:
    void add(QJsonObject line) {
        if (random_.chance(8)) {
            line["execute"] = random_.oneOf({false, false, true});
        }
        lines_.append(line);
    }

    QJsonObject drawLine(const std::vector<int>& weights) {
        switch (random_.weighted(weights)) {
            case 0:
                return move();
            case 1:
                return {{"type", "close"}};
            case 2:
                return {{"type", random_.oneOf({"moveX", "", "Open", "MOVEL"})}};
            case 3:
                return {{"type", "delay"}, {"delaytime", random_.oneOf({0, 1, 19, 100, 250, 700, -50})}};
            case 4:
                return signal("setDO", "DO", random_.oneOf({"DO1", "DO2", "DO99"}),
                              random_.oneOf({"FIXTURE_DO", "TABLE_DO", "NOWHERE"}));
            case 5:
                return signal("waitDI", "DI", random_.oneOf({"DI1", "DI2"}), "FIXTURE_DI");
            case 6:
                return {{"type", "param"}, {"index", index()}};
            default:
                return open();
        }
    }

    int index() { return random_.chance(8) ? random_.oneOf({-1, 7}) : random_.below(3); }

    QJsonObject open() {
        const int speed = random_.chance(5) ? 0 : random_.between(15, 120);
        return {{"type", "open"}, {"index", index()}, {"weldspeed", speed}};
    }

    QJsonObject signal(const char* type, const QString& kind, const char* name, const char* table) {
        const QString value = random_.oneOf({"true", "false", ""});
        return {{"type", type},
                {kind.toLower() + "Name", name},
                {kind + "_type", random_.oneOf({"IO", "register"})},
                {kind + "_reg", QJsonObject{{"name", table}, {"type", "bit"}, {"bias", random_.below(2)}}},
                {"value", value},
                {"value1", value}};
    }

    static QJsonObject poseAt(const std::array<double, 3>& metres) {
        QJsonArray trans;
        for (const double value : metres) {
            trans.append(std::round(value * 1e6) / 1e6);
        }
        return {{"trans", trans}, {"rot", QJsonArray{M_PI, 0.0, 0.0}}};
    }

    QJsonObject nextPose() {
        const double home[] = {0.5, 0.0, 0.4};
        for (size_t i = 0; i < 3; ++i) {
            const double wanted = at_[i] + random_.between(-30, 30) / 1000.0;
            at_[i] = qBound(home[i] - 0.08, wanted, home[i] + 0.08);
        }
        return poseAt(at_);
    }

    QJsonObject move() {
        QJsonObject line{{"speed", random_.between(20, 250)}, {"zone", random_.between(0, 8)}};
        const QString type = random_.oneOf({"moveJ", "moveL", "moveL", "moveL", "moveC", "moveCC"});
        line["type"] = type;
        if (type == "moveJ") {
            line["point"] = joints();
        } else if (type == "moveCC") {
            // Two more points of a circle that begins where the robot is; sometimes they make none.
            const double r = random_.between(2, 12) / 1000.0;
            const double bend = random_.chance(10) ? r : 0.0;
            line["point"] = poseAt({at_[0] + r, at_[1] + r, at_[2]});
            line["point1"] = poseAt({at_[0] + 2 * r, at_[1] + 2 * bend, at_[2]});
        } else {
            line["point"] = nextPose();
            line["point1"] = type == "moveC" ? nextPose() : QJsonValue(QJsonValue::Undefined);
        }
        if (random_.chance(1)) {
            line["point"] = poseAt({3.0, 0.0, 0.4});  // out of reach
        }
        return line;
    }

    QJsonObject joints() {
        static const sim::Arm arm(6);
        sim::Joints angles = arm.home();
        QJsonArray near;
        for (double& angle : angles) {
            angle += random_.between(-40, 40) / 1000.0;
            near.append(angle);
        }
        at_ = arm.forward(angles).trans;
        QJsonObject point = poseAt(at_);
        point["near"] = near;
        return point;
    }

    Random& random_;
    QJsonArray lines_;
    std::array<double, 3> at_{0.5, 0.0, 0.4};
};

}  // namespace

QJsonArray drawProgram(Random& random) {
    return Writer(random).program();
}

}  // namespace campaign
