#include "simulator/arm.h"

#include <QTest>

#include <cmath>

Q_DECLARE_METATYPE(sim::Pose)

using sim::Arm;
using sim::Joints;
using sim::Pose;

namespace {

constexpr double kPi = 3.14159265358979323846;

double distance(const Pose& a, const Pose& b) {
    double sum = 0;
    for (size_t i = 0; i < 3; ++i)
        sum += (a.trans[i] - b.trans[i]) * (a.trans[i] - b.trans[i]);
    return std::sqrt(sum);
}

/// R = Rz·Ry·Rx, written out, so that the library's convention is checked against ours.
std::array<double, 9> matrix(const std::array<double, 3>& rot) {
    const double cx = std::cos(rot[0]), sx = std::sin(rot[0]);
    const double cy = std::cos(rot[1]), sy = std::sin(rot[1]);
    const double cz = std::cos(rot[2]), sz = std::sin(rot[2]);
    return {cz * cy,
            cz * sy * sx - sz * cx,
            cz * sy * cx + sz * sx,
            sz * cy,
            sz * sy * sx + cz * cx,
            sz * sy * cx - cz * sx,
            -sy,
            cy * sx,
            cy * cx};
}

double turned(const Pose& a, const Pose& b) {
    const auto ma = matrix(a.rot), mb = matrix(b.rot);
    double worst = 0;
    for (size_t i = 0; i < 9; ++i)
        worst = std::max(worst, std::abs(ma[i] - mb[i]));
    return worst;
}

}  // namespace

class TestArm : public QObject {
    Q_OBJECT
private:
    static void axesTable() {
        QTest::addColumn<int>("axes");
        QTest::newRow("six axes") << 6;
        QTest::newRow("seven axes") << 7;
    }

private slots:
    void home_pointsDownInFrontOfTheBase_data() { axesTable(); }
    void home_pointsDownInFrontOfTheBase() {
        QFETCH(int, axes);
        const Arm arm(axes);
        QCOMPARE(int(arm.home().size()), axes);
        QVERIFY(arm.withinLimits(arm.home()));
        const Pose pose = arm.forward(arm.home());
        QVERIFY(distance(pose, {{0.5, 0, 0.4}, {kPi, 0, 0}}) < 1e-8);
        QVERIFY(turned(pose, {{0.5, 0, 0.4}, {kPi, 0, 0}}) < 1e-8);
        QVERIFY(pose.rot[0] > 0);
    }

    void grid_isReachedFromHomeAndNotDisturbedByTheSeed_data() { axesTable(); }
    void grid_isReachedFromHomeAndNotDisturbedByTheSeed() {
        QFETCH(int, axes);
        const Arm arm(axes);
        const std::array<double, 3> tilts[] = {
            {kPi, 0, 0}, {kPi - 0.4, 0.3, 0}, {kPi, 0, 1.0}, {-2.6, -0.5, -2.0}};
        int poses = 0;
        for (double x = 0.4; x < 1.15; x += 0.15) {
            for (double y = -0.45; y < 0.5; y += 0.15) {
                for (double z = -0.1; z < 0.65; z += 0.15) {
                    if (std::hypot(x, y) > 1.15)
                        continue;
                    for (const auto& tilt : tilts) {
                        const Pose pose{{x, y, z}, tilt};
                        const auto joints = arm.inverse(pose, arm.home());
                        QVERIFY2(
                            joints,
                            qPrintable(QStringLiteral("%1 %2 %3 / %4").arg(x).arg(y).arg(z).arg(tilt[0])));
                        QVERIFY(arm.withinLimits(*joints));
                        const Pose back = arm.forward(*joints);
                        QVERIFY(distance(back, pose) < 1e-7);
                        QVERIFY(turned(back, pose) < 1e-7);
                        ++poses;
                    }
                }
            }
        }
        QVERIFY(poses > 500);
    }

    void jointPoses_areFoundAgainFromNearby_data() { axesTable(); }
    void jointPoses_areFoundAgainFromNearby() {
        QFETCH(int, axes);
        const Arm arm(axes);
        for (int i = 0; i < 200; ++i) {
            Joints joints = arm.home(), seed = arm.home();
            for (size_t k = 0; k < joints.size(); ++k) {
                joints[k] += 0.4 * std::sin(1.0 + 7.0 * i + 3.0 * double(k));
                seed[k] = joints[k] + 0.03 * std::cos(2.0 * i + double(k));
            }
            const auto found = arm.inverse(arm.forward(joints), seed);
            QVERIFY(found);
            QVERIFY(distance(arm.forward(*found), arm.forward(joints)) < 1e-7);
            // Six axes have one solution there; seven leave the elbow free.
            for (size_t k = 0; k < joints.size() && axes == 6; ++k)
                QVERIFY(std::abs((*found)[k] - joints[k]) < 1e-5);
        }
    }

    void nearestSolution_followsTheSeedsTurnOfTheFlange() {
        const Arm arm(6);
        Joints seed = arm.home();
        seed[5] += 2 * kPi - 0.5;
        const auto joints = arm.inverse({{0.5, 0, 0.4}, {kPi, 0, 0}}, seed);
        QVERIFY(joints);
        QVERIFY(std::abs((*joints)[5] - arm.home()[5] - 2 * kPi) < 1e-6);
    }

    void faults_areToldApart_data() {
        QTest::addColumn<int>("axes");
        QTest::addColumn<Pose>("pose");
        QTest::addColumn<int>("fault");
        for (const int axes : {6, 7}) {
            const auto row = [axes](const char* name, const Pose& pose, Arm::Fault fault) {
                QTest::addRow("%s, %d axes", name, axes) << axes << pose << int(fault);
            };
            row("in front", {{1.3, 0, 0.2}, {kPi, 0, 0}}, Arm::Fault::None);
            row("too far", {{1.45, 0, 0.2}, {kPi, 0, 0}}, Arm::Fault::OutOfReach);
            row("too far aside", {{0.4, -1.6, 0.4}, {kPi, 0, 0}}, Arm::Fault::OutOfReach);
            row("too low", {{0.5, 0, -1.3}, {kPi, 0, 0}}, Arm::Fault::OutOfReach);
            row("at the foot", {{0.08, 0, 0.25}, {kPi, 0, 0}}, Arm::Fault::JointLimit);
        }
    }
    void faults_areToldApart() {
        QFETCH(int, axes);
        QFETCH(Pose, pose);
        QFETCH(int, fault);
        const Arm arm(axes);
        Arm::Fault found = Arm::Fault::None;
        const auto joints = arm.inverse(pose, arm.home(), &found);
        QCOMPARE(int(found), fault);
        QCOMPARE(joints.has_value(), found == Arm::Fault::None);
    }
};

QTEST_APPLESS_MAIN(TestArm)
#include "test_arm.moc"
