#include "executor/laserplan.h"
#include "support/executorbench.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <limits>

/// Openings and closings as lists of (ms, port, value).
class TestLaserPlan : public QObject {
    Q_OBJECT

    static QStringList text(const Sequence& plan) {
        QStringList lines;
        for (const TimedStep& timed : plan) {
            lines << QStringLiteral("%1 %2 %3").arg(timed.ms).arg(timed.step.port).arg(timed.step.value);
        }
        return lines;
    }

private slots:
    void opening_data() {
        QTest::addColumn<int>("increaseMs");
        QTest::addColumn<int>("dtMs");
        QTest::addColumn<QStringList>("plan");
        QTest::newRow("no ramp") << 0 << 20 << QStringList{"0 16 0.5", "0 8 1"};
        QTest::newRow("ramp as long as a step") << 20 << 20 << QStringList{"20 16 0.5", "20 8 1"};
        QTest::newRow("last step short")
            << 50 << 20 << QStringList{"20 16 0.2", "40 16 0.4", "50 16 0.5", "50 8 1"};
        QTest::newRow("whole steps") << 60 << 20
                                     << QStringList{"20 16 0.166667", "40 16 0.333333", "60 16 0.5",
                                                    "60 8 1"};
    }

    void opening() {
        QFETCH(int, increaseMs);
        QFETCH(int, dtMs);
        LaserParams params;
        params.power = 0.5;
        params.increaseMs = increaseMs;
        QTEST(text(openingPlan(params, dtMs)), "plan");
    }

    void closing_data() {
        QTest::addColumn<QVector<int>>("times");  // ramp, pull-back end, re-feed start, re-feed end
        QTest::addColumn<QStringList>("plan");
        QTest::newRow("all equal: pull-back off, wire on, wire off, then the laser")
            << QVector<int>{40, 40, 40, 40} << QStringList{"40 14 0", "40 8 1", "40 8 0",  "20 16 0.25",
                                                           "40 16 0", "40 9 0", "40 18 0", "40 17 0"};
        QTest::newRow("re-feed while the pull-back is still on")
            << QVector<int>{0, 300, 100, 200}
            << QStringList{"300 14 0", "100 8 1", "200 8 0", "0 16 0", "0 9 0", "0 18 0", "0 17 0"};
        QTest::newRow("a re-feed that would end before it starts stays off")
            << QVector<int>{0, 100, 300, 200}
            << QStringList{"100 14 0", "200 8 0", "0 16 0", "0 9 0", "0 18 0", "0 17 0"};
    }

    void closing() {
        QFETCH(QVector<int>, times);
        LaserParams params;
        params.power = 0.5;
        params.decreaseMs = times[0];
        params.pullbackEndMs = times[1];
        params.refeedStartMs = times[2];
        params.refeedEndMs = times[3];
        QTEST(text(closingPlan(params, 20)), "plan");
    }

    void oddParameterValues_readAsZero() {
        ModuleObject set(QStringLiteral("set"));
        set.loadJson(nullptr, QJsonObject{{"power", "60"}, {"increase_time", -5}, {"stay_time", "x"}});
        const LaserParams params = LaserParams::from(&set);
        QCOMPARE(params.power, 0.6);
        QCOMPARE(params.increaseMs, 0);
        QCOMPARE(params.stayMs, 0);
        QCOMPARE(LaserParams::from(ModuleObject::null()).power, 0.0);
    }

    void shutDown_writesZeroEverywhere() {
        for (const PortStep& off : shutdownSteps()) {
            QCOMPARE(off.value, 0.0);
        }
        QCOMPARE(gasOffPlan(0).front().step.value, 0.0);
    }

    void numbersDeepInsideASet_areNotItsOwn() {
        ModuleObject set(QStringLiteral("set"));
        set.loadJson(nullptr, QJsonObject{{"note", QJsonObject{{"power", 60}, {"stay_time", 50}}}});
        const LaserParams params = LaserParams::from(&set);
        QCOMPARE(params.power, 0.0);
        QCOMPARE(params.stayMs, 0);
    }

    void noSetInForce_isNoSet() {
        ModuleObject* const sets = m(QStringLiteral("lumo.param"));
        sets->loadJson(this, QJsonArray{QJsonObject{{"power", 50}}});
        m(QStringLiteral("lumo.cur_param"))->setValue(this, QVariant());
        QVERIFY(paramNode()->isNull());
        m(QStringLiteral("lumo.cur_param"))->setValue(this, 0);
        QCOMPARE(paramNode(), sets->c(0));
    }

    /// No dialog takes such times, but a file may hold them: they are cut to what fits, and their ramps
    /// go the whole length in few steps.
    void timesOfWeeks_neitherOverflowNorFillTheMemory() {
        ModuleObject set(QStringLiteral("set"));
        set.loadJson(nullptr, QJsonObject{{"power", 50},
                                          {"increase_time", 2000000000},
                                          {"decrease_time", 2000000000},
                                          {"close_delay", 2000000000},
                                          {"delay_after_blow", 2000000000}});
        const LaserParams params = LaserParams::from(&set);
        QVERIFY(qint64(params.decreaseMs) + params.closeDelayMs + params.postFlowMs <=
                std::numeric_limits<int>::max());
        for (const Sequence& plan : {openingPlan(params, 1), closingPlan(params, 1)}) {
            QVERIFY(plan.size() < 6000);
            QCOMPARE(plan.back().ms, params.increaseMs);
            double largest = 0.0;
            double last = -1.0;
            for (const TimedStep& timed : plan) {
                if (timed.step.port == AO_LASER_POWER) {
                    largest = last < 0.0 ? largest : std::max(largest, std::abs(timed.step.value - last));
                    last = timed.step.value;
                }
            }
            QVERIFY(largest < 0.001);
        }
    }
};

LUMO_TEST_MAIN(TestLaserPlan)
#include "test_laserplan.moc"
