#include "panel/toolset.h"

#include "support/executorbench.h"

#include <QComboBox>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTest>
#include <QtMath>

Q_DECLARE_METATYPE(const ModuleObject*)

/// The selectors of tool and work object, without the page around them.
class TestToolset : public QObject {
    Q_OBJECT

    test::ExecutorBench bench_;

    static void setHostList(const char* path, const QByteArray& entries) {
        m(QString::fromLatin1(path))->loadJson(nullptr, QJsonDocument::fromJson(entries).array());
    }
    static QStringList entries(const QComboBox& combo) {
        QStringList texts;
        for (int i = 0; i < combo.count(); ++i) {
            texts << combo.itemText(i);
        }
        return texts;
    }
    static double number(const char* path) { return m(QString::fromLatin1(path))->getDouble(-1); }

private slots:
    void initTestCase() { qRegisterMetaType<const ModuleObject*>("const mendo::ModuleObject*"); }

    void init() {
        m("lumo.toolset")->copyFrom(this, m("lumo.default.default_toolset"));
        setHostList("rova.project.tool._list",
                    R"([{"name":"T1","frame":{"pos":{"x":100,"y":0,"z":50},"ori":{"euler":{"a":90}}},
                         "load":{"mass":2.5,"pose":{"pos":{"z":40}},"moment":[1000,2000,3000]}},
                        {"name":"T2","frame":{"pos":{"x":200}}}])");
        setHostList("rova.project.wobj._list", R"([{"name":"W1","frame":{"pos":{"y":300}}}])");
    }

    void conversion_data() {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("target");
        QTest::addColumn<double>("expected");
        QTest::addColumn<bool>("toolOnly");
        const auto row = [](const char* source, const char* target, double expected, bool toolOnly) {
            QTest::newRow(source) << source << target << expected << toolOnly;
        };
        row("frame.pos.x", "trans.#0", 0.09, false);
        row("frame.pos.y", "trans.#1", 0.09, false);
        row("frame.pos.z", "trans.#2", 0.09, false);
        row("frame.ori.euler.a", "rot.#0", M_PI_2, false);
        row("frame.ori.euler.b", "rot.#1", M_PI_2, false);
        row("frame.ori.euler.c", "rot.#2", M_PI_2, false);
        row("load.mass", "load.mass", 90.0, true);
        row("load.pose.pos.x", "load.cog.#0", 0.09, true);
        row("load.pose.pos.y", "load.cog.#1", 0.09, true);
        row("load.pose.pos.z", "load.cog.#2", 0.09, true);
        row("load.moment.#0", "load.inertia.#0", 0.00009, true);
        row("load.moment.#1", "load.inertia.#1", 0.00009, true);
        row("load.moment.#2", "load.inertia.#2", 0.00009, true);
    }

    // One number of 90 in the source comes out in one place, everything else is 0.
    void conversion() {
        QFETCH(QString, source);
        QFETCH(QString, target);
        QFETCH(double, expected);
        QFETCH(bool, toolOnly);
        ModuleObject host;
        host.loadJson(nullptr, QJsonDocument::fromJson(R"({"load":{"moment":[0,0,0]}})").object());
        host.set(nullptr, source, 90);
        for (const bool isTool : {true, false}) {
            ModuleObject converted;
            getToolsAndWobjsParam(isTool, &host, &converted);
            QCOMPARE(converted.hasCmobj("load"), isTool);
            double sum = 0;
            for (const ModuleObject* node : converted.cmobjs(true)) {
                sum += node->getDouble();
            }
            const double there = isTool || !toolOnly ? expected : 0.0;
            QCOMPARE(converted.r(target)->getDouble(), there);
            QCOMPARE(sum, there);
        }
    }

    void selectors_offerTheDefaultAndTheHostsEntries() {
        QComboBox tools, wobjs;
        lumo::fillToolsetSelector(&tools, true);
        lumo::fillToolsetSelector(&wobjs, false);
        QCOMPARE(entries(tools), QStringList({"tool0", "T1", "T2"}));
        QCOMPARE(entries(wobjs), QStringList({"wobj0", "W1"}));
        QCOMPARE(tools.currentIndex(), 0);
    }

    void selector_beginsWithTheOneInForce_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("entry");
        QTest::newRow("known") << "T2" << 2;
        QTest::newRow("unknown") << "T9" << 0;
        QTest::newRow("other letter case") << "t2" << 0;
    }

    void selector_beginsWithTheOneInForce() {
        QFETCH(QString, name);
        m("lumo.toolset.end.name")->setValue(this, name);
        QComboBox tools;
        lumo::fillToolsetSelector(&tools, true);
        QTEST(tools.currentIndex(), "entry");
    }

    void choosing_takesTheHostsToolOver() {
        QComboBox tools;
        lumo::fillToolsetSelector(&tools, true);
        tools.setCurrentIndex(1);
        lumo::applyToolsetSelector(this, &tools, true);
        QCOMPARE(
            m("lumo.toolset.end")->exportToJson(),
            QJsonValue(QJsonObject{{"name", "T1"},
                                   {"trans", QJsonArray{0.1, 0.0, 0.05}},
                                   {"rot", QJsonArray{M_PI_2, 0.0, 0.0}},
                                   {"load", QJsonObject{{"mass", 2.5},
                                                        {"cog", QJsonArray{0.0, 0.0, 0.04}},
                                                        {"inertia", QJsonArray{0.001, 0.002, 0.003}}}}}));
        tools.setCurrentIndex(0);
        lumo::applyToolsetSelector(this, &tools, true);
        QCOMPARE(m("lumo.toolset")->exportToJson(), m("lumo.default.default_toolset")->exportToJson());
    }

    void choosingAWorkObject_leavesTheLoadAlone() {
        m("lumo.toolset.end.load.mass")->setValue(this, 7);
        QComboBox wobjs;
        lumo::fillToolsetSelector(&wobjs, false);
        wobjs.setCurrentIndex(1);
        lumo::applyToolsetSelector(this, &wobjs, false);
        QCOMPARE(number("lumo.toolset.ref.trans.#1"), 0.3);
        QVERIFY(!m("lumo.toolset.ref")->hasCmobj("load"));
        QCOMPARE(number("lumo.toolset.end.load.mass"), 7.0);
        QCOMPARE(m("lumo.toolset.end.name")->getString(), "tool0");
    }

    // The host's list may change while the page is there.
    void entry_isTheHostsToolOfItsName_data() {
        QTest::addColumn<QByteArray>("list");
        QTest::addColumn<double>("x");
        QTest::newRow("moved") << QByteArray(R"([{"name":"T2"},{"name":"T1","frame":{"pos":{"x":70}}}])")
                               << 0.07;
        QTest::newRow("removed, another in its place")
            << QByteArray(R"([{"name":"T2","frame":{"pos":{"x":70}}}])") << 0.001;
        QTest::newRow("all removed") << QByteArray("[]") << 0.001;
    }

    void entry_isTheHostsToolOfItsName() {
        QFETCH(QByteArray, list);
        QComboBox tools;
        lumo::fillToolsetSelector(&tools, true);
        m("lumo.toolset.end.trans.#0")->setValue(this, 0.001);
        setHostList("rova.project.tool._list", list);
        tools.setCurrentIndex(1);
        lumo::applyToolsetSelector(this, &tools, true);
        QTEST(number("lumo.toolset.end.trans.#0"), "x");
        QCOMPARE(m("lumo.toolset.end.name")->getString(), "T1");
    }

    void nameWithoutHostEntry_changesTheNameOnly() {
        QComboBox tools;
        lumo::fillToolsetSelector(&tools, true);
        m("lumo.toolset.end.trans.#0")->setValue(this, 0.5);
        QVERIFY(lumo::selectToolsetName(&tools, "from a file"));
        QCOMPARE(entries(tools), QStringList({"tool0", "T1", "T2", "from a file"}));
        lumo::applyToolsetSelector(this, &tools, true);
        QCOMPARE(number("lumo.toolset.end.trans.#0"), 0.5);
        QCOMPARE(m("lumo.toolset.end.name")->getString(), "from a file");
        QVERIFY(!lumo::selectToolsetName(&tools, "from a file"));
        QVERIFY(!lumo::selectToolsetName(&tools, ""));
        QCOMPARE(tools.count(), 4);
    }

    void emptySelector_copiesNothing() {
        m("lumo.toolset.end.trans.#0")->setValue(this, 0.5);
        const QComboBox empty;
        lumo::applyToolsetSelector(this, &empty, true);
        QCOMPARE(number("lumo.toolset.end.trans.#0"), 0.5);
        QCOMPARE(m("lumo.toolset.end.name")->getString("x"), QString());
    }

    void robot_isToldOfEveryChoice() {
        QSignalSpy handed(kordservice(), &KordService::handed);
        QComboBox tools;
        lumo::fillToolsetSelector(&tools, true);
        QCOMPARE(handed.size(), 0);
        tools.setCurrentIndex(2);
        lumo::applyToolsetSelector(this, &tools, true);
        lumo::applyToolsetSelector(this, &tools, true);
        QCOMPARE(handed.size(), 2);
        QCOMPARE(handed[1][0].toString(), "pel.coord.toolset");
        const ModuleObject* known = kordservice()->dataNode("pel.coord.toolset");
        QCOMPARE(known->exportToJson(), m("lumo.toolset")->exportToJson());
    }
};

LUMO_TEST_MAIN(TestToolset)
#include "test_toolset.moc"
