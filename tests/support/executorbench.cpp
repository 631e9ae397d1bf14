#include "support/executorbench.h"

#include "gantu/bmodule.h"
#include "kord/managerhelper.h"
#include "mendo/log.h"
#include "module/globals.h"
#include "panel/lumowidget.h"
#include "support/ports.h"

#include <QApplication>
#include <QDebug>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using mendo::ModuleObject;

namespace test {

namespace {

QJsonObject plainSet() {
    return {{"name", "A"},
            {"power", 50},
            {"frequency", 40},
            {"ratio", 30},
            {"increase_time", 200},
            {"decrease_time", 200},
            {"stay_time", 200},
            {"close_delay", 200},
            {"open_time", 200},
            {"open_interval", 0},
            {"delay_before_blow", 200},
            {"delay_after_blow", 200},
            {"speed", 25},
            {"move_wire_time", 200},
            {"stop_wire_time", 200},
            {"give_wire_time", 200}};
}

}  // namespace

ExecutorBench::ExecutorBench() : time(*sim::VirtualTime::instance()) {
    QDir::setCurrent(folder_.path());
    mendo::LogHub::instance()->setConsole(false);
    kord::ManagerHelper::instance()->module()->mobj()->set(this, QStringLiteral("language"),
                                                           QStringLiteral("cn"));
    center_ = std::make_unique<QStackedWidget>();
    center_->addWidget(new QWidget);
    setInstantiatedCenterWidget(center_.get());
    center_->show();
    LumoWidget page;  // fills the tree and makes the executor, which outlive it
    robot.setParent(nullptr);
}

void ExecutorBench::reset() {
    qDeleteAll(actionScope_.children());
    actions_.clear();
    closeBoxes();
    m(QStringLiteral("lumo.execute.state"))->setValue(this, QStringLiteral("idle"));
    m(QStringLiteral("lumo.current.openmiddlecolse"))->setValue(this, false);
    m(QStringLiteral("lumo.current.line"))->setValue(this, 0);
    m(QStringLiteral("lumo.current.pausepoint"))->clear(this);
    m(QStringLiteral("lumo.execute.line"))->setValue(this, -1);
    m(QStringLiteral("lumo.execute.dt"))->setValue(this, 20);
    m(QStringLiteral("lumo.allWeldBtnstatus.weldbtn"))->setValue(this, true);
    m(QStringLiteral("lumo.allWeldBtnstatus.handweldbtn"))->setValue(this, false);
    m(QStringLiteral("lumo.cur_param"))->setValue(this, -1);
    m(QStringLiteral("lumo.program"))->loadJson(this, QJsonArray());
    m(QStringLiteral("lumo.param"))->loadJson(this, QJsonArray{plainSet()});
    for (int port = 0; port < 19; ++port) {
        m(QStringLiteral("lumo.port"))
            ->c(port)
            ->set(this, QStringLiteral("name"), QString::fromLatin1(kPortNames[port]));
        enablePort(port, true);
    }
    robot.reset();
}

void ExecutorBench::load(const QByteArray& program) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(program, &error);
    QVERIFY2(error.error == QJsonParseError::NoError, qPrintable(error.errorString()));
    m(QStringLiteral("lumo.program"))->loadJson(this, document.array());
}

void ExecutorBench::setParam(const char* field, double value, int index) {
    ModuleObject* sets = m(QStringLiteral("lumo.param"));
    while (sets->cmobjCount() <= index) {
        sets->append(this)->copyFrom(this, sets->c(0));
    }
    sets->c(index)->set(this, QString::fromLatin1(field), value);
}

void ExecutorBench::enablePort(int port, bool on) {
    m(QStringLiteral("lumo.port"))->c(port)->set(nullptr, QStringLiteral("enable"), on);
}

void ExecutorBench::at(int ms, std::function<void()> action) {
    actions_.append({ms, std::move(action)});
}

void ExecutorBench::armActions() {
    for (const auto& [ms, action] : qAsConst(actions_)) {
        auto* timer = new QTimer(&actionScope_);
        timer->setSingleShot(true);
        connect(timer, &QTimer::timeout, timer, action);
        timer->start(ms);
    }
    actions_.clear();
}

void ExecutorBench::run(int line, int mode) {
    hand_or_signalbing = mode;
    robot.mark();
    armActions();
    trigger("start", line);
}

void ExecutorBench::once(int line, bool withSender) {
    hand_or_signalbing = 2;
    robot.mark();
    armActions();
    m(QStringLiteral("lumo.execute.trigger.once"))->setValue(withSender ? this : nullptr, line);
}

void ExecutorBench::settle() {
    time.advanceUntil([] { return executor->pendingSteps() == 0 && executor->depth() == 0; }, 100000);
}

void ExecutorBench::trigger(const char* name, int line) {
    m(QStringLiteral("lumo.execute.trigger.") + QString::fromLatin1(name))->setValue(executor, line);
}

void ExecutorBench::pause() {
    m(QStringLiteral("lumo.execute.trigger.pause"))->trigger();
}

QString ExecutorBench::waitingKind() const {
    return executor->waiting().value(QStringLiteral("kind")).toString();
}

QString ExecutorBench::state() const {
    return m(QStringLiteral("lumo.execute.state"))->getString();
}

bool ExecutorBench::weldFlag() const {
    return m(QStringLiteral("lumo.current.openmiddlecolse"))->getBool();
}

int ExecutorBench::resumeLine() const {
    return m(QStringLiteral("lumo.current.line"))->getInt();
}

bool sameLog(const QStringList& actual, const QStringList& expected) {
    if (actual == expected) {
        return true;
    }
    qWarning("%-42s | %s", "seen", "expected");
    for (int i = 0; i < qMax(actual.size(), expected.size()); ++i) {
        const bool same = actual.value(i) == expected.value(i);
        qWarning("%-42s %c %s", qPrintable(actual.value(i)), same ? '|' : '#', qPrintable(expected.value(i)));
    }
    return false;
}

int runOnVirtualTime(int argc, char** argv, const std::function<QObject*()>& makeTest) {
    sim::VirtualTime::install();
    QApplication app(argc, argv);
    const std::unique_ptr<QObject> testObject(makeTest());
    return QTest::qExec(testObject.get(), argc, argv);
}

}  // namespace test
