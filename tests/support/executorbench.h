#pragma once

#include "executor/lumoexecutor.h"
#include "module/globals.h"
#include "simulator/time/virtualtime.h"
#include "support/scriptedrobot.h"
#include "support/widgets.h"

#include <QObject>
#include <QStackedWidget>

#include <functional>
#include <memory>

namespace test {

/// The package with its real tree and executor on virtual time, driven by a scripted robot: all ports
/// assigned and enabled, one parameter set "A" with 200 ms everywhere, 50 % power and no pulsing.
class ExecutorBench : public QObject {
public:
    ExecutorBench();

    /// Everything back to the beginning: idle, no program, no boxes.
    void reset();

    /// Statements as JSON, or in words: "moveL to=1,0,0 zone=2; moveC to=1,0,0 to1=2,0,0 off; delay 300; open
    /// 1; setDO DO1; waitDI DI1". A word without "=" is the field that makes the statement, "off" one that is
    /// not executed; what a case does not care for is missing.
    void load(const QByteArray& program);
    /// Overwrites fields of parameter set `index` (made as a copy of the first where missing).
    void setParam(const char* field, double value, int index = 0);
    static void enablePort(int port, bool on) { m("lumo.port")->c(port)->set(nullptr, "enable", on); }

    /// Does something `ms` after the run begins, inside whatever is waiting then.
    void at(int ms, std::function<void()> action) { actions_.append({ms, std::move(action)}); }
    /// The robot's log is marked, and what `at` was told counts from now.
    void begin();
    /// Writes the start trigger and returns when the run is over.
    void run(int line = 0, int mode = 0);
    void once(int line, bool withSender = true);
    /// Lets the time go on until nothing is pending.
    void settle();

    /// Timers that nobody but the executor and the robot left behind.
    [[nodiscard]] int armedTimers() const { return time.armedTimers(&actionScope_); }

    static void trigger(const QString& name, int line) {
        m("lumo.execute.trigger." + name)->setValue(executor, line);
    }
    static void pause() { m("lumo.execute.trigger.pause")->trigger(); }
    [[nodiscard]] static QString state() { return m("lumo.execute.state")->getString(); }
    [[nodiscard]] static bool weldFlag() { return m("lumo.current.openmiddlecolse")->getBool(); }
    [[nodiscard]] static int resumeLine() { return m("lumo.current.line")->getInt(); }

    sim::VirtualTime& time;
    ScriptedRobot robot;

private:
    std::unique_ptr<QStackedWidget> center_;
    QVector<QPair<int, std::function<void()>>> actions_;
    QObject actionScope_;
};

/// `QCOMPARE` for logs: prints both columns when they differ.
bool sameLog(const QStringList& actual, const QStringList& expected);

}  // namespace test
