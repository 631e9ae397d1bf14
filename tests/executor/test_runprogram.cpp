#include "executor/programindex.h"
#include "executor/programstamp.h"
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

    void editingTheOriginal_changesNothing() {
        ModuleObject program(QStringLiteral("p"));
        load(program, R"([{"type":"delay","delaytime":5}])");
        const RunProgram run(&program);
        program.clear(nullptr, true, false);
        QCOMPARE(run.statement(0)->c("delaytime")->getInt(), 5);
        QVERIFY(run.statement(1)->isNull());
    }

    void stamp_tellsReplacementFromEditing() {
        ModuleObject program(QStringLiteral("p"));
        load(program, R"([{"type":"open"},{"type":"moveL"},{"type":"close"}])");
        ProgramStamp stamp(&program);
        const int before = stamp.value();
        program.reorder(nullptr, 0, 2);
        program.c(0)->set(nullptr, "speed", 10, true);
        program.append(nullptr, QString());
        while (program.cmobjCount() > 1) {
            program.remove(nullptr, "#0");
        }
        QCOMPARE(stamp.value(), before);
        load(program, R"([{"type":"open"},{"type":"moveL"},{"type":"close"}])");
        QCOMPARE(stamp.value(), before + 1);
        program.clear(nullptr, true, false);
        QCOMPARE(stamp.value(), before + 2);
    }

    void stamp_changesWhenTheLastStatementGoes() {
        ModuleObject program(QStringLiteral("p"));
        load(program, R"([{"type":"open"}])");
        ProgramStamp stamp(&program);
        const int before = stamp.value();
        program.remove(nullptr, "#0");
        program.append(nullptr, QString());
        QVERIFY(stamp.value() != before);
    }
};

LUMO_TEST_MAIN(TestRunProgram)
#include "test_runprogram.moc"
