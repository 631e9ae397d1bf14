#include "bridge/linuxcnc/linuxcnc.h"
#include "motions.h"
#include "support/suite.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>

#include <ctime>
#include <utility>

using namespace bridge;
using test::line;
using test::pose;

namespace {

double monotonicS() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return double(now.tv_sec) + double(now.tv_nsec) * 1e-9;
}

/// Stands in for motion.py and rio.py: answers orders as it is told, and tells a state each 10 ms.
class FakeLinuxCnc : public QObject {
public:
    FakeLinuxCnc() {
        for (first = 30000; !listenFrom(first); first = quint16(first + 7)) {
        }
        tick_.callOnTimeout(this, &FakeLinuxCnc::work);
        tick_.start(2);
    }

    QByteArray state() const {
        QJsonArray zeros;
        for (int i = 0; i < 6; ++i) {
            zeros.append(0);
        }
        const QJsonObject told{{"t", monotonicS()}, {"j", zeros},         {"p", zeros},         {"b", begun},
                               {"l", under},        {"e", done},          {"idle", isIdle},     {"on", isOn},
                               {"homed", true},     {"jointMode", false}, {"err", QJsonArray()}};
        return QJsonDocument(told).toJson(QJsonDocument::Compact) + '\n';
    }
    void say(const QByteArray& text) const { clients_[2]->write(text); }
    int count(const QString& order) const { return orders.count(order); }

    quint16 first = 0;
    QStringList orders;
    int begun = 0, under = 0, done = 0;
    bool isIdle = true, isOn = true, answersStops = true, tellsState = true, tellsSignals = true;

private:
    bool listenFrom(quint16 port) {
        bool areFree = true;
        for (int i = 0; i < 3; ++i) {
            servers_[i].close();
            areFree = areFree && servers_[i].listen(QHostAddress::LocalHost, quint16(port + i));
        }
        return areFree;
    }
    void work() {
        for (int i = 0; i < 3; ++i) {
            if (QTcpSocket* const next = servers_[i].nextPendingConnection()) {
                clients_[i] = next;
            }
            while (i < 2 && clients_[i] && clients_[i]->canReadLine()) {
                answer(clients_[i], QJsonDocument::fromJson(clients_[i]->readLine()).object());
            }
        }
        if (tellsState && clients_[2] && clients_[2]->state() == QAbstractSocket::ConnectedState) {
            say(state());
        }
    }
    void answer(QTcpSocket* to, const QJsonObject& order) {
        const QString name = order["op"].toString();
        QJsonObject answer{{"ack", order["id"]}, {"op", name}, {"ok", true}, {"t", monotonicS()}};
        orders << name;
        if (name == "beat") {
            answer = {{"ev", "beat"}};
        }
        const bool isSignal = to == clients_[1];
        if (isSignal ? tellsSignals && (name == "beat" || name == "set") : name != "stop" || answersStops) {
            to->write(QJsonDocument(answer).toJson(QJsonDocument::Compact) + '\n');
        }
    }

    QTcpServer servers_[3];
    QPointer<QTcpSocket> clients_[3];
    QTimer tick_;
};

}  // namespace

/// The controller at the edges of its link, against a program that stands in for LinuxCNC's.
class TestLink : public QObject {
    Q_OBJECT

    void connectTo(LinuxCnc* robot) {
        QSignalSpy linked(robot, &Controller::linkChanged);
        robot->signalPort()->start();
        robot->start();
        QTRY_VERIFY(!linked.isEmpty() && linked.last().first().toBool());
    }
    static void release(LinuxCnc* robot, int id) {
        Motion motion = line(pose(505, 0, 400));
        motion.id = id;
        robot->queue(motion);
        robot->release();
    }

private slots:
    /// The adapter waits for this standstill: without it the robot would count as moving for ever.
    void aStopBeforeTheBatchBegins_tellsTheStandstill() {
        FakeLinuxCnc cell;
        LinuxCnc robot(cell.first);
        connectTo(&robot);
        QSignalSpy moving(&robot, &Controller::movingChanged), finished(&robot, &Controller::finished);
        release(&robot, 1);
        QTRY_COMPARE(cell.count("batch"), 1);
        robot.stop();
        QTRY_COMPARE(moving.size(), 1);
        QCOMPARE(moving[0][0].toBool(), false);
        QVERIFY(finished.isEmpty());
    }

    /// What is told before a result may stop its motion, or end the link.
    void aReceiverThatStops_getsNoResult() {
        for (const bool cuts : {false, true}) {
            FakeLinuxCnc cell;
            LinuxCnc robot(cell.first);
            connectTo(&robot);
            QSignalSpy finished(&robot, &Controller::finished);
            release(&robot, 1);
            QTRY_COMPARE(cell.count("batch"), 1);
            cell.begun = 1;
            cell.under = 2;
            cell.isIdle = false;
            QSignalSpy moving(&robot, &Controller::movingChanged);
            QTRY_COMPARE(moving.size(), 1);
            bool isDone = false;
            connect(&robot, &Controller::movingChanged, &robot, [&] {
                if (!std::exchange(isDone, true)) {
                    cuts ? void(robot.cutLink(true)) : robot.stop();
                }
            });
            cell.done = 1;
            cell.isIdle = true;
            QTRY_VERIFY(moving.size() > 1);
            QTest::qWait(100);
            QVERIFY(finished.isEmpty());
        }
    }

    /// Python writes NaN where a joint has no position. Neither is the arm at home then, nor are the drives
    /// off.
    void aStateThatCannotBeRead_endsTheLink_data() {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("not a number") << QByteArray(R"({"t":NaN,"j":[NaN,0,0,0,0,0]})");
        QTest::newRow("no position") << QByteArray(R"({"t":1,"on":true})");
        QTest::newRow("half a line") << QByteArray(R"({"t":1,)");
        QTest::newRow("zeros") << QByteArray("{}\0\0", 4);
        QTest::newRow("endless") << QByteArray(4 << 20, '[');
    }
    void aStateThatCannotBeRead_endsTheLink() {
        QFETCH(QByteArray, text);
        FakeLinuxCnc cell;
        LinuxCnc robot(cell.first);
        connectTo(&robot);
        QSignalSpy linked(&robot, &Controller::linkChanged), posture(&robot, &Controller::postureChanged),
            power(&robot, &Controller::powerChanged);
        cell.tellsState = false;
        cell.say(QString(QTest::currentDataTag()) == "endless" ? text : text + '\n');
        QTRY_COMPARE(linked.size(), 1);
        QVERIFY2(linked[0][0].toBool() == false && posture.isEmpty() && power.isEmpty(), text.constData());
    }

    /// The arm may still move, and only the signals' heartbeat can hold it then.
    void aStopWithoutAnAnswer_endsTheLink() {
        FakeLinuxCnc cell;
        cell.answersStops = false;
        LinuxCnc robot(cell.first);
        connectTo(&robot);
        release(&robot, 1);
        QTRY_COMPARE(cell.count("batch"), 1);
        QSignalSpy linked(&robot, &Controller::linkChanged);
        robot.stop();
        QTRY_COMPARE_WITH_TIMEOUT(linked.size(), 1, 30000);
    }

    /// The system takes a connection that the program does not take: it may serve another client.
    void signalsThatSayNothing_areNoLink() {
        FakeLinuxCnc cell;
        cell.tellsSignals = false;
        LinuxCnc robot(cell.first);
        QSignalSpy linked(&robot, &Controller::linkChanged);
        robot.signalPort()->start();
        robot.start();
        QTRY_VERIFY(cell.count("beat") > 10);
        QVERIFY(linked.isEmpty());
    }
};

LUMO_TEST_ON(TestLink, test::onWallClock)
#include "test_link.moc"
