#include "simulator/arm.h"

#include "robot.h"
#include "simulator/frames.h"
#include "support/suite.h"

using namespace test;
using sim::Arm;

class TestArm : public QObject {
    Q_OBJECT
private:
    static bool reaches(const Arm& arm, const sim::Joints& joints, const sim::Pose& pose) {
        return KDL::Equal(sim::toFrame(arm.forward(joints)), sim::toFrame(pose), 1e-7) &&
               arm.withinLimits(joints);
    }

private slots:
    void everyPoseInFront_isReachedFromHomeWithinTheLimits() {
        for (const int axes : {6, 7}) {
            const Arm arm(axes);
            QCOMPARE(int(arm.home().size()), axes);
            QVERIFY(reaches(arm, arm.home(), {kHome, kDown}));
            for (int i = 0; i < 3 * 5 * 3 * 4; ++i) {
                const double x = 0.4 + 0.25 * (i % 3), y = -0.45 + 0.2 * (i / 3 % 5),
                             z = -0.1 + 0.3 * (i / 15 % 3);
                const Point rots[] = {kDown, {kPi - 0.4, 0.3, 0}, {kPi, 0, 1.0}, {-2.6, -0.5, -2.0}};
                const sim::Pose pose{{x, y, z}, rots[i / 45]};
                const auto joints = arm.inverse(pose, arm.home());
                QVERIFY2(joints && reaches(arm, *joints, pose),
                         qPrintable(QString("%1 %2").arg(axes).arg(i)));
            }
        }
    }

    void posture_isTheOneNextToTheSeed() {
        const Arm arm(6);
        for (int i = 0; i < 100; ++i) {
            sim::Joints joints = arm.home(), seed = arm.home();
            for (size_t k = 0; k < joints.size(); ++k) {
                joints[k] += 0.4 * std::sin(1.0 + 7.0 * i + 3.0 * double(k));
                seed[k] = joints[k] + 0.03 * std::cos(2.0 * i + double(k));
            }
            const auto found = arm.inverse(arm.forward(joints), seed);
            QVERIFY(found);
            for (size_t k = 0; k < joints.size(); ++k)
                QVERIFY(std::abs((*found)[k] - joints[k]) < 1e-5);
        }
        // Also by whole turns of the flange.
        sim::Joints seed = arm.home();
        seed[5] += 2 * kPi - 0.5;
        QVERIFY(std::abs((*arm.inverse({kHome, kDown}, seed))[5] - arm.home()[5] - 2 * kPi) < 1e-6);
    }

    void poseThatCannotBeReached_saysWhy() {
        using Fault = Arm::Fault;
        const std::vector<std::pair<Point, Fault>> rows = {{{1.3, 0, 0.2}, Fault::None},
                                                           {{1.45, 0, 0.2}, Fault::OutOfReach},
                                                           {{0.4, -1.6, 0.4}, Fault::OutOfReach},
                                                           {{0.5, 0, -1.3}, Fault::OutOfReach},
                                                           {{0.08, 0, 0.25}, Fault::JointLimit}};
        for (const int axes : {6, 7}) {
            for (const auto& [trans, expected] : rows) {
                const Arm arm(axes);
                Fault fault = Fault::None;
                QCOMPARE(arm.inverse({trans, kDown}, arm.home(), &fault).has_value(),
                         expected == Fault::None);
                QCOMPARE(fault, expected);
            }
        }
    }
};

LUMO_TEST(TestArm)
#include "test_arm.moc"
