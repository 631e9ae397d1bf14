#include "bridge/linuxcnc/halport.h"
#include "support/suite.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>

using namespace bridge;

namespace {

/// What rio.py does, as far as a test needs it: takes lines, and answers as it is told.
class FakeRio : public QTcpServer {
public:
    FakeRio() { listen(QHostAddress::LocalHost); }
    /// Takes what has come; false while nobody is connected.
    bool take() {
        if (!client_) {
            client_ = nextPendingConnection();
        }
        while (client_ && client_->canReadLine()) {
            const QJsonObject message = QJsonDocument::fromJson(client_->readLine()).object();
            const QString name = message[QLatin1String("op")].toString();
            ++counts[name];
            if (name == QLatin1String("beat") && answersBeats) {
                say({{QStringLiteral("ev"), QStringLiteral("beat")}});
            } else if (name == QLatin1String("set")) {
                writes = message[QLatin1String("w")].toArray();
                say({{QStringLiteral("ack"), message[QLatin1String("id")]}});
            }
        }
        return client_;
    }
    void sayFollowing(bool on) {
        say({{QStringLiteral("ev"), QStringLiteral("ok")}, {QStringLiteral("value"), on ? 1 : 0}});
    }

    QHash<QString, int> counts;
    QJsonArray writes;
    bool answersBeats = true;

private:
    void say(const QJsonObject& message) {
        client_->write(QJsonDocument(message).toJson(QJsonDocument::Compact) + '\n');
    }
    QTcpSocket* client_ = nullptr;
};

}  // namespace

/// The outputs' heartbeat, against a program that stands in for rio.py.
class TestHeartbeat : public QObject {
    Q_OBJECT
private slots:
    void aMissedBeat_refusesWritesUntilTheOperatorArms();
    void silence_closesTheConnection();
};

void TestHeartbeat::aMissedBeat_refusesWritesUntilTheOperatorArms() {
    FakeRio rio;
    linuxcnc::HalPort port(rio.serverPort(), nullptr);
    QSignalSpy written(&port, &SignalPort::written), missed(&port, &linuxcnc::HalPort::heartbeatMissed);
    port.start();
    QTRY_VERIFY(rio.take() && rio.counts[QStringLiteral("beat")] > 3);
    QCOMPARE(rio.counts[QStringLiteral("arm")], 1);
    QTRY_VERIFY(port.isOpen());
    rio.sayFollowing(true);
    port.write({{SignalRow::Kind::Register, QStringLiteral("LUMO_DO"), 3, 1},
                {SignalRow::Kind::Register, QStringLiteral("LUMO_AO_1"), 0, -5},
                {SignalRow::Kind::Output, QStringLiteral("DO2"), 0, 1}},
               41);
    QTRY_VERIFY(rio.take() && written.size() == 1);
    QCOMPARE(written.takeFirst(), (QVariantList{41, true}));
    QCOMPARE(QJsonDocument(rio.writes).toJson(QJsonDocument::Compact),
             QByteArray(R"([["do",3,1],["ao",1,-5],["do",17,1]])"));

    QStringList off;
    connect(&port, &SignalPort::changed, this,
            [&off](SignalRow::Kind, const QString& name, int bias, int value) {
                off << (value == 0 ? QStringLiteral("%1.%2").arg(name).arg(bias) : QString());
            });
    rio.sayFollowing(false);
    QTRY_VERIFY(rio.take() && missed.size() == 1);
    QTRY_COMPARE(off.size(), 55);  // all outputs are told
    QVERIFY(off.contains(QStringLiteral("LUMO_DO.3")) && !off.contains(QString()));
    QVERIFY(missed[0][1].toBool());
    port.write({{SignalRow::Kind::Register, QStringLiteral("LUMO_DO"), 3, 1}}, 42);
    QCOMPARE(written.takeFirst(), (QVariantList{42, false}));
    port.arm();
    QTRY_VERIFY(rio.take() && rio.counts[QStringLiteral("arm")] == 2);
    for (const QJsonValue write : qAsConst(rio.writes)) {
        QCOMPARE(write.toArray().at(2).toInt(), 0);  // nothing comes back that was on before
    }
}

void TestHeartbeat::silence_closesTheConnection() {
    FakeRio rio;
    linuxcnc::HalPort port(rio.serverPort(), nullptr);
    QSignalSpy closed(&port, &linuxcnc::HalPort::closed);
    port.start();
    QTRY_VERIFY(rio.take() && rio.counts[QStringLiteral("beat")] > 3);
    QTRY_VERIFY(port.isOpen());
    QCOMPARE(closed.size(), 0);
    rio.answersBeats = false;
    QTRY_VERIFY(rio.take() && closed.size() == 1);
}

LUMO_TEST_ON(TestHeartbeat, test::onWallClock)
#include "test_heartbeat.moc"
