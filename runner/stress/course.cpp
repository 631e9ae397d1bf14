#include "runner/stress/course.h"

#include "program/ports.h"
#include "program/statement.h"
#include "program/words.h"

#include <QSet>

#include <algorithm>

namespace run::stress {

namespace {

const QString line0 = QStringLiteral("line0");

QJsonObject at(qint64 ms) {
    return {{QStringLiteral("at"), double(ms)}};
}

QJsonObject on(const QJsonObject& cue) {
    return {{QStringLiteral("at"), 0}, {QStringLiteral("on"), cue}};
}

QJsonObject joined(QJsonObject one, const QJsonObject& other) {
    for (auto entry = other.begin(); entry != other.end(); ++entry) {
        one.insert(entry.key(), entry.value());
    }
    return one;
}

QJsonObject value(const QJsonValue& value) {
    return {{QStringLiteral("value"), value}};
}

QJsonObject named(const QString& name, const QJsonValue& value) {
    return {{QStringLiteral("name"), name}, {QStringLiteral("value"), value}};
}

QString onOff(bool isOn) {
    return isOn ? QStringLiteral("on") : QStringLiteral("off");
}

}  // namespace

/// Something that happens, with its weight and the percentage of "on".
struct Course::Deed {
    int weight;
    QString name;
    int onPercent = 50;
};

const std::vector<Course::Deed>& Course::deeds() {
    static const std::vector<Deed> all = {
        {22, QStringLiteral("pause")},      {16, QStringLiteral("resume")},   {8, QStringLiteral("start")},
        {5, QStringLiteral("once"), 75},    {9, QStringLiteral("power"), 20}, {6, QStringLiteral("mode")},
        {5, QStringLiteral("weld")},        {3, QStringLiteral("handWeld")},  {6, QStringLiteral("input")},
        {5, QStringLiteral("motionError")}, {4, QStringLiteral("quirk"), 80}, {4, QStringLiteral("replace")},
        {3, QStringLiteral("parameter")},   {3, QStringLiteral("fault")},     {3, QStringLiteral("place")},
        {2, QStringLiteral("enable")},      {2, QStringLiteral("insert")},    {2, QStringLiteral("remove")},
        {2, QStringLiteral("move")},        {1, QStringLiteral("quit")},      {4, QStringLiteral("device")}};
    return all;
}

Ground Ground::of(const QJsonArray& project, const QString& file, int sets, const QStringList& inputNames) {
    Ground ground;
    ground.sets = sets;
    ground.replace = {{QStringLiteral("do"), QStringLiteral("load")}, {QStringLiteral("file"), file}};
    QSet<QString> known;
    for (const QJsonValue element : project) {
        const QJsonObject record = element.toObject();
        if (record.contains(prog::field::end)) {
            continue;  // the tool set
        }
        ++ground.lines;
        const QJsonValue point = record.value(prog::field::point);
        if (point.isObject()) {
            ground.points.append(point);
        }
        const prog::Statement statement = prog::Statement::from(record);
        const QString input = statement.signal.address();
        const QString key = input + (statement.value ? QLatin1Char('1') : QLatin1Char('0'));
        if (record.value(prog::field::type) == prog::statement::waitDI && inputNames.contains(input) &&
            !known.contains(key)) {
            known.insert(key);
            ground.inputs.push_back({input, statement.value});
        }
    }
    return ground;
}

QJsonArray supplies(const std::vector<AwaitedInput>& inputs) {
    constexpr int most = 24;
    constexpr int firstMs = 150;  // longer than the executor's poll
    constexpr int eachMs = 250;
    QJsonArray entries;
    for (int nth = 0; !inputs.empty() && entries.size() + int(inputs.size()) <= most; ++nth) {
        int ms = firstMs;
        for (const AwaitedInput& input : inputs) {
            const QJsonObject cue{{QStringLiteral("kind"), QStringLiteral("wait")},
                                  {QStringLiteral("name"), QString(prog::waits::input)},
                                  {QStringLiteral("nth"), nth},
                                  {QStringLiteral("ms"), ms}};
            const QJsonObject act{{QStringLiteral("do"), QStringLiteral("input")}};
            entries.append(joined(joined(on(cue), act), named(input.name, input.level)));
            ms += eachMs;
        }
    }
    return entries;
}

Course::Course(const Ground& ground, Dice* dice) : ground_(ground), dice_(dice) {}

QJsonArray Course::draw() {
    entries_ = QJsonArray();
    constexpr int most = 15;
    for (int left = dice_->between(2, most); left > 0; --left) {
        bool isInside = false;
        const QJsonObject when = moment(&isInside);
        addChain(when, isInside);
    }
    for (const QJsonValue entry : supplies(ground_.inputs)) {
        entries_.append(entry);
    }
    addEnd();
    return entries_;
}

/// When everything is at rest, somebody pauses, and takes the power away or quits during the closing.
void Course::addEnd() {
    add(QStringLiteral("pause"), on({{QStringLiteral("kind"), QStringLiteral("end")}}), {});
    const QJsonObject when = after({1, 50, 700});
    if (dice_->chance(15)) {
        add(QStringLiteral("quit"), when, {});
    } else {
        add(QStringLiteral("power"), when, value(onOff(false)));
    }
}

/// Inside an event, stopping actions are more likely, because they find most faults there.
void Course::addChain(const QJsonObject& when, bool isInside) {
    constexpr int stopPercent = 60;
    std::vector<int> weights;
    for (const Deed& deed : deeds()) {
        const bool isPage = deed.name == QLatin1String("device");
        weights.push_back(isPage && !ground_.hasPages ? 0 : deed.weight);
    }
    const int stop = dice_->oneOf({0, 0, 4, 5, 6});
    const bool stops = isInside && dice_->chance(stopPercent);
    const Deed& deed = deeds()[std::size_t(stops ? stop : dice_->weighted(weights))];
    const bool isOn = dice_->chance(deed.onPercent);
    if (deed.name == QLatin1String("device")) {
        addDevice(when, isOn);
    } else if (isInside && deed.name == QLatin1String("parameter")) {
        add(deed.name, after({1}), keysOf(deed.name, isOn));  // the executor is reading the set
    } else {
        add(deed.name, when, keysOf(deed.name, isOn));
    }
    addFollowers(deed.name, isOn);
}

/// The usual actions after a stop: another pause, power on, a resume.
void Course::addFollowers(const QString& deed, bool isOn) {
    const QString pause = QStringLiteral("pause");
    const QString power = QStringLiteral("power");
    const bool pauses = deed == pause;
    const bool losesPower = deed == power && !isOn;
    for (int more = pauses && dice_->chance(25) ? dice_->between(1, 3) : 0; more > 0; --more) {
        add(pause, after({2, 60, 300}), {});
    }
    if (losesPower && dice_->chance(80)) {
        add(power, after({2, 2000}), value(onOff(true)));
    }
    if ((losesPower || pauses) && dice_->chance(60)) {
        const QString again = dice_->chance(85) ? QStringLiteral("resume") : QStringLiteral("start");
        add(again, after({2, 300, 3000}), keysOf(again, true));
    }
}

void Course::add(const QString& deed, const QJsonObject& when, QJsonObject keys) {
    if (!keys.contains(QStringLiteral("do"))) {
        keys.insert(QStringLiteral("do"), deed);
    }
    entries_.append(joined(when, keys));
}

/// The lock first, then the device. Sometimes a run begins while it is on.
void Course::addDevice(const QJsonObject& when, bool isOn) {
    const QString device =
        dice_->oneOf({QStringLiteral("laser"), QStringLiteral("gas"), QStringLiteral("wire")});
    const QString act = QStringLiteral("device");
    add(act, when, named(device + QStringLiteral("Lock"), true));
    add(act, after({2, 300}), joined(named(device, isOn), {{QStringLiteral("power"), 30}}));
    if (isOn && dice_->chance(50)) {
        add(QStringLiteral("start"), after({300, 3000}), keysOf(QStringLiteral("start"), true));
    }
    if (dice_->chance(50)) {
        add(act, after({300, 3000}), named(device, false));
    }
}

int Course::line() {
    const int first = dice_->chance(5) ? -1 : 0;
    return dice_->chance(40) ? 0 : dice_->between(first, std::max(0, ground_.lines - 1));
}

QJsonObject Course::setParameter() {
    const QString field = dice_->oneOf({QStringLiteral("power"), QStringLiteral("decrease_time"),
                                        QStringLiteral("open_interval"), QStringLiteral("stay_time")});
    const int set = dice_->below(std::max(1, ground_.sets));
    return {{QStringLiteral("do"), QStringLiteral("set")},
            {QStringLiteral("path"), QStringLiteral("lumo.param.#%1.%2").arg(set).arg(field)},
            {QStringLiteral("value"), dice_->oneOf({0, 5, 60, 90, 400, -100})}};
}

/// Somebody jogs to the neighbourhood of a point of the program.
QJsonObject Course::place() {
    constexpr double mm = 0.001;
    constexpr int farMm = 30;
    const QJsonObject point = dice_->anyOf(ground_.points).toObject();
    QJsonArray trans;
    for (const QJsonValue value : point.value(prog::field::trans).toArray()) {
        trans.append(value.toDouble() + dice_->between(-farMm, farMm) * mm);
    }
    return {{QStringLiteral("trans"), trans}};
}

/// The keys of an entry but for its time.
QJsonObject Course::keysOf(const QString& deed, bool isOn) {
    if (deed == QLatin1String("start")) {
        const bool isStation = dice_->chance(30) && ground_.hasStation;
        const QJsonObject start{{line0, line()}};
        return isStation ? joined(start, {{QStringLiteral("station"), true}}) : start;
    }
    if (deed == QLatin1String("once")) {
        return {{line0, line()}, {QStringLiteral("sender"), isOn}};
    }
    if (deed == QLatin1String("power")) {
        return value(onOff(isOn));
    }
    if (deed == QLatin1String("mode")) {
        return value(isOn ? QStringLiteral("auto") : QStringLiteral("manual"));
    }
    if (deed == QLatin1String("weld") || deed == QLatin1String("handWeld")) {
        return value(isOn);
    }
    if (deed == QLatin1String("input")) {
        return ground_.inputs.empty() ? named(QStringLiteral("DI1"), isOn)
                                      : named(dice_->anyOf(ground_.inputs).name, isOn);
    }
    if (deed == QLatin1String("motionError")) {
        return {{QStringLiteral("code"), -3}};
    }
    if (deed == QLatin1String("quirk")) {
        return named(quirk(), isOn);
    }
    if (deed == QLatin1String("fault")) {
        return named(dice_->oneOf({QStringLiteral("laser"), QStringLiteral("head"), QStringLiteral("chiller"),
                                   QStringLiteral("gas"), QStringLiteral("temperature")}),
                     isOn);
    }
    return deed == QLatin1String("replace") ? ground_.replace : editKeys(deed, isOn);
}

/// The keys of an entry that changes the program, changes a parameter or jogs the robot.
QJsonObject Course::editKeys(const QString& deed, bool isOn) {
    if (deed == QLatin1String("parameter")) {
        return setParameter();
    }
    if (deed == QLatin1String("place")) {
        return ground_.points.isEmpty() ? QJsonObject{{QStringLiteral("do"), QStringLiteral("pause")}}
                                        : place();
    }
    const int edited = std::max(0, line());
    if (deed == QLatin1String("insert")) {
        const QJsonObject delay{{QStringLiteral("type"), QString(prog::statement::delay)},
                                {QStringLiteral("execute"), true},
                                {QStringLiteral("delaytime"), dice_->oneOf({1, 100, 700})}};
        return {{line0, edited}, {QStringLiteral("statement"), delay}};
    }
    if (deed == QLatin1String("remove")) {
        return {{line0, edited}};
    }
    if (deed == QLatin1String("move")) {
        return {{line0, edited}, {QStringLiteral("to0"), std::max(0, line())}};
    }
    if (deed == QLatin1String("enable")) {
        return {{line0, edited}, {QStringLiteral("value"), isOn}};
    }
    return {};
}

/// How the controller misbehaves. A controller that reports a motion more than once, or before it is done,
/// lets the program run ahead: what the package cannot do anything about is not drawn.
QString Course::quirk() {
    return dice_->oneOf({QStringLiteral("bunch"), QStringLiteral("wrongKind"), QStringLiteral("slowState"),
                         QStringLiteral("late"), QStringLiteral("failAtEnd"), QStringLiteral("noResult")});
}

/// After the previous entry, by less than one of these times.
QJsonObject Course::after(std::initializer_list<int> limits) {
    if (entries_.isEmpty()) {
        return at(dice_->below(dice_->oneOf(limits)));
    }
    return on({{QStringLiteral("kind"), QStringLiteral("entry")},
               {QStringLiteral("ms"), dice_->below(dice_->oneOf(limits))}});
}

QJsonObject Course::moment(bool* isInside) {
    switch (dice_->weighted({35, 20, 20, 25})) {
        case 0:
            return inWait();
        case 1:
            *isInside = true;
            return insideEvent();
        case 2:
            return after({2, 30, 300, 3000});
        default:
            return at(dice_->below(int(std::min<qint64>(ground_.runMs + 1000, 1000000000))));
    }
}

/// During a wait or near its end.
QJsonObject Course::inWait() {
    const QString wait =
        dice_->oneOf({prog::waits::move, prog::waits::move, prog::waits::zone, prog::waits::preFlow,
                      prog::waits::dwell, prog::waits::rampDown, prog::waits::closeDelay,
                      prog::waits::postFlow, prog::waits::delay, prog::waits::input});
    const bool due = dice_->chance(35);
    const int ms = due ? dice_->between(-1, 1) : dice_->below(dice_->oneOf({3, 40, 400}));
    const int nth = dice_->chance(50) ? 0 : dice_->below(4);
    return on({{QStringLiteral("kind"), QStringLiteral("wait")},
               {QStringLiteral("name"), wait},
               {QStringLiteral("nth"), nth},
               {QStringLiteral("ms"), ms},
               {QStringLiteral("due"), due}});
}

QJsonObject Course::insideEvent() {
    const QString write = QStringLiteral("write");
    const QString kind =
        dice_->oneOf({write, write, write, write, QStringLiteral("command"), QStringLiteral("wait"),
                      QStringLiteral("state"), QStringLiteral("line"), QStringLiteral("statement"),
                      QStringLiteral("pausePoint"), QStringLiteral("set"), QStringLiteral("weldFlag"),
                      QStringLiteral("robot"), QStringLiteral("result"), QStringLiteral("output")});
    const int port = dice_->oneOf({-1, int(DO_GAS), int(DO_WIRE_ENABLE), int(DO_LASER_ENABLE),
                                   int(DO_WIRE_PULLBACK), int(AO_LASER_POWER), int(AO_WIRE_SPEED)});
    QJsonObject cue{{QStringLiteral("kind"), kind},
                    {QStringLiteral("nth"), dice_->below(dice_->oneOf({2, 6, 20}))}};
    if (kind == write && port >= 0) {
        cue.insert(QStringLiteral("name"), QString(prog::portInfo(I_PORT(port)).word));
    }
    return on(cue);
}

}  // namespace run::stress
