// The robot service: its nodes, and the announcement of every call.

#include "host/nodesupport.h"
#include "kord/controllermanager.h"
#include "kord/kordservice.h"
#include "mendo/modulemanager.h"

#include <QTest>

using mendo::ModuleObject;

class TestKordService : public QObject {
    Q_OBJECT
private slots:
    void nodes_existBeforeAnyController_data();
    void nodes_existBeforeAnyController();
    void commandNodes_areDirectChildren_data();
    void commandNodes_areDirectChildren();
    void calls_areAnnounced();
    void command_needsItsNodeOnlyDuringTheCall();
    void set_copiesAndAnnounces();
    void offer_makesAndWithdraws();
    void pendant_hasItsKeysAtRest();
};

void TestKordService::nodes_existBeforeAnyController_data() {
    QTest::addColumn<bool>("inHostTree");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("content");  // of a container; else the value's text
    for (const char* list :
         {"rova.robot.register._list", "rova.project.tool._list", "rova.project.wobj._list"}) {
        QTest::newRow(list) << true << list << "[]";
    }
    for (const char* key : {"rova.handle.drag.space", "rova.handle.drag.type", "rova.sidemove.drag.space",
                            "rova.sidemove.drag.type"}) {
        QTest::newRow(key) << true << key << "";
    }
    QTest::newRow("power") << true << "kord.r.power"
                           << "off";
    QTest::newRow("state") << true << "kord.r.state"
                           << "idle";
    QTest::newRow("mode") << true << "kord.r.mode"
                          << "manual";
    QTest::newRow("posture") << false << "sys.posture"
                             << "{'near':[],'rot':[0,0,0],'trans':[0,0,0]}";
    QTest::newRow("axes") << false << "sys.info.joint_num"
                          << "6";
    QTest::newRow("zone") << false << "move.default_zone"
                          << "0";
    QTest::newRow("inputs and outputs") << false << "device.io"
                                        << "{'DI':{},'DO':{}}";
    QTest::newRow("registers") << false << "register.values"
                               << "{}";
    QTest::newRow("tool set") << false << "pel.coord.toolset"
                              << "{}";
}

void TestKordService::nodes_existBeforeAnyController() {
    QFETCH(bool, inHostTree);
    QFETCH(QString, path);
    QFETCH(QString, content);
    const ModuleObject* node = kordservice()->get(this, path);
    if (inHostTree) {
        QVERIFY(node->isNull());
        node = m(path);
    }
    QVERIFY(!node->isNull());
    QCOMPARE(node->value().isValid() ? node->getString() : text(node), content);
}

void TestKordService::commandNodes_areDirectChildren_data() {
    QTest::addColumn<QString>("name");
    for (const char* name : {"move.j", "move.l", "move.c", "move.reset", "move.stop", "move.opr.enough",
                             "register.write", "register.write_multi", "device.io.out.do"}) {
        QTest::newRow(name) << name;
    }
}

void TestKordService::commandNodes_areDirectChildren() {
    QFETCH(QString, name);
    ModuleObject* node = kordservice()->commandNode(name);
    QVERIFY(kordservice()->commandNode(QString())->hasCmobj(name));
    QCOMPARE(node->name(), name);
    // Only a result writes it.
    Recorder recorder(node);
    kordservice()->command(this, name, nullptr);
    QVERIFY(recorder.heard.isEmpty());
}

void TestKordService::calls_areAnnounced() {
    QStringList heard;
    QObject context;
    connect(kordservice(), &KordService::issued, &context, [&](const KordCall& call) {
        heard << QStringLiteral("%1 %2 %3 %4 %5")
                     .arg(call.name, call.exec ? "exec" : "command", call.sender == this ? "me" : "nobody",
                          call.node ? text(call.node) : "-", call.value.isValid() ? "value" : "-");
        heard << call.argument(QStringLiteral("name")).toString() +
                     call.argument(QStringLiteral("traj.speed")).toString() +
                     (call.argument(QStringLiteral("none")).isValid() ? "?" : "");
    });
    ModuleObject arguments;
    arguments.set(this, QStringLiteral("name"), QStringLiteral("n"))
        ->set(this, QStringLiteral("traj.speed"), 0.5);
    kordservice()->command(this, QStringLiteral("move.l"), &arguments);
    kordservice()->command(nullptr, QStringLiteral("move.stop"), ModuleObject::null());
    const QVariantHash hash{{QStringLiteral("name"), QStringLiteral("DO1")}};
    kordservice()->command(nullptr, QStringLiteral("device.io.out.do"), hash);
    kordservice()->execCommand(this, QStringLiteral("register.write"), hash);
    QCOMPARE(heard,
             (QStringList{"move.l command me {'name':'n','traj':{'speed':0.5}} -", "n0.5",
                          "move.stop command nobody - -", "", "device.io.out.do command nobody - value",
                          "DO1", "register.write exec me - value", "DO1"}));
}

void TestKordService::command_needsItsNodeOnlyDuringTheCall() {
    QString seen;
    QObject context;
    auto arguments = std::make_unique<ModuleObject>();
    arguments->loadJson(this, json("{'point': [1]}"));
    connect(kordservice(), &KordService::issued, &context,
            [&](const KordCall& call) { seen = text(call.node); });
    kordservice()->command(this, QStringLiteral("move.j"), arguments.get());
    arguments.reset();
    QCOMPARE(seen, QStringLiteral("{'point':[1]}"));
}

void TestKordService::set_copiesAndAnnounces() {
    ModuleObject toolset;
    toolset.loadJson(this, json("{'end': {'name': 'gun'}}"));
    ModuleObject* target = kordservice()->dataNode(QStringLiteral("pel.coord.toolset"));
    Recorder recorder(target);
    QStringList handed;
    QObject context;
    connect(kordservice(), &KordService::handed, &context,
            [&](const QString& path, const ModuleObject* node) { handed << path + text(node); });
    kordservice()->set(this, QStringLiteral("pel.coord.toolset"), &toolset);
    kordservice()->set(this, QStringLiteral("new.path"), &toolset);
    QCOMPARE(recorder.heard, QStringList{"changed <"});
    QCOMPARE(text(target), QStringLiteral("{'end':{'name':'gun'}}"));
    QCOMPARE(kordservice()->get(this, QStringLiteral("new.path"), QStringLiteral("end.name"))->getString(),
             QStringLiteral("gun"));
    QCOMPARE(handed.first(), QStringLiteral("pel.coord.toolset{'end':{'name':'gun'}}"));
    QCOMPARE(handed.size(), 2);
}

void TestKordService::offer_makesAndWithdraws() {
    const QString name = QStringLiteral("register.write_multi");
    kordservice()->offerCommand(name, false);
    QVERIFY(!kordservice()->commandNode(QString())->hasCmobj(name));
    QVERIFY(kordservice()->commandNode(name)->isNull());
    kordservice()->offerCommand(name, true);
    kordservice()->offerCommand(name, true);
    QVERIFY(!kordservice()->commandNode(name)->isNull());
}

void TestKordService::pendant_hasItsKeysAtRest() {
    ModuleObject* keys = kord::ControllerManager::cmdItemMobj(QStringLiteral("endtool.keypad.state_change"),
                                                              QStringLiteral("notify"));
    QCOMPARE(keys->size(), 5);
    // A key that is down is reported as false.
    for (const char* key : {"next", "last", "center", "enter", "delete"}) {
        QVERIFY2(keys->c(QLatin1String(key))->getBool(false), key);
    }
    QVERIFY(keys == kord::ControllerManager::cmdItemMobj(QStringLiteral("endtool.keypad.state_change"),
                                                         QStringLiteral("notify")));
    QVERIFY(keys != kord::ControllerManager::cmdItemMobj(QStringLiteral("endtool.keypad.state_change"),
                                                         QStringLiteral("other")));
}

QTEST_GUILESS_MAIN(TestKordService)
#include "test_kordservice.moc"
