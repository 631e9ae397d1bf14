#include "support/scriptedrobot.h"

#include "mendo/clock.h"
#include "mendo/modulemanager.h"

#include <utility>

using mendo::ModuleObject;

namespace test {

namespace {

/// Equipment by the register that the fixture assigns its port to.
QString equipment(const QString& reg, int bias) {
    static const QHash<QString, QString> names{
        {"LUMO_DO#0", "GAS"},      {"LUMO_DO#1", "RED"},     {"LUMO_DO#5", "LASERLOCK"},
        {"LUMO_DO#6", "WIRELOCK"}, {"LUMO_DO#7", "GASLOCK"}, {"LUMO_DO#2", "WIRE"},
        {"LUMO_DO#3", "LASER"},    {"LUMO_DO#8", "PULL"},    {"LUMO_AO_0#0", "SPEED"},
        {"LUMO_AO_1#0", "POWER"},  {"LUMO_AO_2#0", "FREQ"},  {"LUMO_AO_3#0", "DUTY"}};
    const QString key = QStringLiteral("%1#%2").arg(reg).arg(bias);
    return names.value(key, key);
}

QVector<double> position(const ModuleObject* trans) {
    return {trans->c(0)->getDouble(), trans->c(1)->getDouble(), trans->c(2)->getDouble()};
}

}  // namespace

ScriptedRobot::ScriptedRobot(QObject* parent) : QObject(parent) {
    motion_.setSingleShot(true);
    zone_.setSingleShot(true);
    connect(&motion_, &QTimer::timeout, this, &ScriptedRobot::finish);
    connect(&zone_, &QTimer::timeout, this, &ScriptedRobot::arrive);
    connect(kordservice(), &KordService::issued, this, &ScriptedRobot::onIssued);
}

void ScriptedRobot::reset() {
    motion_.stop();
    zone_.stop();
    queue_.clear();
    running_ = false;
    queued_ = 0;
    motionMs = 500;
    zoneLeadMs = 0;
    codes.clear();
    answersInside = false;
    bunched = false;
    outputs_.clear();
    setPower("on");
    setMode("auto");
    setState("idle");
    standAt({0.0, 0.0, 0.0});
    kordservice()->offerCommand(QStringLiteral("register.write_multi"), true);
    ModuleObject* values = kordservice()->dataNode(QStringLiteral("register.values"));
    for (int bit = 0; bit < 16; ++bit) {
        values->set(this, QStringLiteral("LUMO_DO.#%1").arg(bit), false);
        values->set(this, QStringLiteral("LUMO_DI.#%1").arg(bit), false);
    }
    kordservice()->dataNode(QStringLiteral("device.io"))->set(this, QStringLiteral("DI.DI1"), false);
    kordservice()->dataNode(QStringLiteral("move.default_zone"))->setValue(this, 0.0);
    mark();
}

void ScriptedRobot::mark() {
    log_.clear();
    offSince_.clear();
    speeds.clear();
    markMs_ = mendo::Clock::current().elapsedMs();
}

qint64 ScriptedRobot::nowMs() const {
    return mendo::Clock::current().elapsedMs() - markMs_;
}

void ScriptedRobot::note(const QString& what) {
    log_ << QStringLiteral("%1 %2").arg(nowMs()).arg(what);
}

QStringList ScriptedRobot::logBetween(qint64 fromMs, qint64 toMs) const {
    QStringList lines;
    for (const QString& line : log_) {
        const qint64 ms = line.section(QLatin1Char(' '), 0, 0).toLongLong();
        if (ms >= fromMs && ms < toMs) {
            lines << line;
        }
    }
    return lines;
}

qint64 ScriptedRobot::firstTime(const QString& what) const {
    for (const QString& line : log_) {
        if (line.section(QLatin1Char(' '), 1) == what) {
            return line.section(QLatin1Char(' '), 0, 0).toLongLong();
        }
    }
    return -1;
}

void ScriptedRobot::setPower(const char* power) {
    m(QStringLiteral("kord.r.power"))->setValue(nullptr, QString::fromLatin1(power));
}

void ScriptedRobot::setMode(const char* mode) {
    m(QStringLiteral("kord.r.mode"))->setValue(nullptr, QString::fromLatin1(mode));
}

void ScriptedRobot::answer(const char* command, int code) {
    kordservice()->commandNode(QString::fromLatin1(command))->setValue(nullptr, code);
}

void ScriptedRobot::setState(const char* state) {
    m(QStringLiteral("kord.r.state"))->setValue(this, QString::fromLatin1(state));
}

void ScriptedRobot::standAt(const QVector<double>& trans) {
    for (int i = 0; i < 3; ++i) {
        kordservice()
            ->dataNode(QStringLiteral("sys.posture"))
            ->set(this, QStringLiteral("trans.#%1").arg(i), trans.at(i));
    }
}

void ScriptedRobot::onIssued(const KordCall& call) {
    if (call.name.startsWith(QLatin1String("register.")) || call.name == QLatin1String("device.io.out.do")) {
        onWrite(call);
        return;
    }
    if (call.name == QLatin1String("move.j") || call.name == QLatin1String("move.l") ||
        call.name == QLatin1String("move.c")) {
        const double speed = call.node->r(QStringLiteral("traj.speed"))->getDouble();
        speeds << speed;
        note(QStringLiteral("%1 %2 %3")
                 .arg(call.name)
                 .arg(speed)
                 .arg(call.node->r(QStringLiteral("traj.zone"))->getDouble()));
        const int number = queued_++;
        if (answersInside) {
            kordservice()->commandNode(call.name)->setValue(this, codes.value(number));
            return;
        }
        queue_.append({call.name, position(call.node->r(QStringLiteral("point.trans"))),
                       call.node->r(QStringLiteral("point.rot"))->exportToJson(), number});
        return;
    }
    note(call.name);
    if (call.name == QLatin1String("move.opr.enough") && !queue_.isEmpty() && !running_) {
        setState("moving");
        beginNext();
    } else if (call.name == QLatin1String("move.stop")) {
        queue_.clear();
        motion_.stop();
        zone_.stop();
        running_ = false;
        setState("idle");
    } else if (call.name == QLatin1String("move.reset")) {
        queue_.clear();
        queued_ = 0;
    }
}

void ScriptedRobot::beginNext() {
    running_ = true;
    zone_.start(motionMs - zoneLeadMs);  // first: it is there before it says so
    motion_.start(motionMs);
}

void ScriptedRobot::arrive() {
    standAt(queue_.first().target);
    if (queue_.first().rot.isArray()) {
        kordservice()->dataNode(QStringLiteral("sys.posture.rot"))->loadJson(this, queue_.first().rot);
    }
}

void ScriptedRobot::finish() {
    const Motion motion = queue_.takeFirst();
    running_ = false;
    if (std::exchange(losesQueue_, false)) {
        queue_.clear();
    }
    if (queue_.isEmpty()) {
        setState("idle");
    } else {
        beginNext();
        if (bunched && queue_.size() == 1) {
            // The last two results come in one pass of the event loop.
            motion_.start(0);
            zone_.start(0);
        }
    }
    kordservice()->commandNode(motion.command)->setValue(this, codes.value(motion.number));
}

void ScriptedRobot::onWrite(const KordCall& call) {
    if (call.name == QLatin1String("device.io.out.do")) {
        note(QStringLiteral("out %1 %2")
                 .arg(call.argument(QStringLiteral("name")).toString(),
                      call.argument(QStringLiteral("value")).toString()));
        return;
    }
    if (call.name == QLatin1String("register.write_multi")) {
        QStringList writes;
        for (const ModuleObject* record : call.node->cmobjs(false)) {
            writes << describeWrite(record);
        }
        note(QStringLiteral("[%1]").arg(writes.join(QStringLiteral(", "))));
        return;
    }
    if (call.node) {
        note(describeWrite(call.node));
        return;
    }
    note(QStringLiteral("%1 %2.%3 %4")
             .arg(call.exec ? QStringLiteral("exec") : QStringLiteral("command"),
                  call.argument(QStringLiteral("name")).toString(),
                  call.argument(QStringLiteral("bias")).toString(),
                  call.argument(QStringLiteral("value")).toString()));
}

QString ScriptedRobot::describeWrite(const ModuleObject* record) {
    const QString reg = record->c(QStringLiteral("name"))->getString();
    const int bias = record->c(QStringLiteral("bias"))->getInt();
    const int value = record->c(QStringLiteral("value"))->getInt();
    const QString name = equipment(reg, bias);
    if (value == 0 && outputs_.value(name) != 0.0) {
        offSince_.insert(name, nowMs());
    }
    outputs_.insert(name, value);
    if (reg == QLatin1String("LUMO_DO")) {
        kordservice()
            ->dataNode(QStringLiteral("register.values"))
            ->set(this, QStringLiteral("LUMO_DO.#%1").arg(bias), value != 0);
    }
    return QStringLiteral("%1 %2").arg(name).arg(value);
}

}  // namespace test
