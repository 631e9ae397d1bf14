// How scenarios are drawn: which actions, and when.

#include "campaign/draw.h"

#include <QVariant>

namespace campaign {

namespace {

/// A moment within a wait, or around its end.
QJsonObject inWait(Random& random) {
    const QString wait = random.oneOf(
        {"move", "move", "zone", "preflow", "dwell", "rampdown", "closedelay", "postflow", "delay", "input"});
    QJsonObject when{{"when", "wait"}, {"of", wait}, {"nth", random.chance(50) ? 0 : random.below(4)}};
    when["behind"] = random.chance(50);
    when["due"] = random.chance(35);
    if (when["due"].toBool()) {
        when["ms"] = random.between(-1, 1);
    } else if (wait == "zone" && random.chance(40)) {
        when["ms"] = 50 * random.between(1, 25);  // in one pass of the event loop with the executor's poll
    } else if (wait == "input" && random.chance(40)) {
        when["ms"] = 100 * random.between(1, 4);
    } else {
        when["ms"] = random.below(random.oneOf({3, 40, 400}));
    }
    return when;
}

QJsonObject insideEvent(Random& random) {
    static const char* const kinds[] = {"Write", "Command", "Activity", "State", "Line",   "Statement",
                                        "Node",  "Param",   "WeldFlag", "Robot", "Result", "Output"};
    const QString kind = kinds[random.weighted({10, 4, 3, 3, 2, 2, 2, 1, 2, 2, 3, 1})];
    QJsonObject when{{"when", "inside"}, {"of", kind}, {"nth", random.below(random.oneOf({2, 6, 20}))}};
    if (kind == "Write") {
        when["text"] = random.oneOf({"", "GAS", "WIRE", "LASER", "PULLBACK", "POWER", "WIRE_SPEED"});
    } else if (kind == "Command") {
        when["text"] = random.oneOf({"", "move.reset", "move.stop", "move.stop", "move.opr.enough"});
    } else if (kind == "Node") {
        when["text"] = random.oneOf({"", "lumo.current.pausepoint"});
    } else if (kind == "Result") {
        when["early"] = random.chance(50);
    }
    return when;
}

QJsonObject after(int ms) {
    return {{"when", "after"}, {"ms", ms}};
}

QJsonObject drawMoment(Random& random) {
    switch (random.weighted({50, 22, 18, 10})) {
        case 0:
            return inWait(random);
        case 1:
            return insideEvent(random);
        case 2:
            return after(random.below(random.oneOf({2, 30, 300, 3000})));
        default:
            return {{"ms", random.below(15000)}};
    }
}

/// What is done, how often, and with which of these names and numbers; without numbers it is a line.
struct Deed {
    int weight;
    QString name;
    int onPercent = 50;
    QStringList names{""};
    QVector<int> numbers{};
};

const Deed deeds[] = {{22, "pause"},
                      {16, "resume"},
                      {8, "start"},
                      {5, "once", 75},
                      {9, "power", 20},
                      {6, "mode"},
                      {5, "weld"},
                      {3, "handWeld"},
                      {8, "input", 50, {"DI1", "DI2", "FIXTURE_DI.#0", "FIXTURE_DI.#1"}},
                      {5, "fail", 50, {""}, {-1, -3, -42}},
                      {4, "quirk", 80, {"bunch", "sync", "late", "double", "wrongKind", "slowState"}},
                      {4, "replace", 80},
                      {4, "edit", 50, {"skip", "speed", "insert", "remove", "reorder"}},
                      {3, "result", 50, {"move.j", "move.l", "move.c"}, {0, 0, -7}},
                      {3,
                       "param",
                       50,
                       {"power", "decrease_time", "open_interval", "stay_time", "close_delay",
                        "delay_after_blow", "stop_wire_time", "give_wire_time"},
                       {0, 5, 60, 90, 400, -100}},
                      {2, "fault", 50, {"laser", "head", "chiller", "gas", "temperature"}},
                      {4, "answer"},
                      {1, "clear"},
                      {1, "quit"}};

/// Gives one field another value, as in a file that no dialog wrote, or takes it away.
QJsonObject spoil(QJsonObject record, Random& random) {
    static const QJsonArray oddValues{20000,
                                      -1e9,
                                      0.001,
                                      "500",
                                      "-60.5",
                                      "much",
                                      "",
                                      true,
                                      QJsonValue(),
                                      -1,
                                      QJsonArray{1, "x"},
                                      QJsonObject{{"trans", 5}}};
    const QStringList fields = record.keys();
    const QString field = fields.value(random.below(std::max(1, int(fields.size()))));
    const QJsonObject inner = record[field].toObject();
    if (random.chance(15)) {
        record.remove(field);
    } else if (!inner.isEmpty() && random.chance(60)) {
        record[field] = spoil(inner, random);
    } else {
        record[field] = oddValues[random.below(oddValues.size())];
    }
    return record;
}

QJsonArray spoilSome(QJsonArray records, int percent, Random& random) {
    for (QJsonValueRef record : records) {
        record = random.chance(percent) ? spoil(record.toObject(), random) : record.toObject();
    }
    return records;
}

/// One to three parameter sets with short times, in any order, and values that do not belong there.
QJsonArray drawSets(Random& random) {
    QJsonArray sets;
    for (int left = random.between(1, 3); left > 0; --left) {
        QJsonObject set{{"power", random.oneOf({0, 1, 40, 70, 100, 130})}};
        for (const char* share : {"frequency", "ratio", "speed"}) {
            set[share] = random.between(0, 100);
        }
        for (const char* time : {"increase_time", "decrease_time", "stay_time", "close_delay", "open_time",
                                 "open_interval", "delay_before_blow", "delay_after_blow", "move_wire_time",
                                 "stop_wire_time", "give_wire_time"}) {
            set[time] = random.oneOf({0, 0, 1, 10, 20, 21, 50, 100, 200, 333, 600});
        }
        if (random.chance(60)) {
            set["open_interval"] = 0;
        }
        sets.append(set);
    }
    return sets;
}

/// The actions of a schedule, each with its moment.
class Course {
public:
    Course(Random& random, int lineCount) : random_(random), lineCount_(lineCount) {}

    QJsonArray draw() {
        add(random_.chance(90) ? "start" : "once", {});
        for (int left = random_.between(2, 15); left > 0; --left) {
            const QJsonObject when = drawMoment(random_);
            QString name = deeds[random_.weighted(weights())].name;
            if (when["when"] == "inside" && random_.chance(60)) {
                // What stops something is the hardest to bear in the middle of a write.
                name = random_.oneOf({"pause", "pause", "power", "weld", "mode"});
            }
            add(name, name == "param" && when["when"] == "inside" ? after(0) : when);
            if (name == "pause" || (name == "power" && !actions_.last()["on"].toBool())) {
                followStop(name == "power");
            }
        }
        return actions_;
    }

private:
    static std::vector<int> weights() {
        std::vector<int> all;
        std::transform(std::begin(deeds), std::end(deeds), std::back_inserter(all),
                       [](const Deed& deed) { return deed.weight; });
        return all;
    }

    void add(const QString& name, const QJsonObject& when, bool on = false) {
        const Deed& deed = *std::find_if(std::begin(deeds), std::end(deeds),
                                         [&name](const Deed& other) { return other.name == name; });
        QJsonObject action = when;
        action["do"] = name;
        action["on"] = random_.chance(deed.onPercent) || on;
        action["name"] = deed.names[random_.below(deed.names.size())];
        action["mode"] = random_.oneOf({0, 0, 0, 0, 0, 1, 1, 2});
        const int line = random_.chance(40) ? 0 : random_.below(lineCount_);
        action["number"] = !deed.numbers.isEmpty() ? deed.numbers[random_.below(deed.numbers.size())]
                           : random_.chance(5)     ? random_.oneOf({-1, lineCount_})
                                                   : line;
        // A value written in a listener of the same value would never reach those behind it.
        if (name == "result" && when["of"] == "Result") {
            action["early"] = false;
        }
        actions_.append(action);
    }

    /// What usually comes after a stop: the power returns, somebody presses again, the run is resumed.
    void followStop(bool wasPower) {
        if (wasPower && random_.chance(80)) {
            add("power", after(random_.below(random_.oneOf({2, 2000}))), true);
        }
        if (!wasPower && random_.chance(25)) {
            // A second pause, or a stop input that is held on.
            const int ms = random_.below(random_.oneOf({2, 60, 300}));
            for (int left = random_.chance(25) ? random_.between(2, 5) : 1; left > 0; --left) {
                add("pause", after(ms));
            }
            if (random_.chance(40)) {
                add("pause", insideEvent(random_));
            }
        }
        if (random_.chance(60)) {
            const char* const name = random_.chance(85) ? "resume" : "start";
            add(name, after(random_.below(random_.oneOf({2, 300, 3000}))));
        }
    }

    Random& random_;
    int lineCount_;
    QJsonArray actions_;
};

}  // namespace

QJsonObject drawScenario(quint64 seed) {
    Random random(seed);
    const int oddPercent = random.chance(12) ? 25 : 1;
    const QJsonArray program = drawProgram(random);
    const QJsonArray other = drawProgram(random);
    QJsonArray disabled;
    for (const char* port :
         {"GAS", "WIRE", "LASER", "PULLBACK", "WIRE_SPEED", "POWER", "FREQUENCY", "DUTY_CYCLE"}) {
        if (random.chance(4)) {
            disabled.append(port);
        }
    }
    return {{"seed", double(seed)},
            {"program", spoilSome(program, oddPercent, random)},
            {"other", spoilSome(other, oddPercent, random)},
            {"sets", spoilSome(spoilSome(drawSets(random), 2 * oddPercent, random), oddPercent, random)},
            {"disabled", disabled},
            {"noMulti", random.chance(35)},
            {"manual", random.chance(15)},
            {"noWeld", random.chance(5)},
            {"handWeld", random.chance(60)},
            {"axes", random.chance(90) ? 6 : 7},
            {"dt", random.chance(75) ? 20 : random.oneOf({0, -5, 1, 7, 1000})},
            {"endExecutor", random.chance(15)},
            {"endMs", random.below(random.oneOf({1, 50, 700}))},
            {"actions", Course(random, program.size()).draw()}};
}

}  // namespace campaign
