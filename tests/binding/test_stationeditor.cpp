#include "binding/signalsbindingparamwidget.h"
#include "binding/station.h"
#include "binding/stationbench.h"
#include "support/language.h"
#include "support/suite.h"

using namespace lumo;
using namespace test;

/// What a station's record means, the list of the stations and the page of one station, by hand.
class TestStationEditor : public QObject {
    Q_OBJECT

    StationBench bench_;

    static ModuleObject* records() { return m("lumo.signalsConfig"); }
    SignalsBindingParamWidget* page() const { return bench_.find<SignalsBindingParamWidget>(); }
    QComboBox* combo(const QString& name) const { return child<QComboBox>(page(), name.toLatin1()); }
    /// Five stations, and what the controller has to offer.
    void renew(const QByteArray& fields = "{}") {
        bench_.renew("P1 P2 P3 P4 P5", fields, true);
        kordservice()->dataNode("device.io")->loadJson(this, json("{'DI':{'I1':0,'I2':0},'DO':{'O1':0}}"));
        m("rova.robot.register._list")->loadJson(this, json(R"([
            {'name':'OUT','type':'bit','rw':'rdwr','len':8}, {'name':'OUT1','type':'bool','rw':'rdwr'},
            {'name':'OUTINT','type':'int16','rw':'rdwr','len':4}, {'name':'WRITE','type':'bit','rw':'wr'},
            {'name':'IN','type':'bit','rw':'rd','len':3}, {'name':'ININT','type':'int16','rw':'rd'}])"));
    }

private slots:
    void record_meansTheSameInEveryLanguage() {
        const Language english("en");
        const auto edgeShown = [](const QByteArray& stored) {
            return edgeText(node("{'type2':'" + stored + "'}").get(), StationSignal::StopInput);
        };
        QVERIFY(edgeShown("上升沿") == "Rising Edge" && edgeShown("По фронту") == "Rising Edge");
        QVERIFY(edgeShown("下降沿") == "Falling Edge" && edgeShown("По спаду") == "Falling Edge");
        QCOMPARE(edgeShown("rising"), "rising");
        QVERIFY(samplePeriodMs("1") == 1 && samplePeriodMs("0") == 100 && samplePeriodMs("fast") == 100);
        kordservice()->dataNode("device.io")->loadJson(this, json("{'DI':{'ON':true,'OFF':false}}"));
        kordservice()->dataNode("register.values")->set(this, "R.#0", false)->set(this, "R.#1", true);
        const struct {
            const char *record, *shown;
            bool level;
        } rows[] = {
            {"{'DI_type':'IO','DI':'ON','DI_reg':{'name':'R','bias':0}}", "Start: IO ON", true},
            {"{'DI_type':'IO','DI':'','DI_reg':{'name':'R','bias':1}}", "Start: IO ", false},
            {"{'DI_type':'寄存器','DI':'OFF','DI_reg':{'name':'R','bias':1}}", "Start: Register R[2]", true},
            {"{'DI_type':'','DI':'ON','DI_reg':{'name':'R','bias':0}}", "Start: Register R[1]", false},
            {"{'DI_type':'','DI_reg':{'name':'R','bias':-1}}", "Start: Register R", false},
        };
        for (const auto& row : rows) {
            const SignalSource input = readSource(node(row.record).get(), StationSignal::StartInput);
            QCOMPARE(kindText(StationSignal::StartInput, input) + ' ' + sourceText(input), row.shown);
            QVERIFY2(inputLevel(this, input) == row.level, row.record);
        }
    }

    void controllersSignals_areOfferedForTheKindThatIsChosen() {
        renew();
        bench_.click("btnAdd");
        for (const QString side : {"In", "In_2", "Out", "Out_2"}) {
            const bool in = side.startsWith("In");
            const QString combos = QString(side).replace(in ? "In" : "Out", in ? "cmbDI%1" : "cmbDO%1");
            QComboBox* const names = combo(combos.arg(""));
            QComboBox* const registers = combo(combos.arg("Reg"));
            QComboBox* const bits = combo(combos.arg("RegBias"));
            QCOMPARE(textsOf(names).join(' '), in ? " I1 I2" : " O1");
            QCOMPARE(textsOf(registers).join(' '), in ? " IN" : " OUT OUT1");
            QCOMPARE(bits->count(), in ? 3 : 8);
            for (const bool reg : {true, false}) {
                bench_.click(((reg ? "rdbReg" : "rdbIO") + side).toLatin1());
                QVERIFY(names->isVisible() != reg && registers->isVisible() == reg &&
                        bits->isVisible() == reg);
            }
            registers->setCurrentIndex(in ? 0 : 2);
            QCOMPARE(bits->count(), in ? 0 : 1);
        }
    }

    void newStation_isStoredAndShownAgain_whatIsCancelledIsNot() {
        renew();
        const QString before = text(records());
        bench_.edit(-1, {});
        QCOMPARE(bench_.boxes(), QStringList("工位名称不能为空!"));
        bench_.click("cancelBtn");
        bench_.edit(2, {{"btnclear", ""}}, "cancelBtn");
        QCOMPARE(text(records()), before);
        QVERIFY(!QFile::exists("lumo_signalsConfig.json"));

        bench_.edit(-1, {{"lineEdit_stationname", "rework"}, {"rdbRegOut_2", ""}, {"cmbDORegBias_2", "3"}});
        const QString none = "{'bias':0,'name':'','type':''}", out = "{'bias':2,'name':'OUT','type':'bit'}";
        QCOMPARE(
            text(records()->c(5)),
            QString(
                "{'DI':'','DI2':'','DI2_reg':%1,'DI2_type':'IO','DI_reg':%1,'DI_type':'IO','DO':'','DO2':'',"
                "'DO2_reg':%2,'DO2_type':'寄存器','DO_reg':%1,'DO_type':'IO','filePath':'','stationname':"
                "'rework','status':'','time':'100','type':'上升沿','type2':'上升沿'}")
                .arg(none, out));
        const QAbstractItemView* const table = bench_.table();
        QVERIFY(bench_.table()->columnWidth(9) >= table->sizeHintForColumn(9));
        QCOMPARE(bench_.cell(5, 7) + bench_.cell(5, 8) + bench_.cell(5, 9),
                 "---启动: IO\n停止: 寄存器\nOUT[3]");
        QCOMPARE(json(contentOf("lumo_signalsConfig.json")), records()->exportToJson());
        bench_.clickRow(5, "btnEdit");
        QCOMPARE(combo("cmbDOReg_2")->currentText() + combo("cmbDORegBias_2")->currentText(), "OUT3");
    }

    void whatIsNotOffered_isKept() {
        renew(
            R"({'1':{'DI':'I77'},
                  '2':{'DI':'','DI2_type':'寄存器','DI2_reg':{'name':'','type':'','bias':-1}},
                  '3':{'DI_type':'寄存器','DI_reg':{'name':'GONE','type':'bool','bias':5}},
                  '4':{'DI_type':'寄存器','DI_reg':{'name':'IN','type':'bit','bias':9}},
                  '5':{'DI_type':'寄存器','DI_reg':{'name':'IN','type':'bit','bias':-1},
                       'DI2_type':'寄存器','DI2_reg':{'name':'IN','type':'bit','bias':2000000000}}})");
        const QString before = text(records());
        for (int row = 0; row < 5; ++row) {
            bench_.edit(row, {});
        }
        QCOMPARE(text(records()), QString(before).replace("2000000000", "-1"));
    }

    void edit_changesItsStationAlone_andReservedNamesNever() {
        renew("{'1':{'stationname':'Station 1'},'2':{'stationname':'工位二'},'3':{'stationname':'工位 3'}}");
        const QString before = text(records());
        for (const int row : {0, 1, 2}) {
            bench_.edit(row, {{"lineEdit_stationname", "other"}});
        }
        bench_.edit(3, {{"cmbDI_2", "I2"}, {"cmbDO", ""}, {"cmbType_2", "下降沿"}, {"lineETime", "a25b0"}});
        QString edited =
            QString(before).replace("工位 3", "other").replace("'DO4'", "''").replace("'DI14'", "'I2'");
        edited.replace("'S4','status':'','time':'100','type':'上升沿','type2':'上升沿'",
                       "'S4','status':'','time':'250','type':'上升沿','type2':'下降沿'");
        QVERIFY(sameLog(text(records()).split('}'), edited.split('}')));
        QCOMPARE(bench_.cell(3, 4) + bench_.cell(3, 5) + bench_.cell(3, 9), "DI4\nI2上升沿\n下降沿\nDO14");
    }

    void project_isKeptByItsName_andOnlyWhatIsOneIsTaken() {
        renew();
        QDir().mkdir("parts");
        writeFile("parts/left.json", contentOf("P1.json"));
        writeFile("lumo_param.json", "[]");
        writeFile("parts/lumo_port.json", "[]");  // the name stands for the one in the working directory
        writeFile("strange.json", quoted("[{'type':'moveX'}]"));
        bench_.clickRow(0, "btnEdit");
        const QMap<QString, QString> files{{"lumo_param.json", "P1.json"},
                                           {"parts/left.json", "left.json"},
                                           {"parts/lumo_port.json", "left.json"},
                                           {"strange.json", "left.json"}};
        for (auto file = files.begin(); file != files.end(); ++file) {
            bench_.click("btnOpen");
            bench_.answerFile(QDir().absoluteFilePath(file.key()));
            QCOMPARE(child<QLabel>(page(), "lblProject")->text(), file.value());
            QCOMPARE(bench_.boxes().size(), file.key().endsWith("left.json") ? 0 : 1);
            bench_.closeBoxes();
        }
        bench_.click("okayBtn");
        QCOMPARE(records()->c(0)->c("filePath")->getString() + bench_.cell(0, 2), "left.jsonleft.json");
    }

    void list_losesOnlyTheRowThatIsMeant() {
        renew();
        bench_.table()->setFocus();
        bench_.click("btnEdit");
        QCOMPARE(bench_.boxes(), QStringList("请先选中行"));
        bench_.closeBoxes();
        bench_.clickRow(3, "btnDel");
        QCOMPARE(bench_.boxes(), QStringList("默认行禁止删除"));
        bench_.closeBoxes();
        bench_.edit(-1, {{"lineEdit_stationname", "last"}});
        bench_.clickRow(4, "btnDel");
        bench_.click("btnDel");  // a second tap on the button hits nothing
        QCOMPARE(bench_.boxes(), QStringList("请先选中行"));
        QCOMPARE((columnOf(bench_.table(), 0) + columnOf(bench_.table(), 1)).join(' '),
                 "1 2 3 4 5 S1 S2 S3 S4 last");
        QCOMPARE(json(contentOf("lumo_signalsConfig.json")), records()->exportToJson());
    }
};

LUMO_TEST(TestStationEditor)
#include "test_stationeditor.moc"
