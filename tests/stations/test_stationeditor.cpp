#include "stations/signalsbindingparamwidget.h"
#include "stations/stationbench.h"
#include "support/suite.h"
#include "widgets/switchbutton.h"

using namespace lumo;
using namespace test;

/// The record of a station, the list of the stations and the page of one station.
class TestStationEditor : public QObject {
    Q_OBJECT

    StationBench bench_;

    static ModuleObject* records() { return m("lumo.signalsConfig"); }
    SignalsBindingParamWidget* page() const { return bench_.find<SignalsBindingParamWidget>(); }
    QComboBox* combo(const QString& name) const { return child<QComboBox>(page(), name.toLatin1()); }
    /// Five stations, and the inputs, outputs and registers of the controller.
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
        const QMap<QByteArray, Edge> edges{
            {"По фронту", Edge::Rising}, {"Falling Edge", Edge::Falling}, {"rising", Edge::None}};
        for (auto edge = edges.begin(); edge != edges.end(); ++edge) {
            const auto station = node("{'type2':'" + edge.key() + "'}");
            QVERIFY2(readEdge(station.get(), StationSignal::StopInput) == edge.value(), edge.key());
        }
        QVERIFY(samplePeriodMs("1") == 1 && samplePeriodMs("0") == 100 && samplePeriodMs("fast") == 100);
    }

    /// Inputs offer registers that can be read, outputs those that can be written; only registers of bits.
    void newStation_isStoredAndShown_cancelChangesNothing() {
        renew();
        const QString before = text(records());
        bench_.edit(-1, {});
        QCOMPARE(boxes(), QStringList("工位名称不能为空!"));
        bench_.click("cancelBtn");
        bench_.edit(2, {{"btnclear", ""}}, "cancelBtn");
        QCOMPARE(text(records()), before);
        QVERIFY(!QFile::exists("lumo_signalsConfig.json"));

        bench_.edit(-1, {{"lineEdit_stationname", "rework"},
                         {"rdbRegIn", ""},
                         {"cmbDIRegBias", "3"},
                         {"cmbDI_2", "I2"},
                         {"cmbDO", "O1"},
                         {"rdbRegOut_2", ""},
                         {"cmbDOReg_2", "OUT1"}});
        bench_.clickRow(5, "btnEdit");
        QCOMPARE(textsOf(combo("cmbDIReg")).join(' ') + textsOf(combo("cmbDOReg")).join(' '), " IN OUT OUT1");
        bench_.click("okayBtn");
        QCOMPARE(text(records()->c(5)),
                 QString("{'DI':'','DI2':'I2','DI2_reg':%1,'DI2_type':'IO','DI_reg':{'bias':2,'name':'IN',"
                         "'type':'bit'},'DI_type':'寄存器','DO':'O1','DO2':'','DO2_reg':{'bias':0,'name':"
                         "'OUT1','type':'bool'},'DO2_type':'寄存器','DO_reg':%1,'DO_type':'IO','filePath':"
                         "'','stationname':'rework','status':'','time':'100','type':'上升沿','type2':"
                         "'上升沿'}")
                     .replace("%1", "{'bias':0,'name':'','type':''}"));
        QCOMPARE(bench_.cell(5, 3) + bench_.cell(5, 7) + bench_.cell(5, 9),
                 "启动: 寄存器\n停止: IO---O1\nOUT1[1]");
        QCOMPARE(json(contentOf("lumo_signalsConfig.json")), records()->exportToJson());
    }

    void edit_changesOneStation_reservedNamesStay() {
        renew("{'1':{'stationname':'Station 1'},'2':{'stationname':'工位二'},'3':{'stationname':'工位 3'}}");
        const QString before = text(records());
        for (const int row : {0, 1, 2}) {
            bench_.edit(row, {{"lineEdit_stationname", "other"}});
        }
        bench_.edit(3, {{"cmbDI_2", "I2"}, {"cmbDO", ""}, {"cmbType_2", "下降沿"}, {"lineETime", "250"}});
        QString edited =
            QString(before).replace("工位 3", "other").replace("'DO4'", "''").replace("'DI14'", "'I2'");
        edited.replace("'S4','status':'','time':'100','type':'上升沿','type2':'上升沿'",
                       "'S4','status':'','time':'250','type':'上升沿','type2':'下降沿'");
        QVERIFY(sameLog(text(records()).split('}'), edited.split('}')));
        QCOMPARE(bench_.cell(3, 4) + bench_.cell(3, 5) + bench_.cell(3, 9), "DI4\nI2上升沿\n下降沿\nDO14");
    }

    void project_isStoredByName_otherFilesAreRefused() {
        renew();
        QDir().mkdir("parts");
        writeFile("parts/left.json", contentOf("P1.json"));
        writeFile("parts/lumo_port.json", "[]");  // its name would mean the one in the working directory
        writeFile("strange.json", quoted("[{'type':'moveX'}]"));
        writeFile("faulty.json", quoted("[{'type':'moveL'}]"));
        bench_.clickRow(0, "btnEdit");
        for (const QString file :
             {"parts/left.json", "parts/lumo_port.json", "strange.json", "faulty.json"}) {
            bench_.click("btnOpen");
            bench_.answerFile(QDir().absoluteFilePath(file));
            QCOMPARE(child<QLabel>(page(), "lblProject")->text(), "left.json");
            QCOMPARE(boxes().size(), file == "parts/left.json" ? 0 : 1);
            closeBoxes();
        }
        writeFile("left.json", contentOf("faulty.json"));
        bench_.click("okayBtn");
        QCOMPARE(boxes().size(), 1);
        QFile::remove("left.json");
        bench_.click("okayBtn");
        QCOMPARE(records()->c(0)->c("filePath")->getString() + bench_.cell(0, 2), "left.jsonleft.json");
    }

    void delete_removesOnlyTheSelectedRow() {
        renew();
        bench_.clickRow(3, "btnDel");
        QCOMPARE(boxes(), QStringList("默认行禁止删除"));
        closeBoxes();
        bench_.edit(-1, {{"lineEdit_stationname", "last"}});
        bench_.clickRow(4, "btnDel");
        bench_.click("btnDel");  // a second tap deletes nothing
        QCOMPARE(boxes(), QStringList("请先选中行"));
        QCOMPARE((columnOf(bench_.table(), 0) + columnOf(bench_.table(), 1)).join(' '),
                 "1 2 3 4 5 S1 S2 S3 S4 last");
        QCOMPARE(json(contentOf("lumo_signalsConfig.json")), records()->exportToJson());
    }

    void switchPress_slidesTheKnobToItsEnd_alsoFromTheMiddle() {
        SwitchButton toggle;
        toggle.resize(100, 25);
        QString positions;
        for (const int ms : {60, 300, 300}) {
            QTest::mousePress(&toggle, Qt::LeftButton);
            bench_.time.advance(ms);
            positions += QString::number(toggle.startX()) + ' ';
        }
        QCOMPARE(positions, "20 0 75 ");
    }
};

LUMO_TEST(TestStationEditor)
#include "test_stationeditor.moc"
