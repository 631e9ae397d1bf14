#include "files/projectfile.h"
#include "stations/stationbench.h"
#include "stations/stationcards.h"
#include "support/language.h"
#include "support/suite.h"

using namespace lumo;
using namespace test;

/// Stations at work: which runs their inputs start and pause, in which order, and their outputs and states.
class TestStations : public QObject {
    Q_OBJECT

    StationBench bench_;

private slots:
    void inputs_startAndPauseRuns_data() {
        QTest::addColumn<QString>("projects");
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("told");
        QTest::addColumn<QByteArray>("fields");
        const QString first = "100 +DO1 1:asked | 200 pause 1:runs | ";
        const auto row = [](const char* what, const char* projects, const QString& script,
                            const QString& told, const QString& fields = "{}") {
            QTest::newRow(what) << projects << script << told << fields.toUtf8();
        };

        // Start and stop inputs, sampled every 300 ms. The stop input of station 2 blocks all runs.
        const auto edge = [&row](const char* what, const char* word, QString script, const char* told) {
            const QString fields = "{'1':{'time':'300','type':'%1','type2':'%1'},'2':{'type2':'下降沿'}}";
            row(what, "P1 P2", script.replace("on", "+DI1, +DI11").replace("off", "-DI1, -DI11"), told,
                fields.arg(word));
        };
        edge("rises", "上升沿", "400 on | 700 off", "600 +DO1 1:asked pause +DO11");
        edge("stays on", "上升沿", "100 on | 700 off", "300 +DO1 1:asked pause +DO11 | 600 +DO1 pause +DO11");
        // A stop input that was held at the switch triggers when it comes again; such a start input does not.
        edge("was on at the switch", "上升沿", "0 on | 400 off | 700 on | 1000 off", "900 pause +DO11");
        edge("falls", "下降沿", "0 on | 400 off | 700 on", "600 +DO1 1:asked pause +DO11");
        edge("was off at the switch", "下降沿", "400 on | 700 off | 1000 on", "900 pause +DO11");
        edge("no edge", "", "100 on | 400 off", "");
        row("baselines after a deleted row", "P1 P2 P3 P4 P5 P6",
            "0 +DI5, +DI15 | 150 delete 5 | 160 +DI6, +DI16 | 350 -DI6, -DI16",
            "200 +DO6 5:asked | 300 +DO6 pause +DO16 | 400 pause 5:runs | 900 -DO6 5:over");

        row("stop input that stands holds the queue", "P1", "0 +DI18 | 100 ~DI1 | 1250 -DI18",
            "100 +DO1 1:asked | 1400 pause 1:runs | 1900 -DO1 1:over", "{'1':{'DI2':'DI18'}}");
        row("stop without name or edge", "P1 P2 P3", "0 +DI18 | 100 ~DI1", first + "700 -DO1 1:over",
            "{'2':{'DI2':'','type2':'下降沿'},'3':{'DI2':'DI18','type2':''}}");
        row("stop pauses whatever runs", "P1 P2", "100 ~DI1 | 300 ~DI2 | 600 ~DI12",
            first + "300 +DO2 2:asked | 600 -DO1 1:over pause +DO12 | 800 pause 2:runs | 1300 -DO2 2:over");

        row("registers and nothing connected", "P1 P2",
            "100 ~DI1 | 900 ~DI11 | 910 +DI2, +DI12 | 1250 -DI2, -DI12",
            "100 +R.bit4 1:asked | 200 pause 1:runs | 700 -R.bit4 1:over | 900 pause +R.bool5 | 1000 2:asked "
            "| 1200 pause | 1400 pause 2:runs | 1900 2:over",
            "{'1':{'DO_type':'Register','DO_reg':{'name':'R','bias':4,'type':'bit'},'DO2_type':'Регистр','"
            "DO2_reg':{'name':'R','bias':5,'type':'bool'}},'2':{'DO':'','DO2_type':'Register'}}");
        row("order of the queue, while the switch is on", "P1 P2 P1 -",
            "10 hand | 100 ~DI2 | 300 ~DI4 | 500 ~DI1 | 700 ~DI3 | 1190 switch | 1590 switch",
            "10 hand:runs | 100 +DO2 2:asked | 300 +DO4 4:asked | 500 +DO1 1:asked | 600 pause 2:runs | 700 "
            "+DO3 3:asked | 1100 -DO2 2:over | 1790 -DO4 4:over | 1990 pause 1:runs | 2490 -DO1 1:over -DO3 "
            "3:over");
        row("page deleted while its project is loaded", "P1", "0 vanish | 100 ~DI1",
            "100 +DO1 1:asked | 200 pause -DO1");
        row("row deleted in its run", "P1 P2 P3 P4 P5 P6", "100 ~DI5 | 450 delete 5",
            "100 +DO5 5:asked | 200 pause 5:runs | 700 -DO5");
        row("row deleted while it waits", "P1 P2 P3 P4 P5 P1",
            "100 ~DI2 | 300 ~DI5 | 400 ~DI6 | 500 ~DI1 | 560 delete 5 | 580 delete 5",
            "100 +DO2 2:asked | 200 pause 2:runs | 300 +DO5 5:asked | 400 +DO6 6:asked | 500 +DO1 1:asked | "
            "560 -DO5 5:over | 580 -DO6 5:over | 700 -DO2 2:over | 800 pause 1:runs | 1300 -DO1 1:over");
        row("quitting leaves no output on", "P1 P2", "100 ~DI1 | 300 ~DI2 | 450 quit",
            first + "300 +DO2 2:asked | 450 -DO1 1:over -DO2 2:over");
        row("page deleted in a run", "P1 P2", "100 ~DI1 | 300 ~DI2 | 450 page",
            first + "300 +DO2 2:asked | 450 -DO2 2:over | 700 -DO1");
        row("power lost and back", "P1 P2 P3 P4 P5",
            "100 ~DI1 | 300 ~DI2 | 450 power off | 700 ~DI3 | 850 +DI5 | 900 ~DI4 | 920 power on, power on | "
            "2050 -DI5 | 2300 ~DI5",
            first +
                "300 +DO2 2:asked | 450 -DO1 1:over -DO2 2:over | 700 +DO3 3:asked | 800 pause -DO3 3:over | "
                "900 +DO4 4:asked +DO5 5:asked | 920 -DO4 4:over -DO5 5:over | 2300 +DO5 5:asked | 2400 "
                "pause 5:runs | 2900 -DO5 5:over [机器人未上电]");

        // No pause for a project that cannot be read. A held input must be released before it asks again.
        row("damaged project", "BAD P2", "50 +DI1 | 1100 ~DI2 | 1150 -DI1 | 1500 ~DI1",
            "100 +DO1 1:asked | 200 BAD.json! -DO1 1:over | 1100 +DO2 2:asked | 1200 pause 2:runs | 1500 "
            "+DO1 1:asked | 1700 -DO2 2:over | 1800 BAD.json! -DO1 1:over");
        row("project with an error", "FAULTY P2", "50 +DI1 | 1100 ~DI2 | 1150 -DI1",
            "100 +DO1 1:asked | 200 -DO1 1:over | 1100 +DO2 2:asked | 1200 pause 2:runs | 1700 -DO2 2:over "
            "[S1：工程 FAULTY.json 有错误，未启动。\n第 1 行：焊接速度为 0 mm/s；请输入大于 0 "
            "的焊接速度。]");
        row("no power", "P1", "0 power off | 50 +DI1 | 450 -DI1",
            "100 +DO1 1:asked | 200 +DO1 pause -DO1 1:over [机器人未上电]");
        for (const char* const file : {"NONE", "STRANGE", "lumo_port"}) {
            row(file, file, "100 ~DI1", QString("100 +DO1 1:asked | 200 %1.json! -DO1 1:over").arg(file));
        }

        // The pause before a start waits for the closing, from 200 to 800 ms.
        const auto closing = [&row](const QString& event, const QString& then, const QString& told) {
            row(qPrintable("closing, " + event), "P1 P2 P3 P4 P5", "0 closing | 100 ~DI5 | " + then,
                "100 +DO5 5:asked | " + told);
        };
        closing("switched off", "350 switch", "800 pause");
        closing("switched off and on", "350 switch, switch",
                "800 pause | 1550 pause 5:runs | 2050 -DO5 5:over");
        closing("another pause", "350 pause", "350 pause pause | 1000 pause 5:runs | 1500 -DO5 5:over");
        closing("a stop input is held", "350 +DI11 | 950 -DI11",
                "600 pause +DO11 pause | 1500 pause +DO11 | 2200 pause 5:runs | 2700 -DO5 5:over");
        closing("the robot is moved", "350 robot moving | 950 robot idle",
                "800 pause | 1600 pause 5:runs | 2100 -DO5 5:over");
        closing("a start by hand", "350 start", "800 pause 5:runs | 1300 -DO5 5:over [当前不是空闲状态]");
        closing("power off and on, asked for anew", "350 power off, power on | 500 ~DI5",
                "350 -DO5 5:over pause | 500 +DO5 5:asked | 1200 pause 5:runs | 1700 -DO5 5:over");
        closing("the row is deleted", "350 delete 5", "350 -DO5 5:over | 800 pause");
        closing("the page is deleted", "350 page", "350 -DO5 5:over | 800 pause");
        closing("the application quits", "350 quit", "350 -DO5 5:over pause");
    }

    /// Afterwards nothing runs, and the tool set is that of the project in the editor.
    void inputs_startAndPauseRuns() {
        QFETCH(QString, projects);
        QFETCH(QString, script);
        QFETCH(QString, told);
        QFETCH(QByteArray, fields);
        const QString toolset = text(m("lumo.toolset"));
        bench_.renew(projects, fields);
        const Language chinese("cn");
        writeFile("BAD.json", "[{");
        writeFile("FAULTY.json", quoted("[{'type':'open','index':0,'weldspeed':0},{'type':'close'}]"));
        writeFile("STRANGE.json", quoted("[{'end':{'name':'torch 2'}},{'type':'delay'},{'type':'moveX'}]"));
        writeFile("lumo_port.json", contentOf("P1.json"));
        QVERIFY(sameLog(bench_.play(script).split(" | "), told.split(" | ")));
        QCOMPARE(bench_.runs, bench_.log.count(":runs"));
        QCOMPARE(executor->depth(), 0);
        QCOMPARE(text(m("lumo.toolset")), toolset);
    }

    /// A new input of a station that is on triggers nothing. An unchanged input keeps its baseline.
    void stationEditedWhileQueued_switchesItsOldOutputOff_andStartsNothing() {
        bench_.renew("P1 P2", "{}", true);
        kordservice()->dataNode("device.io")->loadJson(this, json("{'DI':{'DI4':1},'DO':{'DO7':0}}"));
        bench_.when(450, [this] {
            bench_.edit(1, {{"btnclear", ""}});
            bench_.edit(0, {{"cmbDO", "DO7"}});
        });
        bench_.when(1250, [this] {
            bench_.act("+DI11");
            bench_.edit(0, {{"cmbType", "下降沿"}});
        });
        bench_.when(1610, [this] {
            bench_.edit(0, {{"cmbDI", "DI4"}, {"cmbDI_2", "DI4"}, {"cmbType", "上升沿"}});
            bench_.edit(-1, {{"lineEdit_stationname", "new"}, {"cmbDI", "DI4"}});
        });
        QCOMPARE(bench_.play("100 ~DI1 | 300 ~DI2 | 1550 -DI11 | 2210 -DI4 | 2510 +DI4", 2750),
                 "100 +DO1 1:asked | 200 pause 1:runs | 300 +DO2 2:asked | 450 -DO2 2:over 2:--- 1:--- "
                 "| 700 -DO1 1:over | 1250 1:--- | 1500 pause +DO11 | 1610 3: 3:--- | 2600 +DO7 1:asked "
                 "3:asked | 2700 +DO7 pause +DO11");
    }

    void projects_areCountedSinceListeningBegan() {
        const std::tuple<const char*, const char*, QString> cases[] = {
            {"P1 P2", "100 ~DI1 | 800 ~DI2", "2 0 0"},
            {"P1 P2", "100 ~DI1 | 400 pause | 800 ~DI2", "1 1 0"},
            {"P1 none", "100 ~DI1 | 300 ~DI2 | 400 power off", "0 1 0"},
            {"none P2", "100 ~DI1 | 300 ~DI2", "1 0 1"},
            {"P1 -", "100 ~DI2 | 500 ~DI1", "1 0 0"},
        };
        for (const auto& [projects, script, counts] : cases) {
            bench_.renew(projects);
            bench_.play(script);
            const StationTally& tally = bench_.stations()->findChild<StationCards*>()->tally();
            QCOMPARE(QString("%1 %2 %3").arg(tally.ended).arg(tally.stopped).arg(tally.refused), counts);
        }
    }

    void seam_growsWithTheTool() {
        const auto program = node(R"([
            {'type':'moveL','point':{'trans':[0,0,0],'rot':[0,0,0]}},
            {'type':'open'}, {'type':'delay'},
            {'type':'moveL','point':{'trans':[0.1,0,0],'rot':[0,0,0]}},
            {'type':'moveL','point':{'trans':[0.1,0.3,0],'rot':[0,0,0]}},
            {'type':'close'},
            {'type':'open'}, {'type':'moveL','point':{'trans':[0,0.3,0],'rot':[0,0,0]}}, {'type':'close'}])");
        const RunningSeam seam(program.get());
        const std::tuple<int, double, double, const char*> cases[] = {
            {0, 0, 0, "1/2 0"},          {1, 0, 0, "1/2 0 in"},         {3, 0.05, 0, "1/2 12.5 in"},
            {4, 0.1, 0, "1/2 25 in"},    {4, 0.1, 0.15, "1/2 62.5 in"}, {5, 0.1, 0.3, "1/2 100"},
            {7, 0.05, 0.3, "2/2 50 in"}, {8, 0, 0.3, "2/2 100"}};
        for (const auto& [line, x, y, shown] : cases) {
            const SeamProgress at = seam.at(line, {x, y, 0});
            QCOMPARE(QString("%1/%2 %3%4")
                         .arg(at.seam)
                         .arg(at.seams)
                         .arg(at.share * 100)
                         .arg(at.isInside ? " in" : ""),
                     shown);
        }
    }

    /// The tool of the editor's project is in no list of the host.
    void run_isShownByName_andUsesItsToolOnlyForItself() {
        for (const char* const end : {"robot idle", "pause", "power off", "panel"}) {
            bench_.renew("P1", "{}", true);
            m("lumo.toolset.end.trans.#2")->setValue(this, 0.65);
            const QString hands = text(m("lumo.toolset"));
            const auto* const stop = child<QAbstractButton>(bench_.page.get(), "btnPause");
            const auto* const line = child<QLabel>(bench_.page.get(), "lblStart");
            const QString before = line->text();
            writeFile("P1.json", quoted("[{'type':'delay','delaytime':500},{'end':{'trans':[0,0,0.1]}}]"));
            bench_.when(150, [stop] { QVERIFY(!stop->isEnabled()); });
            bench_.when(499, [&] {
                QVERIFY(stop->isEnabled());
                QCOMPARE(line->text(), "工位程序正在运行：S1，工程 P1");
                QCOMPARE(m("lumo.toolset.end.trans.#2")->getDouble(), 0.1);
                QCOMPARE(m("lumo.toolset.ref.name")->getString(), "wobj0");  // the file has none
                QCOMPARE(hand_or_signalbing, 1);
                QVERIFY(lumo::saveProject("hand.json"));
            });
            bench_.play(QString("100 ~DI1 | 500 ") + end);
            QCOMPARE(executor->depth(), 0);
            QCOMPARE(text(m("lumo.toolset")), hands);
            QCOMPARE(text(lumo::readProject("hand.json")->toolset), hands);
            QVERIFY(!bench_.page || (line->text() == before && !stop->isEnabled()));
        }
    }
};

LUMO_TEST(TestStations)
#include "test_stations.moc"
