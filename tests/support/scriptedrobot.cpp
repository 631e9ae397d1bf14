#include "support/scriptedrobot.h"

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
    const QString key = QString("%1#%2").arg(reg).arg(bias);
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
    outputs_.clear();
    setPower("on");
    setMode("auto");
    setState("idle");
    standAt({0.0, 0.0, 0.0});
    kordservice()->offerCommand("register.write_multi", true);
    ModuleObject* values = kordservice()->dataNode("register.values");
    for (int bit = 0; bit < 16; ++bit) {
        values->set(this, QString("LUMO_DO.#%1").arg(bit), false);
        values->set(this, QString("LUMO_DI.#%1").arg(bit), false);
    }
    kordservice()->dataNode("device.io")->set(this, "DI.DI1", false);
    kordservice()->dataNode("move.default_zone")->setValue(this, 0.0);
    mark();
}

void ScriptedRobot::mark() {
    log_.clear();
    offSince_.clear();
    speeds.clear();
    markMs_ = mendo::Clock::current().elapsedMs();
}

qint64 ScriptedRobot::firstTime(const QString& what) const {
    for (const QString& line : log_) {
        if (line.section(' ', 1) == what) {
            return line.section(' ', 0, 0).toLongLong();
        }
    }
    return -1;
}

void ScriptedRobot::standAt(const QVector<double>& trans) {
    ModuleObject* const posture = kordservice()->dataNode("sys.posture");
    for (int i = 0; i < 3; ++i) {
        posture->set(this, QString("trans.#%1").arg(i), trans.at(i));
    }
}

void ScriptedRobot::onIssued(const KordCall& call) {
    static const QStringList motions{"move.j", "move.l", "move.c"};
    if (call.name.startsWith("register.") || call.name == "device.io.out.do") {
        onWrite(call);
        return;
    }
    if (motions.contains(call.name)) {
        onMotion(call);
        return;
    }
    note(call.name);
    if (call.name == "move.opr.enough" && !queue_.isEmpty() && !running_) {
        setState("moving");
        beginNext();
    } else if (call.name == "move.stop") {
        queue_.clear();
        motion_.stop();
        zone_.stop();
        running_ = false;
        setState("idle");
    } else if (call.name == "move.reset") {
        queue_.clear();
        queued_ = 0;
    }
}

void ScriptedRobot::onMotion(const KordCall& call) {
    const ModuleObject* const trajectory = call.node->c("traj");
    speeds << trajectory->c("speed")->getDouble();
    note(QString("%1 %2 %3").arg(call.name).arg(speeds.last()).arg(trajectory->c("zone")->getDouble()));
    const int number = queued_++;
    if (answersInside) {
        kordservice()->commandNode(call.name)->setValue(this, codes.value(number));
        return;
    }
    const ModuleObject* const point = call.node->c("point");
    queue_.append({call.name, position(point->c("trans")), point->c("rot")->exportToJson(), number});
}

void ScriptedRobot::beginNext() {
    running_ = true;
    zone_.start(motionMs - zoneLeadMs);  // before motion_: the tool arrives before the result
    motion_.start(motionMs);
}

void ScriptedRobot::arrive() {
    standAt(queue_.first().target);
    if (queue_.first().rot.isArray()) {
        kordservice()->dataNode("sys.posture.rot")->loadJson(this, queue_.first().rot);
    }
}

void ScriptedRobot::finish() {
    const Motion motion = queue_.takeFirst();
    running_ = false;
    if (queue_.isEmpty()) {
        setState("idle");
    } else {
        beginNext();
    }
    kordservice()->commandNode(motion.command)->setValue(this, codes.value(motion.number));
}

void ScriptedRobot::onWrite(const KordCall& call) {
    const auto argument = [&call](const char* name) { return call.argument(name).toString(); };
    if (call.name == "device.io.out.do") {
        note("out " + argument("name") + ' ' + argument("value"));
    } else if (call.name == "register.write_multi") {
        QStringList writes;
        for (const ModuleObject* record : call.node->cmobjs(false)) {
            writes << describeWrite(record);
        }
        note('[' + writes.join(", ") + ']');
    } else if (call.node) {
        note(describeWrite(call.node));
    } else {
        note((call.exec ? "exec " : "command ") + argument("name") + '.' + argument("bias") + ' ' +
             argument("value"));
    }
}

QString ScriptedRobot::describeWrite(const ModuleObject* record) {
    const QString reg = record->c("name")->getString();
    const int bias = record->c("bias")->getInt();
    const int value = record->c("value")->getInt();
    const QString name = equipment(reg, bias);
    if (value == 0 && outputs_.value(name) != 0.0) {
        offSince_.insert(name, nowMs());
    }
    outputs_.insert(name, value);
    if (reg == "LUMO_DO") {
        kordservice()->dataNode("register.values")->set(this, QString("LUMO_DO.#%1").arg(bias), value != 0);
    }
    return QString("%1 %2").arg(name).arg(value);
}

}  // namespace test
