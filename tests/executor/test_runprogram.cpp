#include "executor/programindex.h"
#include "support/executorbench.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

/// A run's own copy of the program, and what tells that the original is another one.
class TestRunProgram : public QObject {
    Q_OBJECT

    static void load(ModuleObject& program, const QByteArray& json) {
        program.loadJson(nullptr, QJsonDocument::fromJson(json).array());
    }

private slots:
    void backwardQuestions() {
        ModuleObject program(QStringLiteral("p"));
        load(program, R"([{"type":"moveL","point":{"trans":[1,0,0]}},
                          {"type":"open","weldspeed":7},
                          {"type":"moveC","point":{"trans":[2,0,0]},"point1":{"trans":[3,0,0]}},
                          {"type":"close"},
                          {"type":"moveCC","point":{"trans":[4,1,0]},"point1":{"trans":[5,0,0]}},
                          {"type":"moveCC","execute":false,"point":{"trans":[3,0,0]},"point1":{"trans":[5,0,0]}}])");
        const RunProgram run(&program);
        QCOMPARE(run.openBefore(1), nullptr);
        QCOMPARE(run.openBefore(2)->indexInPmobj(), 1);
        QCOMPARE(run.openBefore(4)->indexInPmobj(), 1);  // a close in between does not matter
        QCOMPARE(run.targetBefore(0), nullptr);
        QCOMPARE(run.targetBefore(2)->r("trans.#0")->getDouble(), 1.0);
        QCOMPARE(run.targetBefore(5)->r("trans.#0")->getDouble(), 3.0);  // a circle ends where it began
        QCOMPARE(run.circleFaultAt(5), CircleFault::Coincident);
        QCOMPARE(run.firstBadCircle(0, 6), -1);  // not executed
        QVERIFY(run.isExecuted(0) && !run.isExecuted(5) && !run.isExecuted(6));
    }

    void linesOutside_areNothing_data() {
        QTest::addColumn<int>("line");
        for (const int line : {-2, -1, 1, 2}) {
            QTest::addRow("%d", line) << line;
        }
    }

    void linesOutside_areNothing() {
        ModuleObject program(QStringLiteral("p"));
        load(program, R"([{"type":"moveL","point":{"trans":[1,0,0]}}])");
        const RunProgram run(&program);
        QFETCH(int, line);
        QVERIFY(run.statement(line)->isNull());
        QVERIFY(!run.isMove(line) && !run.isExecuted(line));
        QCOMPARE(run.openBefore(line), nullptr);
        QCOMPARE(run.targetBefore(line), nullptr);
        QCOMPARE(run.circleFaultAt(line), CircleFault::None);
        QVERIFY(run.isMove(0) && run.isExecuted(0));
    }

    /// What a statement lacks is not taken from deep inside it.
    void fieldsOfChildren_areNotTheStatements() {
        ModuleObject program(QStringLiteral("p"));
        load(program, R"([{"note":{"type":"open","execute":false}},
                          {"note":{"type":"moveL"}},
                          {"type":"moveL","point":{"trans":[0,0,0]}},
                          {"type":"delay","note":{"point":{"trans":[1,0,0]},"point1":{"trans":[1,0,0]}}},
                          {"type":"moveCC","note":{"point":{"trans":[0,0,0]}}}])");
        const RunProgram run(&program);
        QVERIFY(run.isExecuted(0));
        QVERIFY(!run.isMove(1));
        QCOMPARE(run.openBefore(2), nullptr);
        QCOMPARE(run.targetBefore(4), run.statement(2)->c("point"));
    }

    void circleWithoutItsPoints_takesNoneFromDeepInside_data() {
        QTest::addColumn<QByteArray>("circle");
        QTest::newRow("only the first")
            << QByteArray(R"({"point":{"trans":[1,1,0]},"note":{"point1":{"trans":[2,0,0]}}})");
        QTest::newRow("only the second")
            << QByteArray(R"({"point1":{"trans":[2,0,0]},"note":{"point":{"trans":[1,1,0]}}})");
    }

    void circleWithoutItsPoints_takesNoneFromDeepInside() {
        QFETCH(QByteArray, circle);
        ModuleObject program(QStringLiteral("p"));
        load(program, R"([{"type":"moveL","point":{"trans":[0,0,0]}},)" + circle + "]");
        program.c(1)->set(nullptr, "type", "moveCC");
        QVERIFY(RunProgram(&program).circleFaultAt(1) != CircleFault::None);
    }

    void editingTheOriginal_changesNothing() {
        ModuleObject program(QStringLiteral("p"));
        load(program, R"([{"type":"delay","delaytime":5}])");
        const RunProgram run(&program);
        program.clear(nullptr, true, false);
        QCOMPARE(run.statement(0)->c("delaytime")->getInt(), 5);
        QVERIFY(run.statement(1)->isNull());
    }
};

LUMO_TEST_MAIN(TestRunProgram)
#include "test_runprogram.moc"
