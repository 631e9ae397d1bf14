// Draws scenarios: programs, parameter sets, actions and their times.

#include "campaign/campaign.h"
#include "simulator/arm.h"

#include <QJsonArray>

#include <cmath>
#include <numeric>
#include <random>

namespace campaign {

namespace {

/// An action with its weight, the percentage of "on", and its possible names.
struct ActionKind {
    int weight;
    QString name;
    int onPercent = 50;
    QVector<QString> names{""};
};

const QVector<ActionKind> actionKinds{
    {22, "pause"},
    {16, "resume"},
    {8, "start"},
    {5, "once", 75},
    {9, "power", 20},
    {6, "mode"},
    {8, "switch", 50, {"weldbtn", "weldbtn", "handweldbtn"}},
    {8, "input", 50, {"DI1", "DI2", "FIXTURE_DI.#0", "FIXTURE_DI.#1"}},
    {5, "fail"},
    {2, "quirk", 80, {"bunch", "wrongKind", "slowState"}},
    {4, "replace", 80},
    {3, "param", 50, {"power", "decrease_time", "open_interval", "stay_time"}},
    {1, "quit"}};

/// Draws a scenario. The numbers of a seed are the same on every machine: the engine is standardised, and the
/// standard library's distributions, which are not, are not used.
class Draw {
public:
    explicit Draw(quint64 seed) : engine_(seed) {}

    QJsonObject scenario() {
        const QJsonArray lines = program();
        const QJsonArray other = program();
        const QString port =
            oneOf({"GAS", "WIRE", "LASER", "PULLBACK", "WIRE_SPEED", "POWER", "FREQUENCY", "DUTY_CYCLE"});
        return {{"program", lines},
                {"other", other},
                {"sets", QJsonArray{parameterSet(), parameterSet(), parameterSet()}},
                {"disabled", chance(30) ? port : ""},
                {"noMulti", chance(35)},
                {"manual", chance(15)},
                {"noWeld", chance(5)},
                {"handWeld", chance(60)},
                {"dt", chance(75) ? 20 : oneOf({0, -5, 1, 7, 1000})},
                {"endExecutor", chance(15)},
                {"endMs", below(oneOf({1, 50, 700}))},
                {"actions", course(lines.size())}};
    }

private:
    /// 0 to n - 1.
    int below(int n) { return int(engine_() % quint64(n)); }
    int between(int first, int last) { return first + below(last - first + 1); }
    bool chance(int percent) { return below(100) < percent; }
    template <typename T>
    T oneOf(std::initializer_list<T> choices) {
        return choices.begin()[below(int(choices.size()))];
    }
    /// The index of a weight, with a probability in proportion to it.
    int weighted(const std::vector<int>& weights) {
        int left = below(std::accumulate(weights.begin(), weights.end(), 0));
        int position = 0;
        while (left >= weights[size_t(position)]) {
            left -= weights[size_t(position++)];
        }
        return position;
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
        switch (weighted({50, 11, 10, 8, 8, 8, 5})) {
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
        static const sim::Arm arm(6);
        sim::Joints angles = arm.home();
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

    /// The actions with their times.
    QJsonArray course(int lineCount) {
        QJsonArray actions;
        const auto add = [&](const ActionKind& kind, QJsonObject action) {
            action["do"] = kind.name;
            action["on"] = chance(kind.onPercent);
            action["name"] = kind.names[below(kind.names.size())];
            action["mode"] = oneOf({0, 0, 0, 0, 0, 1, 1, 2});
            action["line"] = chance(40) ? 0 : between(chance(5) ? -1 : 0, lineCount - 1);
            action["value"] = oneOf({0, 5, 60, 90, 400, -100});
            actions.append(action);
        };
        std::vector<int> weights;
        for (const ActionKind& kind : actionKinds) {
            weights.push_back(kind.weight);
        }
        add(actionKinds[chance(90) ? 2 : 3], {});
        for (int left = between(2, 15); left > 0; --left) {
            const QJsonObject when = moment();
            const bool isInside = when.contains("of") && !when.contains("ms");
            // Inside a write, stopping actions are more likely, because they find most faults there.
            const int stop = oneOf({0, 0, 4, 5, 6});
            const ActionKind& kind = actionKinds[isInside && chance(60) ? stop : weighted(weights)];
            add(kind, kind.name == "param" && isInside ? after({1}) : when);
            // The usual actions after a stop: power on, another pause, a resume.
            const bool losesPower = kind.name == "power" && !actions.last()["on"].toBool();
            const bool pauses = kind.name == "pause";
            for (int more = pauses && chance(25) ? between(1, 3) : 0; more > 0; --more) {
                add(kind, after({2, 60, 300}));
            }
            if (losesPower && chance(80)) {
                add({0, "power", 100}, after({2, 2000}));
            }
            if ((losesPower || pauses) && chance(60)) {
                add(actionKinds[chance(85) ? 1 : 2], after({2, 300, 3000}));
            }
        }
        return actions;
    }

    /// After the previous action, by less than one of these times.
    QJsonObject after(std::initializer_list<int> limits) {
        return {{"after", true}, {"ms", below(oneOf(limits))}};
    }

    QJsonObject moment() {
        if (chance(50)) {
            return inWait();
        }
        return chance(50) ? insideEvent() : after({2, 30, 300, 3000});
    }

    /// During a wait or near its end.
    QJsonObject inWait() {
        const QString wait = oneOf({"move", "move", "zone", "preflow", "dwell", "rampdown", "closedelay",
                                    "postflow", "delay", "input"});
        const bool due = chance(35);
        const int ms = due ? between(-1, 1) : below(oneOf({3, 40, 400}));
        const int nth = chance(50) ? 0 : below(4);
        return {{"of", "Activity"}, {"text", wait}, {"nth", nth}, {"due", due}, {"ms", ms}};
    }

    QJsonObject insideEvent() {
        const QString kind =
            oneOf({"Write", "Write", "Write", "Write", "Command", "Activity", "State", "Line", "Statement",
                   "Node", "Param", "WeldFlag", "Robot", "Result", "Output"});
        const QString port = oneOf({"", "GAS", "WIRE", "LASER", "PULLBACK", "POWER", "WIRE_SPEED"});
        return {{"of", kind}, {"text", kind == "Write" ? port : ""}, {"nth", below(oneOf({2, 6, 20}))}};
    }

    std::mt19937_64 engine_;
    std::array<double, 3> at_{0.5, 0.0, 0.4};
};

}  // namespace

QJsonObject drawScenario(quint64 seed) {
    return Draw(seed).scenario();
}

}  // namespace campaign
