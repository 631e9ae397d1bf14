#include "mendo/modulemanager.h"
#include "runner/runwatch.h"
#include "recording/treefollower.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QtTest>

using mendo::ModuleObject;
using rec::Change;
using run::RunWatch;
using rec::TreeFollower;

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
    void createdNodesAreFollowed_data();
    void createdNodesAreFollowed();
    void whatElseIsNotFollowed();
    void reasons_data();
    void reasons();
    void countsTheExecutorsLines();
    void typesComeFromWhatIsExecuted();

private:
    void write(const QString& what);

    TreeFollower follower_;
    LumoExecutor executor_;
};

void RunnerFollower::initTestCase() {
    const QJsonObject execute{
        {QStringLiteral("state"), QStringLiteral("idle")},
        {QStringLiteral("line"), -1},
        {QStringLiteral("trigger"), QJsonObject{{QStringLiteral("start"), -1},
                                                {QStringLiteral("once"), -1},
                                                {QStringLiteral("pause"), QJsonValue()}}}};
    const QJsonObject current{{QStringLiteral("line"), 0},
                              {QStringLiteral("programtype"), QString()},
                              {QStringLiteral("points"), QJsonArray{QJsonObject()}},
                              {QStringLiteral("pausepoint"), QJsonObject()}};
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

void RunnerFollower::createdNodesAreFollowed_data() {
    QTest::addColumn<QString>("path");
    QTest::newRow("robot") << "kord.r.made";
    QTest::newRow("robot, deeper") << "kord.r.station.made";
    QTest::newRow("package") << "lumo.execute.made";
    QTest::newRow("first element of a new list") << "lumo.current.pausepoint.trans.#0";
    QTest::newRow("its second element") << "lumo.current.pausepoint.trans.#1";
    QTest::newRow("below a new element") << "lumo.current.made.#0.rot.#0";
    QTest::newRow("below an element that nobody followed") << "lumo.current.points.#0.speed";
}

void RunnerFollower::createdNodesAreFollowed() {
    QFETCH(QString, path);
    QStringList seen;
    connect(&follower_, &TreeFollower::changed, this,
            [&seen](const Change& change) { seen.append(change.path); });
    follower_.followElement(path);
    m()->root()->set(this, path, 1);
    m()->root()->set(this, path, 2);
    disconnect(&follower_, nullptr, this, nullptr);
    QCOMPARE(seen, (QStringList{path, path}));
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
    QTest::newRow("state written by somebody else") << QStringList{"foreign busy"} << "refused";
    QTest::newRow("cut short by somebody else")
        << QStringList{"start", "busy", "foreign idle", "foreign busy"} << "error";
    QTest::newRow("result of a failed step") << QStringList{"once", "busy", "result -1", "idle"} << "error";
    QTest::newRow("result of a step") << QStringList{"once", "busy", "result 0", "idle"} << "finished";
    QTest::newRow("step that was paused")
        << QStringList{"once", "busy", "pause", "result -1", "idle"} << "paused";
    QTest::newRow("failed result after a step")
        << QStringList{"once", "busy", "idle", "result -1"} << "finished";
    QTest::newRow("start that a step refuses")
        << QStringList{"once", "busy", "start", "result -1", "idle"} << "error";
    QTest::newRow("failed way back") << QStringList{"start", "busy", "result -1", "idle"} << "error";
    QTest::newRow("failed when the walk is over")
        << QStringList{"start", "busy", "idle", "result -9"} << "error";
}

void RunnerFollower::write(const QString& what) {
    ModuleObject* state = m(QStringLiteral("lumo.execute.state"));
    const QString trigger = QStringLiteral("lumo.execute.trigger.");
    if (what == QLatin1String("busy") || what == QLatin1String("idle"))
        state->setValue(&executor_, what);
    else if (what.startsWith(QLatin1String("foreign ")))
        state->setValue(this, what.section(QLatin1Char(' '), 1));
    else if (what == QLatin1String("start") || what == QLatin1String("once"))
        m(trigger + what)->setValue(this, 0);
    else if (what == QLatin1String("pause"))
        m(trigger + what)->trigger();
    else if (what == QLatin1String("point"))
        m(QStringLiteral("lumo.current.pausepoint"))->clear(&executor_);
    else
        m(QStringLiteral("kord.r.power"))->setValue(this, what);
}

void RunnerFollower::reasons() {
    QFETCH(QStringList, writes);
    RunWatch watch(&follower_);
    for (const QString& what : writes) {
        if (what.startsWith(QLatin1String("result ")))
            watch.motionEnded(what.section(QLatin1Char(' '), 1).toInt());
        else
            write(what);
    }
    QTEST(watch.reason(), "reason");
}

void RunnerFollower::countsTheExecutorsLines() {
    const RunWatch watch(&follower_);
    QList<int> begun;
    connect(&watch, &RunWatch::lineBegun, this, [&begun](int line) { begun.append(line); });
    ModuleObject* current = m(QStringLiteral("lumo.current.line"));
    ModuleObject* type = m(QStringLiteral("lumo.current.programtype"));
    ModuleObject* shown = m(QStringLiteral("lumo.execute.line"));
    write(QStringLiteral("once"));
    write(QStringLiteral("busy"));
    shown->setValue(&executor_, 1);
    write(QStringLiteral("idle"));
    // Preparation, as a hand does it; a walk writes the shown line in one run mode only.
    current->setValue(this, 0);
    type->setValue(this, 0);
    write(QStringLiteral("start"));
    write(QStringLiteral("busy"));
    shown->setValue(&executor_, 0);
    for (const int line : {0, 2}) {
        current->setValue(&executor_, line);
        type->setValue(&executor_, QStringLiteral("close"));
    }
    current->setValue(&executor_, 3);  // whoever heard this paused the run
    write(QStringLiteral("pause"));
    write(QStringLiteral("idle"));
    QCOMPARE(begun, (QList<int>{1, 0, 2}));
    QCOMPARE(watch.lines(), 3);
}

/// The program in the tree may have been replaced by then.
void RunnerFollower::typesComeFromWhatIsExecuted() {
    const RunWatch watch(&follower_);
    QStringList begun;
    connect(&watch, &RunWatch::lineBegun, this, [&begun](int, const QString& type) { begun.append(type); });
    write(QStringLiteral("start"));
    write(QStringLiteral("busy"));
    m(QStringLiteral("lumo.current.line"))->setValue(&executor_, 7);
    m(QStringLiteral("lumo.current.programtype"))->setValue(&executor_, QStringLiteral("moveL"));
    write(QStringLiteral("idle"));
    write(QStringLiteral("once"));
    write(QStringLiteral("busy"));
    m(QStringLiteral("lumo.execute.line"))->setValue(&executor_, 1);
    write(QStringLiteral("idle"));
    QCOMPARE(begun, (QStringList{QStringLiteral("moveL"), QStringLiteral("close")}));
}

QTEST_GUILESS_MAIN(RunnerFollower)
#include "tst_follower.moc"
