#include "mendo/modulemanager.h"
#include "runner/runwatch.h"
#include "runner/treefollower.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QtTest>

using mendo::ModuleObject;
using run::Change;
using run::RunWatch;
using run::TreeFollower;

/// Stands in for the package's executor, which is known by its class name.
class LumoExecutor : public QObject {
    Q_OBJECT
};

class RunnerFollower : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void announcesBeforeThePackageActs();
    void followsWhatIsMadeLater();
    void whatElseIsNotFollowed();
    void reasons_data();
    void reasons();
    void countsTheExecutorsLines();

private:
    TreeFollower follower_;
    LumoExecutor executor_;
};

void RunnerFollower::initTestCase() {
    const QJsonObject execute{
        {QStringLiteral("state"), QStringLiteral("idle")},
        {QStringLiteral("line"), -1},
        {QStringLiteral("trigger"), QJsonObject{{QStringLiteral("pause"), QJsonValue()}}}};
    const QJsonObject current{{QStringLiteral("line"), 0}, {QStringLiteral("pausepoint"), QJsonObject()}};
    const QJsonArray program{QJsonObject{{QStringLiteral("type"), QStringLiteral("open")}},
                             QJsonObject{{QStringLiteral("type"), QStringLiteral("close")}}};
    m()->regist(this, QStringLiteral("lumo"))
        ->loadJson(this, QJsonObject{{QStringLiteral("execute"), execute},
                                     {QStringLiteral("current"), current},
                                     {QStringLiteral("program"), program},
                                     {QStringLiteral("count"), 0}});
}

void RunnerFollower::announcesBeforeThePackageActs() {
    QStringList order;
    connect(&follower_, &TreeFollower::changed, this,
            [&order](const Change& change) { order.append(change.path); });
    const ModuleObject* pause = m(QStringLiteral("lumo.execute.trigger.pause"));
    const auto package = connect(pause, &ModuleObject::changed, this, [&order] {
        order.append(QStringLiteral("package"));
        m(QStringLiteral("lumo.count"))->setValue(nullptr, 1);
    });
    m(QStringLiteral("lumo.execute.trigger.pause"))->trigger();
    disconnect(package);
    disconnect(&follower_, nullptr, this, nullptr);
    QCOMPARE(order, (QStringList{QStringLiteral("lumo.execute.trigger.pause"), QStringLiteral("package"),
                                 QStringLiteral("lumo.count")}));
}

void RunnerFollower::followsWhatIsMadeLater() {
    QStringList seen;
    connect(&follower_, &TreeFollower::changed, this,
            [&seen](const Change& change) { seen.append(change.path); });
    m(QStringLiteral("lumo"))->set(nullptr, QStringLiteral("current.program.moveL"), 1);
    m(QStringLiteral("lumo.current.program.moveL"))
        ->loadJson(nullptr, QJsonObject{{QStringLiteral("speed"), 5}});
    m(QStringLiteral("lumo.current.program.moveL.speed"))->setValue(nullptr, 6);
    m(QStringLiteral("kord.r.mode"))->setValue(nullptr, QStringLiteral("manual"));
    disconnect(&follower_, nullptr, this, nullptr);
    QCOMPARE(seen,
             (QStringList{
                 QStringLiteral("lumo.current.program.moveL"), QStringLiteral("lumo.current.program.moveL"),
                 QStringLiteral("lumo.current.program.moveL.speed"), QStringLiteral("kord.r.mode")}));
}

void RunnerFollower::whatElseIsNotFollowed() {
    int seen = 0;
    connect(&follower_, &TreeFollower::changed, this, [&seen] { ++seen; });
    m(QStringLiteral("lumo"))->set(nullptr, QStringLiteral("currentish"), 1);
    m(QStringLiteral("lumo.program.#0.type"))->setValue(nullptr, QStringLiteral("open"));
    ModuleObject* taken = m(QStringLiteral("lumo.current.program.moveL"));
    m(QStringLiteral("lumo.current.program"))->remove(nullptr, QStringLiteral("moveL"));
    taken->setValue(nullptr, 7);
    disconnect(&follower_, nullptr, this, nullptr);
    QCOMPARE(seen, 0);
}

void RunnerFollower::reasons_data() {
    QTest::addColumn<QStringList>("writes");
    QTest::addColumn<QString>("reason");
    QTest::newRow("refused") << QStringList() << "refused";
    QTest::newRow("pause while idle") << QStringList{"pause", "point"} << "refused";
    QTest::newRow("finished") << QStringList{"busy", "idle"} << "finished";
    QTest::newRow("paused") << QStringList{"busy", "pause", "point", "idle"} << "paused";
    QTest::newRow("error") << QStringList{"busy", "point", "idle"} << "error";
    QTest::newRow("paused while an error closes")
        << QStringList{"busy", "point", "pause", "point", "idle"} << "error";
    QTest::newRow("power") << QStringList{"busy", "off", "point", "idle"} << "power";
    QTest::newRow("power lost after a pause") << QStringList{"busy", "pause", "off", "idle"} << "paused";
    QTest::newRow("power lost while idle") << QStringList{"busy", "idle", "off"} << "finished";
    QTest::newRow("paused, then resumed")
        << QStringList{"busy", "pause", "point", "idle", "busy", "idle"} << "finished";
    QTest::newRow("finished, then paused while idle")
        << QStringList{"busy", "idle", "pause", "point"} << "finished";
    QTest::newRow("state written by somebody else") << QStringList{"foreign"} << "refused";
}

void RunnerFollower::reasons() {
    QFETCH(QStringList, writes);
    const RunWatch watch(&follower_);
    const QString state = QStringLiteral("lumo.execute.state");
    for (const QString& write : writes) {
        if (write == QLatin1String("busy") || write == QLatin1String("idle"))
            m(state)->setValue(&executor_, write);
        else if (write == QLatin1String("foreign"))
            m(state)->setValue(this, QStringLiteral("busy"));
        else if (write == QLatin1String("pause"))
            m(QStringLiteral("lumo.execute.trigger.pause"))->trigger();
        else if (write == QLatin1String("point"))
            m(QStringLiteral("lumo.current.pausepoint"))->clear(&executor_);
        else
            m(QStringLiteral("kord.r.power"))->setValue(this, write);
    }
    QTEST(watch.reason(), "reason");
}

void RunnerFollower::countsTheExecutorsLines() {
    RunWatch watch(&follower_);
    int mode = 0;
    watch.setRunMode(&mode);
    QStringList begun;
    connect(&watch, &RunWatch::lineBegun, this, [&begun](int line, const QString& type) {
        begun.append(QStringLiteral("%1 %2").arg(line).arg(type));
    });
    ModuleObject* current = m(QStringLiteral("lumo.current.line"));
    ModuleObject* shown = m(QStringLiteral("lumo.execute.line"));
    current->setValue(this, 0);  // preparation
    shown->setValue(&executor_, 0);
    current->setValue(&executor_, 0);
    current->setValue(&executor_, 1);
    mode = 2;
    shown->setValue(&executor_, 1);
    QCOMPARE(begun,
             (QStringList{QStringLiteral("0 open"), QStringLiteral("1 close"), QStringLiteral("1 close")}));
    QCOMPARE(watch.lines(), 3);
}

QTEST_GUILESS_MAIN(RunnerFollower)
#include "tst_follower.moc"
