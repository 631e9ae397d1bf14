#include "executor/queuedarc.h"
#include "support/executorbench.h"

#include <QTest>

#include <cmath>

using prog::Arc;
using prog::Position;

/// Arcs and circles as values: what is left of them from a place on their way.
class TestArc : public QObject {
    Q_OBJECT

    static constexpr double pi = 3.14159265358979323846;

    /// A quarter, or a whole circle in three legs, of 50 mm about (0.3, 0, 0), from (0.35, 0, 0).
    static Position on(double degrees) {
        return {0.3 + 0.05 * std::cos(degrees * pi / 180), 0.05 * std::sin(degrees * pi / 180), 0};
    }
    static Arc make(bool whole) {
        const std::vector<Arc::Leg> quarter{{on(45), on(90)}};
        const std::vector<Arc::Leg> circle{{on(60), on(120)}, {on(180), on(240)}, {on(300), on(0)}};
        return *Arc::through(on(0), whole ? circle : quarter);
    }

private slots:
    void angleOfAPlace_data() {
        QTest::addColumn<bool>("whole");
        QTest::addColumn<double>("degrees");
        QTest::addColumn<double>("from");
        QTest::addColumn<double>("expected");
        QTest::addColumn<double>("angle");
        QTest::addColumn<int>("leg");
        QTest::newRow("on its way") << false << 30.0 << 0.0 << 30.0 << 30.0 << 0;
        QTest::newRow("braked past the end") << false << 92.0 << 0.0 << 90.0 << 90.0 << 1;
        QTest::newRow("before the start") << false << -1.0 << 0.0 << 0.0 << 0.0 << 0;
        QTest::newRow("before where it was taken up") << false << 29.0 << 30.0 << 30.0 << 30.0 << 0;
        QTest::newRow("second leg") << true << 200.0 << 0.0 << 190.0 << 200.0 << 1;
        QTest::newRow("at the start of a circle") << true << 0.0 << 0.0 << 5.0 << 0.0 << 0;
        QTest::newRow("at its end") << true << 0.0 << 0.0 << 360.0 << 360.0 << 3;
        QTest::newRow("before its start, in the corner") << true << -5.0 << 0.0 << 3.0 << 0.0 << 0;
        QTest::newRow("not as far as it could be") << true << 20.0 << 0.0 << 360.0 << 20.0 << 0;
    }

    void angleOfAPlace() {
        QFETCH(bool, whole);
        QFETCH(double, degrees);
        QFETCH(double, from);
        QFETCH(double, expected);
        QFETCH(double, angle);
        const Arc arc = make(whole);
        const double found = arc.angleOnTheWay(on(degrees), from * pi / 180, expected * pi / 180);
        QVERIFY2(std::abs(found * 180 / pi - angle) < 1e-6, qPrintable(QString::number(found * 180 / pi)));
        QTEST(arc.legAt(found), "leg");
        QVERIFY(prog::length(prog::between(arc.at(found), on(angle))) < 1e-12);
        QVERIFY(std::abs(arc.radiusM() - 0.05) < 1e-12);
    }

    void angleOfAToolThatWasMoved_data() {
        QTest::addColumn<double>("degrees");
        QTest::addColumn<double>("reached");
        QTest::addColumn<double>("angle");
        QTest::newRow("braked past a circle's end") << 8.0 << 359.0 << 360.0;
        QTest::newRow("pushed back before its start") << -3.0 << 1.0 << 0.0;
        QTest::newRow("pushed back in the middle") << 198.0 << 200.0 << 198.0;
    }

    void angleOfAToolThatWasMoved() {
        QFETCH(double, degrees);
        QFETCH(double, reached);
        QFETCH(double, angle);
        const double found = make(true).angleNear(on(degrees), 0.0, reached * pi / 180);
        QVERIFY2(std::abs(found * 180 / pi - angle) < 1e-6, qPrintable(QString::number(found * 180 / pi)));
    }

    void pointsOnALine_makeNone() {
        QVERIFY(!Arc::through({0, 0, 0}, {{{0.1, 0, 0}, {0.2, 0, 0}}}));
        QVERIFY(!Arc::through({0, 0, 0}, {{{0, 0, 0}, {0.2, 0, 0}}}));
        QVERIFY(!Arc::through({0, 0, 0}, {}));
    }

    void turnBetweenOrientations() {
        ModuleObject a, b;
        for (const double angle : {pi, 0.0, 0.0}) {
            a.append(nullptr)->setValue(nullptr, angle);
        }
        b.copyFrom(nullptr, &a);
        QVERIFY(lumo::turnBetween(&a, &b) < 1e-6);
        b.c(2)->setValue(nullptr, 0.1);
        QVERIFY(std::abs(lumo::turnBetween(&a, &b) - 0.1) < 1e-9);
        b.c(0)->setValue(nullptr, -pi);
        QVERIFY(std::abs(lumo::turnBetween(&a, &b) - 0.1) < 1e-9);
    }
};

LUMO_TEST_MAIN(TestArc)
#include "test_arc.moc"
