#include "bridge/linuxcnc/batch.h"
#include "motions.h"
#include "support/suite.h"

#include <QFile>
#include <QRegularExpression>

#include <cmath>

using namespace bridge;
using linuxcnc::Axes;
using test::arc;
using test::line;
using test::pose;

namespace {

/// The words of a line of G-code: "X" to 1.5.
QHash<QChar, double> wordsOf(const QString& text) {
    QHash<QChar, double> words;
    for (const QString& word : text.split(QLatin1Char(' '))) {
        words.insert(word[0], word.mid(1).toDouble());
    }
    return words;
}

QStringList motionLines(const linuxcnc::Batch& batch) {
    return batch.lines.filter(QRegularExpression(QStringLiteral("G[0123] ?.*X")));
}

}  // namespace

/// The G-code of batches.
class TestGcode : public QObject {
    Q_OBJECT
private:
    linuxcnc::Batch written(const std::vector<Motion>& motions) {
        linuxcnc::Place place = linuxcnc::placeAt(arm_, arm_.home());
        return linuxcnc::writeBatch(arm_, test::numbered(motions), &place);
    }
    const kin::Arm arm_{6};

private slots:
    void corneredLinesAndAnArc_areOneBatch();
    void anArcInAnotherPlane_staysWithinTheChordError();
    void aTurn_isSplitAndTimed();
    void aJointMotion_switchesThereAndBack();
    void aZone_isLimitedByHalfOfBothMotions();
    void aBadMotion_endsTheBatchBeforeIt_data();
    void aBadMotion_endsTheBatchBeforeIt();
    void angles_goOnFromThoseBefore();
    void home_isThatOfTheConfiguration();
};

void TestGcode::corneredLinesAndAnArc_areOneBatch() {
    const linuxcnc::Batch batch = written({line(pose(550, 0, 400), 100, 5), line(pose(550, 50, 400), 50),
                                           arc(pose(525, 75, 400), pose(500, 50, 400), 50)});
    // Each wait of LinuxCNC for a corner is a line of its own; 5 mm before a right angle an arc cuts 2.07 mm.
    QCOMPARE(batch.lines.join(QLatin1Char('\n')),
             QStringLiteral("G64 P2.071068 Q0\n"
                            "G94 G1 X550 Y0 Z400 A0 B0 C0 F6000\n"
                            "G61.1\n"
                            "G94 G1 X550 Y50 Z400 A0 B0 C0 F3000\n"
                            "G94 G17 G3 X500 Y50 Z400 A0 B0 C0 I-25 J0 F3000"));
    QCOMPARE(batch.owners, (std::vector<int>{0, 0, 1, 1, 2}));
    QCOMPARE(batch.targets.size(), std::size_t(3));
    QVERIFY(batch.targets[0].isCorner && !batch.targets[1].isCorner);
    QCOMPARE(batch.failedId, 0);

    const linuxcnc::Batch upright = written({arc(pose(500, 25, 425), pose(500, 50, 400))});
    QCOMPARE(upright.lines.last(), QStringLiteral("G94 G19 G2 X500 Y50 Z400 A0 B0 C0 J25 K0 F6000"));
}

void TestGcode::anArcInAnotherPlane_staysWithinTheChordError() {
    const linuxcnc::Batch batch = written({arc(pose(530, 0, 430), pose(530, 42.426407, 400))});
    // Through these points: the circle's centre from three distances that are equal.
    const KDL::Vector start(500, 0, 400), aux(530, 0, 430), end(530, 42.426407, 400);
    const KDL::Vector u = aux - start, v = end - start, n = u * v;
    const KDL::Vector centre = start + ((dot(u, u) * v - dot(v, v) * u) * n) / (2 * dot(n, n));
    const double radius = (start - centre).Norm();
    KDL::Vector from = start;
    const QStringList lines = motionLines(batch);
    QVERIFY2(lines.size() > 20 && lines.size() < 200, qPrintable(QString::number(lines.size())));
    for (const QString& text : lines) {
        const auto words = wordsOf(text);
        const KDL::Vector to(words['X'], words['Y'], words['Z']);
        QVERIFY(std::abs((to - centre).Norm() - radius) < 1e-5);
        QVERIFY(radius - ((from + to) / 2 - centre).Norm() < 0.011);
        from = to;
    }
    QVERIFY((from - end).Norm() < 1e-5);
}

void TestGcode::aTurn_isSplitAndTimed() {
    const QStringList turns = motionLines(written({line(pose(500, 0, 400, 180, 0, 45), 100)}));
    QCOMPARE(turns.size(), 5);
    double seconds = 0, last = 0;
    for (const QString& text : turns) {
        const auto words = wordsOf(text);
        QVERIFY2(text.startsWith(QLatin1String("G93 G1")), qPrintable(text));
        QVERIFY(std::abs(std::abs(words['C'] - last) - 9) < 1e-5);
        last = words['C'];
        seconds += 60 / words['F'];
    }
    // 20 mm for each radian.
    QVERIFY(std::abs(seconds - test::pi / 4 * 0.02 / 0.1) < 1e-5);
}

void TestGcode::aJointMotion_switchesThereAndBack() {
    Joints target = arm_.home();
    target[0] += 0.1;
    target[5] = 0.2;
    const linuxcnc::Batch batch = written({line(pose(510, 0, 400), 100, 5), test::joints(target)});
    const QStringList joint = batch.lines.mid(batch.lines.indexOf(QStringLiteral("M68 E3 Q1")));
    QCOMPARE(joint.size(), 5);
    QCOMPARE(batch.lines.first(), QStringLiteral("G61.1"));  // no corner to a joint motion
    QCOMPARE(joint[3], QStringLiteral("M68 E3 Q0"));
    const auto words = wordsOf(joint[2]);
    QVERIFY(std::abs(words['X'] - 0.1 * 180 / test::pi) < 1e-5);
    QVERIFY(std::abs(words['Y'] + 104.388961) < 1e-5);
    QVERIFY(std::abs(words['C'] + 0.2 * 180 / test::pi) < 1e-5);
    QVERIFY(written({test::joints(arm_.home())}).lines.isEmpty());
}

void TestGcode::aZone_isLimitedByHalfOfBothMotions() {
    const auto cut = [this](double zoneMm, double secondMm) {
        const linuxcnc::Batch batch =
            written({line(pose(550, 0, 400), 100, zoneMm), line(pose(550, secondMm, 400))});
        return batch.lines.first();
    };
    const double quarter = std::tan(test::pi / 8);
    QCOMPARE(cut(5, 50), QStringLiteral("G64 P%1 Q0").arg(QString::number(5 * quarter, 'f', 6)));
    QCOMPARE(cut(40, 50), QStringLiteral("G64 P%1 Q0").arg(QString::number(25 * quarter, 'f', 6)));
    QCOMPARE(cut(5, 4), QStringLiteral("G64 P%1 Q0").arg(QString::number(2 * quarter, 'f', 6)));
    QCOMPARE(cut(0, 50), QStringLiteral("G61.1"));
}

void TestGcode::aBadMotion_endsTheBatchBeforeIt_data() {
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("code");
    QTest::newRow("out of reach") << 0 << int(OutOfReach);
    QTest::newRow("collinear arc") << 1 << int(NoCircle);
    QTest::newRow("beyond a joint's limit") << 2 << int(JointLimit);
    QTest::newRow("faster than the wrist turns") << 3 << linuxcnc::TooFast;
}

void TestGcode::aBadMotion_endsTheBatchBeforeIt() {
    QFETCH(int, kind);
    QFETCH(int, code);
    Joints far = arm_.home();
    far[0] = 3;
    const std::vector<Motion> bad = {line(pose(1600, 0, 400)), arc(pose(520, 0, 400), pose(530, 0, 400)),
                                     test::joints(far), line(pose(510, 0, 400, 180, 0, 90), 2000)};
    const linuxcnc::Batch batch =
        written({line(pose(510, 0, 400), 100, 5), bad[std::size_t(kind)], line(pose(500, 0, 400))});
    QCOMPARE(batch.failedId, 2);
    QCOMPARE(batch.failure, code);
    QCOMPARE(batch.targets.size(), std::size_t(1));
    QCOMPARE(batch.lines.first(), QStringLiteral("G61.1"));
}

void TestGcode::angles_goOnFromThoseBefore() {
    // Twice around z with steps of 30 degrees, and the same numbers come back when it turns back.
    Axes axes = linuxcnc::axesAnew(kin::toFrame(pose(500, 0, 400)));
    for (int step = 1; step <= 24; ++step) {
        axes = linuxcnc::axesNear(kin::toFrame(pose(500, 0, 400, 180, 0, 30 * step)), axes);
        QVERIFY2(std::abs(axes[5] - 30 * step) < 1e-6, qPrintable(QString::number(axes[5])));
    }
    // Through B = 90 with A and C at rest: B goes on, A and C do not jump by half a turn.
    axes = linuxcnc::axesAnew(kin::toFrame(pose(500, 0, 400, 180, 0, 0)));
    for (int tilt = 5; tilt <= 120; tilt += 5) {
        const KDL::Frame torch(KDL::Rotation::RotY(tilt * test::pi / 180) * KDL::Rotation::RotX(test::pi));
        axes = linuxcnc::axesNear(torch, axes);
        QVERIFY2(std::abs(axes[4] - tilt) < 1e-6 && std::abs(axes[3]) < 1e-6 && std::abs(axes[5]) < 1e-6,
                 qPrintable(QStringLiteral("%1: %2 %3 %4").arg(tilt).arg(axes[3]).arg(axes[4]).arg(axes[5])));
    }
}

/// start.py's configuration says where the arm is when it is homed.
void TestGcode::home_isThatOfTheConfiguration() {
    QFile file(QStringLiteral(LINUXCNC_FOLDER "/cell/cell.ini"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    const Axes home = linuxcnc::jointWords(arm_.home());
    auto found = QRegularExpression(QStringLiteral("^HOME = (.*)$"), QRegularExpression::MultilineOption)
                     .globalMatch(text);
    for (const double joint : home) {
        QVERIFY(found.hasNext());
        QVERIFY(std::abs(found.next().captured(1).toDouble() - joint) < 1e-6);
    }
}

LUMO_TEST(TestGcode)
#include "test_gcode.moc"
