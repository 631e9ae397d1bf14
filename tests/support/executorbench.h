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

/// The package with its real tree and executor on virtual time and a scripted robot. All ports are assigned
/// and enabled; the one parameter set "A" has 200 ms for all times, 50 % power and no pulses.
class ExecutorBench : public QObject {
public:
    ExecutorBench();

    /// Back to the initial state: idle, no program, no message boxes.
    void reset();

    /// Loads statements given as JSON or in short form: "moveL to=1,0,0 zone=2; moveC to=1,0,0 to1=2,0,0 off;
    /// delay 300; open 1; setDO DO1; waitDI DI1". A word without "=" is the statement's main field, "off"
    /// means not executed; other fields are missing.
    void load(const QByteArray& program);
    /// The same, with what a check asks of moves and starts of welding where they lack it: taught points with
    /// orientation and joints, and speeds.
    void loadSound(const QByteArray& program);
    /// Sets a field of parameter set `index`, which is made as a copy of the first if missing.
    void setParam(const char* field, double value, int index = 0);
    static void enablePort(int port, bool on) { m("lumo.port")->c(port)->set(nullptr, "enable", on); }

    /// Calls `action` `ms` after the run begins, inside the wait of that moment.
    void at(int ms, std::function<void()> action) { actions_.append({ms, std::move(action)}); }
    /// Marks the robot's log and starts the times of at().
    void begin();
    /// Writes the start trigger and returns when the run is over.
    void run(int line = 0, int mode = 0);
    void once(int line, bool withSender = true);
    /// Advances the time until the executor has nothing pending.
    void waitUntilIdle();

    /// Number of armed timers, except those of at().
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

/// Compares two logs; prints both columns when they differ.
bool sameLog(const QStringList& actual, const QStringList& expected);

}  // namespace test
