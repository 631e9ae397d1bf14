#include "bridge/linuxcnc/clockgap.h"
#include "bridge/linuxcnc/progress.h"
#include "bridge/motion.h"
#include "support/suite.h"

#include <cmath>

using namespace bridge;
using linuxcnc::Batch;
using linuxcnc::MachineState;
using linuxcnc::Progress;

namespace {

MachineState state(int batch, int line, int done = 0) {
    MachineState state;
    state.batch = batch;
    state.line = line;
    state.done = done;
    return state;
}

/// Three motions, two lines of G-code each, along x: targets at 100, 200 and 300 mm.
Batch threeMotions() {
    Batch batch;
    for (int i = 0; i < 3; ++i) {
        batch.targets.push_back({i + 11, KDL::Vector(0.1 * (i + 1), 0, 0), false, false});
        for (int line = 0; line < 2; ++line) {
            batch.lines.append(QStringLiteral("G1"));
            batch.owners.push_back(i);
        }
    }
    return batch;
}

const KDL::Vector anywhere(0, 0, 0);

/// How many motions have ended by this state.
int ended(Progress* progress, const MachineState& state, const KDL::Vector& tool = anywhere) {
    progress->follow(state, tool);
    return progress->due();
}

}  // namespace

/// Which motions have ended, by LinuxCNC's line numbers.
class TestProgress : public QObject {
    Q_OBJECT
private slots:
    void aLine_endsTheMotionsBeforeIt();
    void aCorner_endsInItsMiddle();
    void aJointMotion_endsWhenNothingIsUnderWay();
    void errors_haveCodes_data();
    void errors_haveCodes();
    void aState_isAsOldAsTheHostsClockSays();
};

void TestProgress::aLine_endsTheMotionsBeforeIt() {
    Progress progress(7, threeMotions());
    QCOMPARE(ended(&progress, state(6, 6, 5)), 0);  // another batch's line
    QCOMPARE(ended(&progress, state(7, 0, 6)), 0);
    QCOMPARE(ended(&progress, state(7, 2, 6)), 0);
    QCOMPARE(ended(&progress, state(7, 3, 6)), 1);
    QCOMPARE(ended(&progress, state(7, 0, 6)), 1);
    QCOMPARE(ended(&progress, state(7, 6, 6)), 2);
    QCOMPARE(ended(&progress, state(7, 0, 7)), 3);
    QCOMPARE(progress.tell(), 11);
    QCOMPARE(progress.currentId(), 12);
}

void TestProgress::aCorner_endsInItsMiddle() {
    Batch batch = threeMotions();
    batch.targets[0].isCorner = true;
    Progress progress(1, batch);
    const auto at = [&progress](int line, double mm) {
        return ended(&progress, state(1, line), KDL::Vector(mm / 1000, 0, 0));
    };
    QCOMPARE(at(2, 90), 0);
    QCOMPARE(at(3, 94), 0);  // the corner begins
    QCOMPARE(at(3, 97), 0);
    QCOMPARE(at(3, 96), 1);  // it no longer comes nearer
    Progress fast(1, batch);
    QCOMPARE(ended(&fast, state(1, 5)), 2);  // meanwhile a whole motion has passed
}

void TestProgress::aJointMotion_endsWhenNothingIsUnderWay() {
    Batch batch = threeMotions();
    batch.targets[1].isJoint = true;
    Progress progress(1, batch);
    QCOMPARE(ended(&progress, state(1, 2)), 0);
    QCOMPARE(ended(&progress, state(1, 0)), 0);
    QCOMPARE(ended(&progress, state(1, 4)), 1);
    QCOMPARE(ended(&progress, state(1, 0)), 2);
}

void TestProgress::errors_haveCodes_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("code");
    const auto row = [](const char* text, int code) {
        QTest::newRow(text) << QString::fromLatin1(text) << code;
    };
    row("Linear move on line 3 would exceed X's positive limit", OutOfReach);
    row("Linear move on line 3 fails kinematicsInverse", OutOfReach);
    row("Linear move on line 3 would exceed joint 4's negative limit", JointLimit);
    row("Radius to end of arc differs from radius to start", NoCircle);
    row("can't enable motion", DriveOff);
    row("Bad character '#' used", -8);
}

void TestProgress::errors_haveCodes() {
    QFETCH(QString, text);
    QTEST(linuxcnc::errorCode(text), "code");
}

/// The host's clock began 1000 ms later than the wall clock, and stands for 30 ms of it.
void TestProgress::aState_isAsOldAsTheHostsClockSays() {
    linuxcnc::ClockGap gap;
    QCOMPARE(gap.age(1497, 1500, 500), 3.0);
    QVERIFY(std::abs(gap.age(1505, 1540, 510) - 5) < 0.1);  // late: 1505 was 505
    QCOMPARE(gap.age(1530, 1540, 510), 0.0);                // not there yet
    QVERIFY(std::abs(gap.age(1540, 1545, 545) - 5) < 0.1);
}

LUMO_TEST(TestProgress)
#include "test_progress.moc"
