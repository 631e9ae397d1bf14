#include "weldcell.h"

#include "executor/lumoexecutor.h"
#include "gantu/bmodule.h"
#include "kord/managerhelper.h"
#include "mendo/log.h"
#include "module/globals.h"
#include "panel/lumowidget.h"

#include <QDir>
#include <QJsonObject>

namespace bench {

namespace {

QJsonObject move(int number) {
    const QJsonObject frame{{"name", "tool0"}, {"trans", QJsonArray{0, 0, 0}}};
    return {{"type", "moveL"},
            {"point", QJsonObject{{"trans", QJsonArray{0.001 * number, 0.2, 0.3}}}},
            {"speed", 20},
            {"zone", 2},
            {"toolset", QJsonObject{{"end", frame}, {"ref", frame}}},
            {"note", QString()},
            {"execute", true}};
}

QJsonObject open() {
    return {{"type", "open"},         {"index", 0},          {"weldspeed", "20"}, {"laserPower", "50"},
            {"laserDutyCycle", "50"}, {"wireEnable", false}, {"execute", true}};
}

QJsonObject parameterSet() {
    QJsonObject set{{"name", "A"}, {"power", 50}, {"frequency", 40}, {"ratio", 30}, {"speed", 25}};
    for (const char* time :
         {"increase_time", "decrease_time", "stay_time", "close_delay", "open_time", "open_interval",
          "delay_before_blow", "delay_after_blow", "move_wire_time", "stop_wire_time", "give_wire_time"}) {
        set.insert(QLatin1String(time), 0);
    }
    return set;
}

}  // namespace

QJsonArray weldProgram(int lines) {
    QJsonArray statements;
    for (int line = 0; line < lines; ++line) {
        if (line % 20 == 0) {
            statements.append(open());
        } else if (line % 20 == 10) {
            statements.append(QJsonObject{{"type", "close"}, {"execute", true}});
        } else {
            statements.append(move(line));
        }
    }
    return statements;
}

QJsonArray moveProgram(int lines) {
    QJsonArray statements;
    for (int line = 0; line < lines; ++line) {
        statements.append(move(line));
    }
    return statements;
}

PromptRobot::PromptRobot() {
    next_.setSingleShot(true);
    next_.setTimerType(Qt::PreciseTimer);
    connect(&next_, &QTimer::timeout, this, &PromptRobot::answer);
    connect(kordservice(), &KordService::issued, this, &PromptRobot::onIssued);
}

void PromptRobot::onIssued(const KordCall& call) {
    if (call.name == QLatin1String("register.write")) {
        if (written) {
            written(call.argument(QStringLiteral("name")).toString(),
                    call.argument(QStringLiteral("bias")).toInt(),
                    call.argument(QStringLiteral("value")).toInt());
        }
    } else if (call.name == QLatin1String("device.io.out.do")) {
        if (written) {
            written(call.argument(QStringLiteral("name")).toString(), 0,
                    call.argument(QStringLiteral("value")).toInt());
        }
    } else if (call.name == QLatin1String("move.opr.enough")) {
        if (first_ < queue_.size()) {
            next_.start(answerMs);
        }
    } else if (call.name == QLatin1String("move.reset") || call.name == QLatin1String("move.stop")) {
        queue_.clear();
        first_ = 0;
        next_.stop();
    } else if (call.name.startsWith(QLatin1String("move."))) {
        queue_.append(call.name);
    }
}

void PromptRobot::answer() {
    const QString command = queue_.at(first_++);
    if (first_ < queue_.size()) {
        next_.start(answerMs);
    }
    kordservice()->commandNode(command)->setValue(this, 0);
}

WeldCell::WeldCell() : center_(std::make_unique<QStackedWidget>()) {
    QDir::setCurrent(folder_.path());
    mendo::LogHub::instance()->setConsole(false);
    kord::ManagerHelper::instance()->module()->mobj()->set(this, QStringLiteral("language"),
                                                           QStringLiteral("cn"));
    center_->addWidget(new QWidget);
    setInstantiatedCenterWidget(center_.get());
    LumoWidget page;  // makes the tree and the executor, which outlive the page
    m(QStringLiteral("kord.r.power"))->setValue(this, QStringLiteral("on"));
    m(QStringLiteral("kord.r.mode"))->setValue(this, QStringLiteral("auto"));
    m(QStringLiteral("lumo.param"))->loadJson(this, QJsonArray{parameterSet()});
    m(QStringLiteral("lumo.allWeldBtnstatus.weldbtn"))->setValue(this, true);
    kordservice()->offerCommand(QStringLiteral("register.write_multi"), false);
    assignPorts();
}

WeldCell::~WeldCell() {
    setInstantiatedCenterWidget(nullptr);
    QDir::setCurrent(QDir::tempPath());
}

void WeldCell::assignPorts() {
    const char* const names[] = {"LUMO_DI.#0", "LUMO_DI.#1", "LUMO_DI.#2", "LUMO_DI.#3", "LUMO_DI.#4",
                                 "LUMO_DI.#5", "LUMO_DO.#0", "LUMO_DO.#1", "LUMO_DO.#2", "LUMO_DO.#3",
                                 "LUMO_DO.#4", "LUMO_DO.#5", "LUMO_DO.#6", "LUMO_DO.#7", "LUMO_DO.#8",
                                 "LUMO_AO_0",  "LUMO_AO_1",  "LUMO_AO_2",  "LUMO_AO_3"};
    int number = 0;
    for (const char* name : names) {
        ModuleObject* const port = m(QStringLiteral("lumo.port"))->c(number++);
        port->set(this, QStringLiteral("name"), QString::fromLatin1(name));
        port->set(this, QStringLiteral("enable"), true);
    }
}

void WeldCell::load(const QJsonArray& program) {
    m(QStringLiteral("lumo.program"))->loadJson(this, program);
}

void WeldCell::setParam(const char* field, double value) {
    m(QStringLiteral("lumo.param"))->c(0)->set(this, QString::fromLatin1(field), value);
}

void WeldCell::run() {
    hand_or_signalbing = 0;
    m(QStringLiteral("lumo.execute.trigger.start"))->setValue(this, 0);
}

}  // namespace bench
