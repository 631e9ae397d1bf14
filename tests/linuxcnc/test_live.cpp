#include "bridge/linuxcnc/linuxcnc.h"
#include "motions.h"
#include "support/suite.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTcpServer>
#include <QThread>

#include <cmath>

#include <sched.h>

using namespace bridge;
using test::arc;
using test::line;
using test::pose;

namespace {

constexpr int startMs = 40000;
constexpr int answerMs = 10000;
constexpr int cannotStart = 3;  // of start.py

/// A port that is free, and two behind it.
quint16 freePorts() {
    for (quint16 port = 20000; port < 30000; port += 7) {
        QTcpServer servers[3];
        bool areFree = true;
        for (int i = 0; i < 3; ++i) {
            areFree = areFree && servers[i].listen(QHostAddress::LocalHost, quint16(port + i));
        }
        if (areFree) {
            return port;
        }
    }
    return 0;
}

double distanceMm(const Pose& a, const Pose& b) {
    return 1000 * std::hypot(a.trans[0] - b.trans[0], a.trans[1] - b.trans[1], a.trans[2] - b.trans[2]);
}

/// What LinuxCNC has told.
struct Told {
    struct Result {
        int id, code;
        Posture at;
        bool moving;
    };
    Posture posture;
    std::vector<Result> results;
    double farthestFromHome = 0;
    bool moving = false, power = false, linked = false;
    QString reason;
};

}  // namespace

/// The bridge and LinuxCNC itself, where that is installed and nobody else runs it.
class TestLive : public QObject {
    Q_OBJECT
private:
    void order(const std::vector<Motion>& motions);
    bool allTold(int lastId) const { return !told_.results.empty() && told_.results.back().id == lastId; }

    QProcess linuxcnc_;
    std::unique_ptr<LinuxCnc> robot_;
    Told told_;
    const Pose home_ = pose(500, 0, 400);

private slots:
    void initTestCase();
    void init();
    void motions_endOneByOneInOrder_whereTheyWereSentTo();
    void aMotionThatCannotBeMade_failsBehindThoseBefore();
    void stop_brakesAndTellsNoResult();
    void aJog_endsWithTheHand_andHasNoResult();
    void inputs_comeBackThroughHal();
    void aHungPanel_losesLinkAndPower_untilTheOperatorSwitchesOn();
    void cleanupTestCase();
};

void TestLive::initTestCase() {
    if (QStandardPaths::findExecutable(QStringLiteral("linuxcnc")).isEmpty()) {
        QSKIP("LinuxCNC is not installed");
    }
    // Beats must not be late on a machine that has other work; where that is not allowed, none is lost in a
    // quiet one.
    const sched_param first{1};
    sched_setscheduler(0, SCHED_RR, &first);
    const quint16 port = freePorts();
    QVERIFY(port != 0);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LUMO_LINUXCNC_PORT"), QString::number(port));
    linuxcnc_.setProcessEnvironment(environment);
    linuxcnc_.start(QStringLiteral(LINUXCNC_FOLDER "/start.py"), QStringList());
    QVERIFY(linuxcnc_.waitForReadyRead(startMs) || linuxcnc_.state() == QProcess::NotRunning ||
            linuxcnc_.waitForFinished(startMs));
    if (linuxcnc_.state() == QProcess::NotRunning && linuxcnc_.exitCode() == cannotStart) {
        // Another one runs already, or this machine does not let it run: start.py says which.
        QSKIP(linuxcnc_.readAllStandardError());
    }
    robot_ = std::make_unique<LinuxCnc>(port);
    connect(robot_.get(), &Controller::postureChanged, this, [this](const Posture& posture) {
        told_.posture = posture;
        told_.farthestFromHome = std::max(told_.farthestFromHome, distanceMm(posture.pose, home_));
    });
    connect(robot_.get(), &Controller::finished, this, [this](int id, int code) {
        told_.results.push_back({id, code, told_.posture, told_.moving});
    });
    connect(robot_.get(), &Controller::movingChanged, this, [this](bool on) { told_.moving = on; });
    connect(robot_.get(), &Controller::powerChanged, this, [this](bool on) { told_.power = on; });
    connect(robot_.get(), &Controller::linkChanged, this, [this](bool up, const LinkReason& reason) {
        told_.linked = up;
        told_.reason = up ? told_.reason : reason.text();
    });
    robot_->signalPort()->start();
    robot_->start();
    QTRY_VERIFY_WITH_TIMEOUT(told_.linked, answerMs);
    robot_->setPower(true);
    QTRY_VERIFY_WITH_TIMEOUT(told_.power, answerMs);
}

/// Each case begins at home with nothing told.
void TestLive::init() {
    told_.results.clear();
    if (distanceMm(told_.posture.pose, home_) > 0.001) {
        order({line(home_, 250)});
        QTRY_VERIFY_WITH_TIMEOUT(allTold(1), answerMs);
    }
    told_.results.clear();
    told_.farthestFromHome = 0;
}

void TestLive::order(const std::vector<Motion>& motions) {
    for (const Motion& motion : test::numbered(motions)) {
        robot_->queue(motion);
    }
    robot_->release();
}

void TestLive::motions_endOneByOneInOrder_whereTheyWereSentTo() {
    Joints turned = robot_->arm().home();
    turned[0] += 0.1;
    turned[5] += 0.2;
    const std::vector<Motion> motions = {line(pose(530, 0, 400), 100, 3),
                                         line(pose(530, 30, 400), 100, 3),
                                         arc(pose(515, 45, 400), pose(500, 30, 400)),
                                         arc(pose(520, 20, 420), pose(530, 0, 410)),
                                         line(pose(520, 0, 400, 170, 10, 25), 100),
                                         test::joints(turned, 100),
                                         line(home_, 100)};
    order(motions);
    QTRY_VERIFY_WITH_TIMEOUT(allTold(int(motions.size())), answerMs);
    QCOMPARE(told_.results.size(), motions.size());
    for (std::size_t i = 0; i < motions.size(); ++i) {
        const Told::Result& result = told_.results[i];
        QCOMPARE(result.id, int(i) + 1);
        QCOMPARE(result.code, 0);
        QCOMPARE(result.moving, i + 1 < motions.size());
        const Pose target = motions[i].kind == Motion::Kind::Joint ? robot_->arm().forward(turned)
                                                                   : motions[i].poses.back().end;
        // In the middle of a corner, and a state of up to 10 ms later.
        const double near = motions[i].zone > 0 ? 4.5 : 1.5;
        QVERIFY2(distanceMm(result.at.pose, target) < near,
                 qPrintable(QStringLiteral("%1: %2").arg(i).arg(distanceMm(result.at.pose, target))));
    }
    const KDL::Frame end = kin::toFrame(told_.posture.pose), wanted = kin::toFrame(home_);
    QVERIFY(KDL::Equal(end, wanted, 1e-6));
}

void TestLive::aMotionThatCannotBeMade_failsBehindThoseBefore() {
    order({line(pose(520, 0, 400)), line(pose(1700, 0, 400)), line(home_)});
    QTRY_VERIFY_WITH_TIMEOUT(allTold(2), answerMs);
    QCOMPARE(told_.results.size(), std::size_t(2));
    QCOMPARE(told_.results[0].code, 0);
    QCOMPARE(told_.results[1].code, int(OutOfReach));
    QVERIFY(distanceMm(told_.posture.pose, pose(520, 0, 400)) < 0.001);
    QVERIFY(!told_.moving);
}

void TestLive::stop_brakesAndTellsNoResult() {
    order({line(pose(600, 0, 400), 100), line(pose(700, 0, 400), 100)});
    QTRY_VERIFY_WITH_TIMEOUT(told_.farthestFromHome > 20, answerMs);
    const double before = told_.farthestFromHome;
    robot_->stop();
    order({line(pose(500, 20, 400), 100)});  // sent when the arm stands
    QTRY_VERIFY_WITH_TIMEOUT(allTold(1), answerMs);
    QCOMPARE(told_.results.size(), std::size_t(1));
    QVERIFY2(told_.farthestFromHome < before + 15, qPrintable(QString::number(told_.farthestFromHome)));
    QVERIFY(distanceMm(told_.posture.pose, pose(500, 20, 400)) < 0.001);
}

void TestLive::aJog_endsWithTheHand_andHasNoResult() {
    const JogMove along{JogFrame::Base, int(JogAxis::Y), -1, 0.05};
    QCOMPARE(robot_->startJog(along, true), JogAnswer::Moves);
    QCOMPARE(robot_->startJog(along, true), JogAnswer::Moving);
    QTRY_VERIFY_WITH_TIMEOUT(told_.moving && told_.farthestFromHome > 5, answerMs);
    const double before = told_.farthestFromHome;
    robot_->stopJog();
    QTRY_VERIFY_WITH_TIMEOUT(!told_.moving, answerMs);
    QVERIFY2(told_.farthestFromHome < before + 10, qPrintable(QString::number(told_.farthestFromHome)));

    QCOMPARE(robot_->startJog({JogFrame::Joint, 0, 4, 0.2}, false), JogAnswer::JointLimit);
    const Joints from = told_.posture.joints;
    QCOMPARE(robot_->startJog({JogFrame::Joint, 5, 0.05, 0.2}, false), JogAnswer::Moves);
    QTRY_VERIFY_WITH_TIMEOUT(!told_.moving && std::abs(told_.posture.joints[5] - from[5] - 0.05) < 1e-5,
                             answerMs);
    QVERIFY(told_.results.empty());

    // A motion that is ordered ends a jog.
    QCOMPARE(robot_->startJog(along, true), JogAnswer::Moves);
    QTRY_VERIFY_WITH_TIMEOUT(told_.moving, answerMs);
    order({line(home_, 100)});
    QTRY_VERIFY_WITH_TIMEOUT(allTold(1), answerMs);
    QCOMPARE(told_.results.size(), std::size_t(1));
    QVERIFY(distanceMm(told_.posture.pose, home_) < 0.001);
}

void TestLive::inputs_comeBackThroughHal() {
    linuxcnc::HalPort* port = robot_->signalPort();
    QSignalSpy written(port, &SignalPort::written);
    QStringList changed;
    connect(port, &SignalPort::changed, this, [&](SignalRow::Kind, const QString& name, int bias, int value) {
        changed << QStringLiteral("%1.%2=%3").arg(name).arg(bias).arg(value);
    });
    for (const char* name : {"LUMO_DI.#2", "DI16", "TABLE_DI.#3"}) {
        QVERIFY(port->setInput(QLatin1String(name), true));
    }
    for (const char* name : {"LUMO_DI.#16", "LUMO_DI", "DI17", "DO1", "PART_NUMBER.#0", "DI"}) {
        QVERIFY2(!port->setInput(QLatin1String(name), true), name);
    }
    QTRY_COMPARE(changed, (QStringList{QStringLiteral("LUMO_DI.2=1"), QStringLiteral("DI16.0=1"),
                                       QStringLiteral("TABLE_DI.3=1")}));
    port->disconnect(this);
    port->write({{SignalRow::Kind::Register, QStringLiteral("LUMO_AO_7"), 0, -32768}}, 5);
    QTRY_VERIFY(written.size() == 1 && written[0] == (QVariantList{5, true}));
}

void TestLive::aHungPanel_losesLinkAndPower_untilTheOperatorSwitchesOn() {
    order({line(pose(700, 0, 400), 50)});
    QTRY_VERIFY_WITH_TIMEOUT(told_.moving, answerMs);
    QThread::msleep(250);  // no beat meanwhile
    QTRY_VERIFY_WITH_TIMEOUT(!told_.reason.isEmpty(), answerMs);
    QTRY_VERIFY_WITH_TIMEOUT(told_.linked && !told_.power, answerMs);
    QVERIFY(told_.results.empty());
    QVERIFY2(told_.farthestFromHome < 40, qPrintable(QString::number(told_.farthestFromHome)));
    robot_->setPower(true);
    QTRY_VERIFY_WITH_TIMEOUT(told_.power, answerMs);
    order({line(home_, 100)});
    QTRY_VERIFY_WITH_TIMEOUT(allTold(1), answerMs);
}

void TestLive::cleanupTestCase() {
    robot_.reset();
    if (linuxcnc_.state() != QProcess::NotRunning) {
        linuxcnc_.terminate();
        QVERIFY(linuxcnc_.waitForFinished(startMs));
    }
}

LUMO_TEST_ON(TestLive, test::onWallClock)
#include "test_live.moc"
