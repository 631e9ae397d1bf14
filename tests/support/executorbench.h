#pragma once

#include "executor/lumoexecutor.h"
#include "simulator/virtualtime.h"
#include "support/scriptedrobot.h"
#include "support/widgets.h"

#include <QObject>
#include <QStackedWidget>
#include <QTemporaryDir>

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

    /// Statements as JSON, without the fields that a case does not care for.
    void load(const QByteArray& program);
    /// Overwrites fields of parameter set `index` (made as a copy of the first where missing).
    void setParam(const char* field, double value, int index = 0);
    static void enablePort(int port, bool on);

    /// Does something `ms` after the run begins, inside whatever is waiting then.
    void at(int ms, std::function<void()> action);
    /// Writes the start trigger and returns when the run is over; the robot's log is marked first.
    void run(int line = 0, int mode = 0);
    void once(int line, bool withSender = true);
    /// Lets the time go on until nothing is pending.
    void settle();

    static void trigger(const char* name, int line);
    static void pause();
    [[nodiscard]] QString waitingKind() const;
    [[nodiscard]] QString state() const;
    [[nodiscard]] bool weldFlag() const;
    [[nodiscard]] int resumeLine() const;
    /// Texts of the boxes on the screen.
    [[nodiscard]] static QStringList boxes() { return test::boxes(); }
    static void closeBoxes() { test::closeBoxes(); }

    sim::VirtualTime& time;
    ScriptedRobot robot;

private:
    void armActions();

    QTemporaryDir folder_;
    std::unique_ptr<QStackedWidget> center_;
    QVector<QPair<int, std::function<void()>>> actions_;
    QObject actionScope_;
};

/// `QCOMPARE` for logs: prints both columns when they differ.
bool sameLog(const QStringList& actual, const QStringList& expected);

/// main() of a test program on virtual time.
int runOnVirtualTime(int argc, char** argv, const std::function<QObject*()>& makeTest);

}  // namespace test

#define LUMO_TEST_MAIN(TestClass)                                                \
    int main(int argc, char** argv) {                                            \
        return test::runOnVirtualTime(argc, argv, [] { return new TestClass; }); \
    }
