// Stations at work: what their inputs trigger, in which order their projects run, and what they are told.

#include "binding/stationbench.h"
#include "editor/language.h"
#include "module/settingsfile.h"
#include "panel/projectfile.h"

#include <QComboBox>
#include <QTest>

class TestMonitoring : public QObject {
    Q_OBJECT

    test::StationBench bench_;

    static QJsonObject with(QJsonObject station, const QJsonObject& fields) {
        for (auto field = fields.begin(); field != fields.end(); ++field) {
            station.insert(field.key(), field.value());
        }
        return station;
    }

    static QJsonObject registerAt(const char* name, int bias) {
        return {{"name", name}, {"bias", bias}, {"type", "bit"}};
    }

    /// The edge and kind of one side of a station; its register is the input of the same number.
    static QJsonObject side(bool start, const QString& edge, bool io) {
        const QString input = start ? "DI" : "DI2";
        return {{start ? "type" : "type2", edge},
                {input + "_type", io ? "IO" : "寄存器"},
                {input + "_reg", registerAt("LUMO_DI", 7)}};
    }

    void setInput(bool start, bool io, bool level) {
        if (io) {
            bench_.input(start ? "DI1" : "DI11", level);
        } else {
            kordservice()->dataNode("register.values.LUMO_DI")->set(this, "#7", level);
        }
    }

    /// One look at the inputs.
    void look(bool start) { bench_.time.advance(start ? 100 : 300); }

private slots:
    // --- Inputs -----------------------------------------------------------------------------------

    void edges_data() {
        QTest::addColumn<bool>("start");
        QTest::addColumn<bool>("io");
        QTest::addColumn<QString>("edge");
        QTest::addColumn<QString>("levels");    // at the switch and at every look after it
        QTest::addColumn<QString>("triggers");  // at every look
        for (const bool start : {true, false}) {
            for (const bool io : {true, false}) {
                const QByteArray name =
                    QByteArray(start ? "start" : "stop") + (io ? ", input: " : ", register: ");
                const auto row = [&](const char* what, const char* edge, const char* levels,
                                     const char* triggers) {
                    QTest::newRow(name + what) << start << io << edge << levels << triggers;
                };
                row("rises", "上升沿", "0010", "-T-");
                row("stays on", "上升沿", "0111", "TTT");
                // A stop must not stay deaf; a start that was held when listening began must stay so.
                row("was on at the switch", "上升沿", "1101", start ? "---" : "--T");
                row("falls", "下降沿", "1101", "-T-");
                row("stays off", "下降沿", "1000", "TTT");
                row("was off at the switch", "下降沿", "0010", start ? "---" : "--T");
                row("another language's edge", "Falling Edge", "101", "T-");
                row("no edge", "", "0101", "---");
            }
        }
    }

    void edges() {
        QFETCH(bool, start);
        QFETCH(bool, io);
        QFETCH(QString, edge);
        QFETCH(QString, levels);
        QFETCH(QString, triggers);
        bench_.renewAlone({with(test::station(1, "P1.json"), side(start, edge, io))});
        setInput(start, io, levels[0] == '1');
        bench_.pressSwitch();
        QString seen;
        for (const QChar level : levels.mid(1)) {
            setInput(start, io, level == '1');
            bench_.log.clear();
            look(start);
            seen += bench_.logOf(start ? "DO1 on" : "DO11 on").isEmpty() ? '-' : 'T';
        }
        QCOMPARE(seen, triggers);
    }

    void unreadableInput_isLow() {
        bench_.renewAlone({with(test::station(1, "P1.json"), {{"DI", "DI99"}, {"type", "下降沿"}})});
        bench_.pressSwitch();
        bench_.time.advance(1000);
        QCOMPARE(bench_.log, QStringList());
    }

    void baseline_isTakenAnewAtTheSwitch() {
        bench_.renewAlone(bench_.count(1));
        bench_.pressSwitch();
        bench_.pressSwitch();
        bench_.input("DI1", true);
        bench_.pressSwitch();
        bench_.time.advance(1000);
        QCOMPARE(bench_.log, QStringList());
    }

    void period_isTheFirstStations() {
        bench_.renewAlone(
            {with(test::station(1, "P1.json"), {{"time", "250"}}), test::station(2, "P2.json")});
        bench_.pressSwitch();
        bench_.input("DI2", true);
        bench_.play(249);
        QCOMPARE(bench_.log, QStringList());
        bench_.play(250);
        QCOMPARE(bench_.logOf("DO2"), QStringList("250 DO2 on"));
    }

    void addedAndEditedRows_getABaselineFirst_data() {
        QTest::addColumn<bool>("added");
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QStringList>("told");
        QTest::newRow("added") << true << QByteArray("cmbDI") << QStringList("1100 row 2 已触发");
        QTest::newRow("edited") << false << QByteArray("cmbDI") << QStringList("1100 row 1 已触发");
        QTest::newRow("edited, stop") << false << QByteArray("cmbDI_2") << QStringList("1200 DO11 on");
    }

    void addedAndEditedRows_getABaselineFirst() {
        QFETCH(bool, added);
        QFETCH(QByteArray, input);
        QFETCH(QStringList, told);
        bench_.renew(bench_.count(1));
        bench_.pressSwitch();
        bench_.play(100);
        bench_.input("DI4", true);
        if (added) {
            bench_.click("btnAdd");
            QTest::keyClicks(bench_.find<QLineEdit>("lineEdit_stationname"), "new");
        } else {
            bench_.clickRow(0, "btnEdit");
        }
        bench_.find<QComboBox>(input)->setCurrentText("DI4");
        bench_.click("okayBtn");
        bench_.play(700);
        bench_.input("DI4", false);
        bench_.play(1000);
        bench_.input("DI4", true);
        bench_.play(1200);
        // It was on when it was looked at first.
        QCOMPARE(bench_.logOf(told.first().contains("row") ? "已触发" : "DO11 on").mid(0, 1), told);
    }

    // The stop input is held when the station is renamed, moved to another project and given other outputs.
    void editedRow_keepsTheBaselinesOfTheInputsThatStay() {
        bench_.renew(bench_.count(1));
        bench_.pressSwitch();
        bench_.when(50, [this] { bench_.input("DI11", true); });
        bench_.when(400, [this] {
            bench_.clickRow(0, "btnEdit");
            QTest::keyClicks(bench_.find<QLineEdit>("lineEdit_stationname"), " renamed");
            bench_.click("btnclear");
            bench_.find<QComboBox>("cmbType")->setCurrentIndex(1);
            bench_.click("okayBtn");
        });
        bench_.play(700);
        QCOMPARE(bench_.cell(0, 1), "S1 renamed");
        QCOMPARE(bench_.logOf("DO11"), QStringList({"300 DO11 on", "600 DO11 on"}));
    }

    void emptyTable_leavesTheSwitchOff() {
        bench_.renewAlone(QJsonArray());
        bench_.time.advance(1000);
        const int timers = bench_.time.armedTimers();
        bench_.pressSwitch();
        bench_.time.advance(1000);
        QCOMPARE(bench_.time.armedTimers(), timers);
        QVERIFY(!bench_.stations()->findChild<QWidget*>("switchBtn")->property("checked").toBool());
    }

    // --- Runs -------------------------------------------------------------------------------------

    void run_isToldToItsStation() {
        bench_.renewAlone(bench_.count(1));
        m("lumo.processTime")->setValue(this, 77);
        bench_.pressSwitch();
        bench_.when(201, [] { QCOMPARE(m("lumo.processTime")->getInt(), 0); });
        bench_.pulse(1, 100);
        bench_.play(1000);
        QVERIFY(test::sameLog(bench_.log, {"100 DO1 on", "100 row 1 已触发", "200 row 1 正在运行", "200 busy",
                                           "700 DO1 off", "700 row 1 未触发", "700 idle"}));
        QCOMPARE(hand_or_signalbing, 1);
        QCOMPARE(bench_.stations()->queued(), 0);
    }

    void registers_areToldToo() {
        bench_.renewAlone({with(test::station(1, "P1.json"), {{"DO_type", "Register"},
                                                              {"DO_reg", registerAt("FIXTURE", 4)},
                                                              {"DO2_type", "Регистр"},
                                                              {"DO2_reg", registerAt("FIXTURE", 5)}})});
        bench_.pressSwitch();
        bench_.pulse(1, 100);
        bench_.when(850, [this] { bench_.input("DI11", true); });
        bench_.play(1000);
        QCOMPARE(bench_.logOf("FIXTURE"),
                 QStringList({"100 FIXTURE.4 on", "700 FIXTURE.4 off", "900 FIXTURE.5 on"}));
    }

    void queue_isServedInTheOrderOfTheTriggers() {
        bench_.renewAlone(bench_.count(3));
        bench_.pressSwitch();
        bench_.pulse(3, 100);
        bench_.pulse(1, 200);
        bench_.pulse(2, 300);
        bench_.pulse(1, 400);
        bench_.play(3000);
        QCOMPARE(bench_.logOf("正在运行"),
                 QStringList({"200 row 3 正在运行", "800 row 1 正在运行", "1400 row 2 正在运行"}));
        QCOMPARE(bench_.logOf("off"), QStringList({"700 DO3 off", "1300 DO1 off", "1900 DO2 off"}));
        // There is one program of the stations, however often they start.
        const QList<ModuleObject*> nodes = m("lumo")->cmobjs();
        QCOMPARE(
            std::count_if(nodes.begin(), nodes.end(),
                          [](const ModuleObject* node) { return node->name().startsWith("signalbind"); }),
            1);
    }

    void heldInput_startsAgainOnceTheRunIsOver() {
        bench_.renewAlone(bench_.count(1));
        bench_.pressSwitch();
        bench_.when(50, [this] { bench_.input("DI1", true); });
        bench_.when(950, [this] { bench_.input("DI1", false); });
        bench_.play(3000);
        QCOMPARE(bench_.logOf("busy"), QStringList({"200 busy", "1000 busy"}));
        QCOMPARE(bench_.logOf("off"), QStringList({"700 DO1 off", "1500 DO1 off"}));
    }

    void sameProject_runsOnceForBoth() {
        bench_.renewAlone(
            {test::station(1, "P1.json"), test::station(2, "P1.json"), test::station(3, "P3.json")});
        bench_.pressSwitch();
        bench_.pulse(1, 100);
        bench_.pulse(2, 400);
        bench_.when(500, [this] {
            QCOMPARE(bench_.states(), QStringList({"正在运行", "已触发", "---"}));
            QCOMPARE(bench_.stations()->queued(), 1);
        });
        bench_.play(2000);
        QCOMPARE(bench_.logOf("busy").size(), 1);
        QCOMPARE(bench_.logOf("off"), QStringList({"700 DO1 off", "700 DO2 off"}));
        QCOMPARE(bench_.states(), QStringList({"未触发", "未触发", "---"}));
    }

    void rowWithoutProject_isGivenUp() {
        bench_.renewAlone({test::station(1, ""), test::station(2, "P2.json")});
        bench_.pressSwitch();
        bench_.pulse(1, 100);
        bench_.pulse(2, 200);
        bench_.play(1000);
        QCOMPARE(bench_.logOf("DO1"), QStringList({"100 DO1 on", "200 DO1 off"}));
        QCOMPARE(bench_.logOf("busy"), QStringList("400 busy"));
        QCOMPARE(bench_.states(), QStringList({"未触发", "未触发"}));
    }

    void refusedStart_isTakenBack_data() {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QByteArray>("power");
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("report");
        const QByteArray tool = R"({"end":{"name":"torch 2"},"ref":{"name":"table"}})";
        const auto row = [](const char* name, const QByteArray& file, const char* power, const char* box,
                            const char* report) {
            QTest::newRow(name) << file << QByteArray(power) << QString(box) << QString(report);
        };
        row("no power", "[" + tool + "," + QByteArray(test::StationBench::delay).mid(1), "off",
            "机器人未上电", "");
        row("empty project", "[" + tool + "]", "on", "未选中启动行", "");
        row("damaged project", "[{\"type\":", "on", "", "P1.json:1:");
        row("no project", "{\"a\":1}", "on", "", "P1.json:0:0 the file holds no project");
        row("no file", "", "on", "", "P1.json:0:0 there is no such file");
        row("a statement of an unknown type", "[" + tool + ",\n{\"type\":\"delay\"}, {\"type\":\"moveX\"}]",
            "on", "", "P1.json:2:19 unknown statement type \"moveX\"");
        row("a statement without a type", "[{\"delaytime\":1}, {\"type\":\"delay\"}]", "on", "",
            "P1.json:1:2 unknown");
    }

    // The input is held: one message, and it must be let go before it asks again. Nothing is moved for a
    // project that cannot be read.
    void refusedStart_isTakenBack() {
        QFETCH(QByteArray, file);
        QFETCH(QByteArray, power);
        QFETCH(QString, box);
        QFETCH(QString, report);
        bench_.renew(bench_.count(2));
        const QJsonValue toolset = m("lumo.toolset")->exportToJson();
        QFile::remove("P1.json");
        if (!file.isEmpty()) {
            bench_.write("P1.json", file);
        }
        bench_.robot.setPower(power);
        bench_.pressSwitch();
        bench_.when(50, [this] { bench_.input("DI1", true); });
        bench_.play(1050);
        QCOMPARE(bench_.boxes().join(';'), box);
        QCOMPARE(bench_.problems.count(), report.isEmpty() ? 0 : 1);
        if (!report.isEmpty()) {
            const QList<QVariant> told = bench_.problems.takeFirst();
            const QString text =
                QStringLiteral("%1:%2:%3 %4")
                    .arg(told[0].toString(), told[1].toString(), told[2].toString(), told[3].toString());
            QVERIFY2(text.startsWith(report), qPrintable(text));
        }
        QCOMPARE(bench_.logOf("off"), QStringList("200 DO1 off"));
        QCOMPARE(bench_.logOf("row"), QStringList({"100 row 1 已触发", "200 row 1 未触发"}));
        QCOMPARE(bench_.robot.log().filter("PULL 1").size(), box.isEmpty() ? 0 : 1);
        // The refused project's tool must not be left to the program of the hand.
        QCOMPARE(m("lumo.toolset")->exportToJson(), toolset);
        bench_.closeBoxes();
        bench_.robot.setPower("on");
        bench_.pulse(2, 1100);
        bench_.when(1150, [this] { bench_.input("DI1", false); });
        bench_.pulse(1, 1400);
        bench_.play(3000);
        QCOMPARE(bench_.logOf("busy").first(), "1200 busy");
        QCOMPARE(bench_.logOf("row 1 已触发"), QStringList({"100 row 1 已触发", "1400 row 1 已触发"}));
        bench_.closeBoxes();
    }

    void settingsFile_isNoStationsProject() {
        bench_.renewAlone({test::station(1, "lumo_port.json")});
        bench_.write("lumo_port.json", test::StationBench::delay);
        bench_.pressSwitch();
        bench_.pulse(1, 100);
        bench_.play(1000);
        QCOMPARE(bench_.problems.count(), 1);
        QCOMPARE(bench_.logOf("busy"), QStringList());
        QCOMPARE(bench_.states(), QStringList("未触发"));
    }

    void toolset_isTheProjectsForItsRun_data() {
        QTest::addColumn<QByteArray>("what");  // at 500 ms
        QTest::newRow("runs to its end") << QByteArray();
        QTest::newRow("is paused") << QByteArray("pause");
        QTest::newRow("power off") << QByteArray("power");
        QTest::newRow("the panel is deleted") << QByteArray("panel");
    }

    // The hand's tool is one of its own, which no list of the host has.
    void toolset_isTheProjectsForItsRun() {
        QFETCH(QByteArray, what);
        bench_.renew(bench_.count(1));
        m("lumo.toolset.end.trans.#2")->setValue(this, 0.65);
        m("lumo.toolset.end.load.mass")->setValue(this, 4);
        const QJsonValue hands = m("lumo.toolset")->exportToJson();
        const auto toolInForce = [] { return kordservice()->dataNode("pel.coord.toolset")->exportToJson(); };
        bench_.write("P1.json", R"([{"type":"delay","delaytime":500},
                                    {"end":{"name":"tool0","trans":[0,0,0.1],"rot":[0,0,0]}}])");
        bench_.pressSwitch();
        bench_.pulse(1, 100);
        bench_.when(500, [&] {
            QCOMPARE(m("lumo.toolset.end.trans.#2")->getDouble(), 0.1);
            QCOMPARE(m("lumo.toolset.ref.name")->getString(), "wobj0");  // the file has none
            QCOMPARE(toolInForce(), m("lumo.toolset")->exportToJson());
            QCOMPARE(m("lumo.signalbind_program")->size(), 1);
            QVERIFY(lumo::saveProject("hand.json"));
            act(what);
        });
        bench_.play(1000);
        QCOMPARE(executor->depth(), 0);
        QCOMPARE(m("lumo.toolset")->exportToJson(), hands);
        QCOMPARE(toolInForce(), hands);
        QCOMPARE(QJsonValue(lumo::readProject("hand.json")->toolset), hands);
    }

    // No project is open in the editor.
    void run_isNamedAndCanBeStoppedOnThePage() {
        bench_.renew(bench_.count(1));
        m("lumo.cur_param")->setValue(this, 0);
        const auto* stop = bench_.page->findChild<QAbstractButton*>("btnPause");
        const auto* line = bench_.page->findChild<QLabel*>("lblStart");
        const QString before = line->text();
        bench_.pressSwitch();
        bench_.pulse(1, 100);
        QVector<bool> enabled;
        for (const int ms : {150, 500, 900, 1400}) {  // waits, closing, runs, over
            bench_.when(ms, [&enabled, stop] { enabled << stop->isEnabled(); });
        }
        bench_.when(900, [line] { QCOMPARE(line->text(), "工位程序正在运行：S1，工程 P1"); });
        bench_.play(1500);
        QCOMPARE(enabled, QVector<bool>({false, true, true, false}));
        QCOMPARE(line->text(), before);
    }

    void handRun_isNoStations() {
        bench_.renewAlone(bench_.count(1));
        bench_.load(test::StationBench::delay);
        bench_.pressSwitch();
        bench_.pulse(1, 200);
        bench_.run();
        QCOMPARE(bench_.states(), QStringList("已触发"));
        bench_.play(2000);
        QVERIFY(test::sameLog(bench_.log,
                              {"0 busy", "200 DO1 on", "200 row 1 已触发", "500 idle", "600 row 1 正在运行",
                               "600 busy", "1100 DO1 off", "1100 row 1 未触发", "1100 idle"}));
    }

    // --- Stop inputs ------------------------------------------------------------------------------

    void stopInput_pausesWhateverRuns() {
        bench_.renewAlone(bench_.count(2));
        bench_.pressSwitch();
        bench_.pulse(1, 100);
        bench_.pulse(2, 200);
        bench_.pulse(12, 600);  // of station 2, which waits
        bench_.play(2000);
        QCOMPARE(bench_.logOf("DO12"), QStringList("600 DO12 on"));
        QCOMPARE(bench_.logOf("DO1 off"), QStringList("600 DO1 off"));
        QCOMPARE(bench_.logOf("busy"), QStringList({"200 busy", "800 busy"}));
        QCOMPARE(bench_.states(), QStringList({"未触发", "未触发"}));
    }

    void heldStopInput_pausesAgainAndAgain_andNothingStarts() {
        bench_.renewAlone(bench_.count(2));
        bench_.pressSwitch();
        bench_.when(50, [this] {
            bench_.input("DI11", true);
            bench_.input("DI1", true);
        });
        bench_.pulse(2, 400);
        bench_.when(550, [this] { bench_.input("DI1", false); });
        bench_.when(950, [this] { bench_.input("DI11", false); });
        bench_.play(3000);
        QCOMPARE(bench_.logOf("DO11"), QStringList({"300 DO11 on", "600 DO11 on", "900 DO11 on"}));
        // What was asked for meanwhile is not lost.
        QCOMPARE(bench_.logOf("busy"), QStringList({"1000 busy", "1600 busy"}));
    }

    void standingStopInput_holdsTheQueue_data() {
        QTest::addColumn<QJsonObject>("fields");
        QTest::addColumn<bool>("holds");
        QTest::newRow("on at the switch") << QJsonObject{{"DI2", "DI20"}} << true;
        QTest::newRow("off at the switch, falls")
            << QJsonObject{{"DI2", "DI19"}, {"type2", "下降沿"}} << true;
        QTest::newRow("a bit") << QJsonObject{{"DI2_type", "寄存器"}, {"DI2_reg", registerAt("LUMO_DI", 7)}}
                               << true;
        QTest::newRow("at rest") << QJsonObject{{"DI2", "DI20"}, {"type2", "下降沿"}} << false;
        QTest::newRow("no name") << QJsonObject{{"DI2", ""}, {"type2", "下降沿"}} << false;
        QTest::newRow("no edge") << QJsonObject{{"DI2", "DI20"}, {"type2", ""}} << false;
    }

    void standingStopInput_holdsTheQueue() {
        QFETCH(QJsonObject, fields);
        QFETCH(bool, holds);
        bench_.renewAlone({test::station(1, "P1.json"), with(test::station(2, "P2.json"), fields)});
        bench_.input("DI20", true);
        setInput(false, false, true);
        bench_.pressSwitch();
        bench_.pulse(1, 100);
        bench_.when(1250, [this, holds] {
            bench_.input("DI20", !holds);
            bench_.input("DI19", true);
            setInput(false, false, false);
        });
        bench_.play(2500);
        QCOMPARE(bench_.logOf("busy"), QStringList(holds ? "1400 busy" : "200 busy"));
        QCOMPARE(bench_.logOf("DO12"), QStringList());
        QCOMPARE(bench_.robot.log().filter("PULL 1").size(), 1);
    }

    void stopInputInAWeld_leavesTheLaserOff_andTheNextStartBeginsAnew() {
        bench_.renewAlone(bench_.count(1));
        bench_.write("P1.json", R"([{"type":"open","index":0,"weldspeed":10},
            {"type":"moveL","point":{"trans":[0.1,0,0],"rot":[0,0,0]},"speed":10,"zone":0},
            {"type":"moveL","point":{"trans":[0.2,0,0],"rot":[0,0,0]},"speed":10,"zone":0},{"type":"close"}])");
        bench_.robot.motionMs = 2000;
        bench_.pressSwitch();
        bench_.pulse(1, 100);
        bench_.when(1590, [this] { QVERIFY(bench_.weldFlag() && bench_.robot.output("POWER") > 0); });
        bench_.pulse(11, 1800);
        bench_.when(3000, [this] {
            QCOMPARE(bench_.robot.output("POWER"), 0.0);
            QCOMPARE(bench_.robot.output("LASER"), 0.0);
            QVERIFY(bench_.weldFlag());
            bench_.robot.mark();
        });
        bench_.pulse(1, 3100);
        bench_.play(10000);
        // Opened once, by its own statement, after the gas has flowed.
        QVERIFY(bench_.robot.log().contains("800 GAS 1"));
        QCOMPARE(bench_.robot.log().filter("LASER 1"),
                 QStringList("1000 [POWER 0, LASER 1, DUTY 9830, FREQ 13107]"));
    }

    // --- What can come in a wait ------------------------------------------------------------------

    void closingBeforeTheStart_data() {
        QTest::addColumn<QByteArray>("what");
        QTest::addColumn<int>("starts");
        QTest::addColumn<QString>("state");
        QTest::newRow("nothing") << QByteArray() << 800 << "未触发";
        QTest::newRow("switched off") << QByteArray("off") << -1 << "已触发";
        QTest::newRow("switched off and on") << QByteArray("off on") << 1550 << "未触发";
        QTest::newRow("another pause") << QByteArray("pause") << 1000 << "未触发";
        QTest::newRow("a stop input is held") << QByteArray("stop") << 2200 << "未触发";
        QTest::newRow("the robot is moved") << QByteArray("jog") << 1600 << "未触发";
        QTest::newRow("a start by hand") << QByteArray("start") << 800 << "未触发";
        QTest::newRow("power off") << QByteArray("power") << -1 << "未触发";
        QTest::newRow("power off and on") << QByteArray("power powered") << -1 << "未触发";
        QTest::newRow("the row is deleted") << QByteArray("delete") << -1 << "";
        QTest::newRow("the page is deleted") << QByteArray("page") << -1 << "";
        QTest::newRow("the application quits") << QByteArray("quit") << -1 << "未触发";
    }

    // The pause before a start waits for the closing of the parameter set in force: 600 ms here.
    void closingBeforeTheStart() {
        QFETCH(QByteArray, what);
        QFETCH(int, starts);
        QFETCH(QString, state);
        bench_.renewAlone(bench_.count(5));
        bench_.load(test::StationBench::delay);
        m("lumo.cur_param")->setValue(this, 0);
        bench_.pressSwitch();
        bench_.pulse(5, 100);
        bench_.when(350, [this, what] {
            QVERIFY(!bench_.waitingKind().isEmpty());
            for (const QByteArray& step : what.split(' ')) {
                act(step);
            }
        });
        bench_.play(2500);
        const QStringList begun =
            starts < 0 ? QStringList() : QStringList(QStringLiteral("%1 busy").arg(starts));
        QCOMPARE(bench_.logOf("busy"), begun);
        QCOMPARE(executor->depth(), 0);
        QCOMPARE(bench_.logOf("DO5 off").size(), state == "已触发" ? 0 : 1);
        QCOMPARE(!bench_.alone, what == "page");
        if (bench_.alone) {
            QCOMPARE(bench_.states().value(4), state);
        }
        bench_.closeBoxes();
    }

    // Station 1 runs, 2 waits, 3 asks without power, 4 asks just before it is back and 5 is held then.
    void powerLoss_emptiesTheQueue_andNothingStartsByItself() {
        bench_.renewAlone(bench_.count(5));
        bench_.pressSwitch();
        bench_.pulse(1, 100);
        bench_.pulse(2, 300);
        bench_.when(450, [this] { bench_.robot.setPower("off"); });
        bench_.pulse(3, 700);
        bench_.when(850, [this] { bench_.input("DI5", true); });
        bench_.pulse(4, 900);
        bench_.when(920, [this] {
            bench_.robot.setPower("on");
            bench_.robot.setPower("on");
        });
        bench_.play(2000);
        QCOMPARE(bench_.logOf("busy"), QStringList("200 busy"));
        QCOMPARE(bench_.logOf("off"),
                 QStringList({"450 DO1 off", "450 DO2 off", "800 DO3 off", "920 DO4 off", "920 DO5 off"}));
        QCOMPARE(bench_.boxes(), QStringList("机器人未上电"));
        QCOMPARE(bench_.states(), QStringList({"未触发", "未触发", "未触发", "未触发", "未触发"}));
        bench_.when(2050, [this] { bench_.input("DI5", false); });
        bench_.pulse(5, 2300);
        bench_.play(3000);
        QCOMPARE(bench_.logOf("busy"), QStringList({"200 busy", "2400 busy"}));
        bench_.closeBoxes();
    }

    void robotThatStillMoves_isWaitedFor() {
        bench_.renewAlone(bench_.count(1));
        bench_.pressSwitch();
        bench_.when(50, [] { m("kord.r.state")->setValue(nullptr, "moving"); });
        bench_.pulse(1, 100);
        bench_.when(950, [this] {
            QCOMPARE(bench_.robot.log().filter("PULL"), QStringList());
            m("kord.r.state")->setValue(nullptr, "idle");
        });
        bench_.play(2000);
        QCOMPARE(bench_.logOf("busy"), QStringList("1000 busy"));
        QCOMPARE(bench_.boxes(), QStringList());
    }

    void quit_leavesNoOutputOn() {
        bench_.renewAlone(bench_.count(2));
        bench_.pressSwitch();
        bench_.pulse(1, 100);
        bench_.pulse(2, 200);
        bench_.when(400, [] { QMetaObject::invokeMethod(qApp, "aboutToQuit"); });
        bench_.play(2000);
        QCOMPARE(bench_.logOf("off"), QStringList({"400 DO1 off", "400 DO2 off"}));
        QCOMPARE(bench_.logOf("busy").size(), 1);
    }

    void pageDeletedInARun_leavesTheRunAlone() {
        bench_.renewAlone(bench_.count(2));
        bench_.pressSwitch();
        bench_.pulse(1, 100);
        bench_.pulse(2, 200);
        QTimer::singleShot(400, this, [this] { bench_.alone.reset(); });
        bench_.play(1000);
        QVERIFY(!bench_.alone);
        QCOMPARE(bench_.logOf("idle"), QStringList("700 idle"));
        QVERIFY(test::sameLog(bench_.logOf("off"), {"400 DO2 off", "700 DO1 off"}));
        QCOMPARE(executor->depth(), 0);
    }

    void pageDeletedWhileItsProjectIsLoaded_startsNothing() {
        bench_.renewAlone(bench_.count(1));
        bench_.pressSwitch();
        bench_.pulse(1, 100);
        QObject scope;
        connect(m("lumo"), &ModuleObject::added, &scope, [this] { bench_.alone.reset(); });
        bench_.play(1000);
        QVERIFY(!bench_.alone);
        QCOMPARE(bench_.log, QStringList({"100 DO1 on", "100 row 1 已触发", "200 DO1 off"}));
    }

    void rowDeletedInItsRun_isToldAtTheEnd() {
        bench_.renewAlone(bench_.count(6));
        bench_.pressSwitch();
        bench_.pulse(5, 100);
        bench_.pulse(6, 200);
        bench_.when(400, [this] {
            bench_.clickRow(4, "btnDel");
            QCOMPARE(bench_.states().mid(4), QStringList("已触发"));
            QVERIFY(bench_.logOf("off").isEmpty());
        });
        bench_.play(2000);
        QCOMPARE(bench_.logOf("off"), QStringList({"700 DO5 off", "1300 DO6 off"}));
        QCOMPARE(bench_.logOf("正在运行"), QStringList({"200 row 5 正在运行", "800 row 5 正在运行"}));
        QCOMPARE(bench_.states().mid(4), QStringList("未触发"));
    }

    void rowDeletedWhileItWaits_isGivenUp() {
        bench_.renewAlone({test::station(1, "P1.json"), test::station(2, "P2.json"),
                           test::station(3, "P3.json"), test::station(4, "P4.json"),
                           test::station(5, "P5.json"), test::station(6, "P1.json")});
        bench_.pressSwitch();
        bench_.pulse(2, 100);
        bench_.pulse(5, 200);
        bench_.pulse(6, 300);
        bench_.pulse(1, 400);
        bench_.when(450, [this] { bench_.clickRow(4, "btnDel"); });
        bench_.when(500, [this] {
            bench_.clickRow(4, "btnDel");
            QCOMPARE(bench_.stations()->queued(), 2);  // station 1 waits for the same project
        });
        bench_.play(3000);
        QCOMPARE(bench_.logOf("off"),
                 QStringList({"450 DO5 off", "500 DO6 off", "700 DO2 off", "1300 DO1 off"}));
        QCOMPARE(bench_.logOf("正在运行"), QStringList({"200 row 2 正在运行", "800 row 1 正在运行"}));
    }

    void baselines_followDeletedRows_data() {
        QTest::addColumn<QString>("fifth");
        QTest::addColumn<QString>("sixth");
        QTest::addColumn<QString>("told");
        QTest::newRow("start") << "DI5"
                               << "DI6"
                               << "200 DO6 on";
        QTest::newRow("stop") << "DI15"
                              << "DI16"
                              << "300 DO16 on";
    }

    void baselines_followDeletedRows() {
        QFETCH(QString, fifth);
        QFETCH(QString, sixth);
        bench_.renewAlone(bench_.count(6));
        bench_.input(fifth, true);
        bench_.pressSwitch();
        bench_.play(100);
        bench_.clickRow(4, "btnDel");
        bench_.input(sixth, true);
        bench_.play(110);
        QCOMPARE(bench_.log, QStringList());
        bench_.play(300);
        QTEST(bench_.logOf(" on").value(0), "told");
    }

    void editedWhileItWaits_forgetsItsProject() {
        bench_.renew(bench_.count(2));
        bench_.pressSwitch();
        bench_.pulse(1, 100);
        bench_.pulse(2, 200);
        bench_.when(400, [this] {
            bench_.clickRow(1, "btnEdit");
            bench_.click("btnclear");
            bench_.click("okayBtn");
        });
        bench_.play(2000);
        QCOMPARE(bench_.logOf("DO2"), QStringList({"200 DO2 on", "400 DO2 off"}));
        QCOMPARE(bench_.logOf("busy"), QStringList("200 busy"));
    }

    void editedOutput_whatWasSwitchedOnIsSwitchedOff() {
        bench_.renew(bench_.count(1));
        kordservice()->dataNode("device.io")->set(this, "DO.DO7", false);
        bench_.pressSwitch();
        bench_.pulse(1, 100);
        bench_.when(400, [this] {
            bench_.clickRow(0, "btnEdit");
            bench_.find<QComboBox>("cmbDO")->setCurrentText("DO7");
            bench_.click("okayBtn");
        });
        bench_.play(2000);
        QCOMPARE(bench_.logOf("off"), QStringList("700 DO1 off"));
    }

    void queue_survivesTheSwitch() {
        bench_.renewAlone(bench_.count(2));
        bench_.pressSwitch();
        bench_.pulse(1, 100);
        bench_.pulse(2, 200);
        bench_.when(400, [this] { bench_.pressSwitch(); });
        bench_.play(2000);
        QCOMPARE(bench_.states(), QStringList({"未触发", "已触发"}));
        QCOMPARE(bench_.stations()->queued(), 1);
        bench_.pressSwitch();
        bench_.play(3000);
        QCOMPARE(bench_.logOf("busy"), QStringList({"200 busy", "2200 busy"}));
    }

    void languageChange_betweenTwoStarts() {
        bench_.renew(QJsonArray());
        bench_.page.reset();
        bench_.write("lumo_signalsConfig.json",
                     R"([{"stationname":"Пост 1","filePath":"P1.json","type":"По фронту",
            "type2":"По спаду","time":100,"DI":"DI1","DI_type":"IO","DI2_type":"Регистр",
            "DI2_reg":{"name":"LUMO_DI","type":"bit","bias":1},"DO":"DO1","DO_type":"IO","DO2":"DO2","DO2_type":"IO"}])");
        lumo::loadSettings(this, lumo::Settings::Stations);
        const Language english("en");
        kordservice()->dataNode("register.values.LUMO_DI")->set(this, "#1", true);
        bench_.makePage();
        bench_.click("btnBind");
        QCOMPARE(bench_.cell(0, 3), "Start: IO\nStop: Register");
        QCOMPARE(bench_.cell(0, 5), "Rising Edge\nFalling Edge");
        bench_.pressSwitch();
        bench_.pulse(1, 100);
        QString seen;
        bench_.when(400, [this, &seen] { seen = bench_.states().first(); });
        bench_.play(2000);
        QCOMPARE(seen, "Running");
        bench_.clickRow(0, "btnEdit");
        bench_.click("okayBtn");
        const QByteArray file = bench_.content("lumo_signalsConfig.json");
        QVERIFY2(file.contains("\"Rising Edge\"") && file.contains("\"Falling Edge\"") &&
                     file.contains("\"Register\""),
                 file);
    }

private:
    void act(const QByteArray& step) {
        if (step == "off" || step == "on") {
            bench_.pressSwitch();
        } else if (step == "pause") {
            bench_.pause();
        } else if (step == "start") {
            bench_.trigger("start", 0);
            QCOMPARE(bench_.boxes(), QStringList("当前不是空闲状态"));
        } else if (step == "stop") {
            bench_.input("DI11", true);
            bench_.when(950, [this] { bench_.input("DI11", false); });
        } else if (step == "jog") {
            m("kord.r.state")->setValue(nullptr, "moving");
            bench_.when(950, [] { m("kord.r.state")->setValue(nullptr, "idle"); });
        } else if (step == "power" || step == "powered") {
            bench_.robot.setPower(step == "power" ? "off" : "on");
        } else if (step == "delete") {
            bench_.clickRow(4, "btnDel");
        } else if (step == "page") {
            bench_.alone.reset();
        } else if (step == "panel") {
            bench_.page.reset();
        } else if (step == "quit") {
            QMetaObject::invokeMethod(qApp, "aboutToQuit");
        }
    }
};

LUMO_TEST_MAIN(TestMonitoring)
#include "test_monitoring.moc"
