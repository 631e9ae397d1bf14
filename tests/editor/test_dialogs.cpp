#include "editor/delaydialog.h"
#include "editor/selectparamdialog.h"
#include "editor/setdodialog.h"
#include "editor/statementtext.h"
#include "editor/updatespeeddialog.h"
#include "editor/updateturningparamdialog.h"
#include "editor/waitdidialog.h"
#include "editorfixture.h"
#include "mendo/log.h"
#include "params/addparamdialog.h"
#include "params/paramvaluesdialog.h"

/// What the dialogs offer, take and store, that each is answered once, and what is shown of a statement.
class TestDialogs : public EditorTest {
    Q_OBJECT

private slots:
    void init() {
        bench.reset();
        kordservice()->dataNode("device.io")->loadJson(this, json("{'DI':{'DI1':false},'DO':{'DO1':false}}"));
        m("rova.robot.register._list")
            ->loadJson(this,
                       json("[{'name':'OUT','type':'bit','rw':'rdwr','len':4},"
                            "{'name':'BOOL','type':'bool','rw':'rdwr'},{'name':'IN','type':'bit','rw':'rd'},"
                            "{'name':'INT','type':'int','rw':'rdwr'},{'name':'KINDLESS'}]"));
    }

    void everyDialog_isAnsweredOnceHoweverItEnds() {
        const auto statement = node("{'delaytime':500,'weldspeed':20,'DO_type':'IO','name':'" +
                                    QByteArray("a long name ").repeated(20) + "'}");
        ModuleObject* const record = statement.get();
        QWidget window;
        const std::pair<std::function<AnswerDialog*()>, const char*> kinds[] = {
            {[&] { return new SetDODialog(record, &window); }, SIGNAL(signalIsok(bool))},
            {[&] { return new WaitDIDialog(record, &window); }, SIGNAL(signalIsok(bool))},
            {[&] { return new SelectParamDialog(record, &window); }, SIGNAL(signalSelectParamIsok(bool))},
            {[&] { return new DelayDialog(record, &window); }, SIGNAL(signaldelayIsok(bool))},
            {[&] { return new UpdateSpeedDialog(record, {}, &window); }, SIGNAL(signalUpdateSpeedIsok(bool))},
            {[&] { return new UpdateTurningParamDialog(record, {}, &window); },
             SIGNAL(signalUpdateturningIsok(bool))},
            {[&] { return new AddParamDialog(&window); }, SIGNAL(signalAddParamIsok(bool))},
            {[&] { return new ParamValuesDialog(record, &window); }, SIGNAL(signalParamValuesIsok(bool))},
        };
        const QList<std::function<void(QDialog*)>> ways{
            [](QDialog* dialog) { clickOk(dialog); },
            [](QDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Return); },
            [](QDialog* dialog) { click(button(dialog, QDialogButtonBox::Cancel)); },
            [](QDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); },
            [](QDialog* dialog) { dialog->close(); },
        };
        for (const auto& [make, answer] : kinds) {
            for (int way = 0; way < ways.size(); ++way) {
                const std::unique_ptr<AnswerDialog> dialog(make());
                QSignalSpy answers(dialog.get(), answer);
                QSignalSpy log(mendo::LogHub::instance(), &mendo::LogHub::line);
                dialog->open();
                if (auto* const line = dialog->findChild<QLineEdit*>(); line && line->text().isEmpty()) {
                    line->setText("5");
                }
                QVERIFY(dialog->windowFlags().testFlag(Qt::FramelessWindowHint));
                QVERIFY(dialog->width() <= 1024 && dialog->height() <= 768);
                QVERIFY(button(dialog.get(), QDialogButtonBox::Ok)->height() >= 48);
                ways[way](dialog.get());
                for (const auto& again : ways) {
                    again(dialog.get());
                }
                const QString name = dialog->metaObject()->className();
                const QString said =
                    name + "::" + name + "  QDialogButtonBox::" + (way < 2 ? "Ok" : "Cancel");
                QCOMPARE(answers, QList<QVariantList>{{way < 2}});
                QCOMPARE(log, QList<QVariantList>({{"W", said}}));
                dialog->open();  // shown anew, it is answered anew
                dialog->reject();
                QCOMPARE(answers.count(), 2);
            }
        }
    }

    void outputDialog_offersWhatCanBeWritten() {
        const auto statement = node("{'DO_type':'register'}");
        SetDODialog dialog(statement.get());
        dialog.open();
        auto* const registers = child<QComboBox>(&dialog, "cmbDOReg");
        auto* const elements = child<QComboBox>(&dialog, "cmbDORegBias");
        QCOMPARE(textsOf(registers).join(' '), "OUT BOOL");
        QCOMPARE(textsOf(elements).join(' '), "1 2 3 4");
        QTest::keyClick(registers, Qt::Key_Down);
        QCOMPARE(textsOf(elements).join(' '), "1");
        for (const bool isRegister : {true, false, true}) {
            click(child(&dialog, isRegister ? "rdbRegOut" : "rdbIOOut"));
            for (const char* name : {"cmbDO", "label_2", "cmbDOReg", "lblDOReg", "cmbDORegBias"}) {
                QCOMPARE(child(&dialog, name)->isVisible(), isRegister == QString(name).contains("Reg"));
            }
        }
    }

    /// Also what this robot lacks.
    void untouchedDialog_storesWhatWasThere() {
        const QList<QByteArray> records{
            "{'doName':'DO1','value':'true','DO_type':'IO','DO_reg':{'name':'OUT','bias':3,'type':'bit'}}",
            "{'doName':'DO9','value':'true','DO_type':'register','DO_reg':{'name':'X','bias':5,'type':'bit'}"
            "}",
            "{'doName':'DO1','value':'true','DO_type':'register','DO_reg':{'name':'OUT','bias':7,'type':'bit'"
            "}}",
            "{'diName':'DI7','value1':'false','DI_type':'register','DI_reg':{'name':'X','bias':2,'type':'"
            "bool'}}",
        };
        for (const QByteArray& record : records) {
            const auto statement = node(record);
            std::unique_ptr<IoDialog> dialog = std::make_unique<WaitDIDialog>(statement.get());
            if (record.contains("DO_type")) {
                dialog = std::make_unique<SetDODialog>(statement.get());
            }
            dialog->open();
            QCOMPARE(child(dialog.get(), "label_2")->isVisible(), record.contains("'IO'"));
            clickOk(dialog.get());
            dialog->save(statement.get());
            QCOMPARE(text(statement.get()), text(json(record)));
        }
    }

    void okIsOfferedForWhatCanRun() {
        const auto statement = node("{'delaytime':500,'weldspeed':'20','index':0}");
        const auto orphan = node("{'index':4,'weldspeed':20}");
        DelayDialog delay(statement.get());
        SelectParamDialog start(statement.get()), change(statement.get()), lost(orphan.get());
        start.setbeginOrparam(1);
        change.setbeginOrparam(0);
        lost.setbeginOrparam(1);
        UpdateSpeedDialog speed(program(), {});
        UpdateTurningParamDialog zone(program(), {});
        const std::tuple<QDialog*, QString, QString, bool> cases[] = {
            {&delay, "", "500", true},
            {&delay, "-1.5e3", "153", true},
            {&delay, "12345678901", "123456789", true},
            {&delay, "\b", "", false},
            {&start, "", "20", true},
            {&start, "0", "0", false},
            {&start, "3x5", "35", true},
            {&start, "\b", "", false},
            {&change, "", "", true},
            {&speed, "", "", false},
            {&speed, "0", "0", false},
            {&speed, "5000", "5000", true},
            {&zone, "", "", true},
            {&zone, "5", "5", true},
            {&zone, "6", "", true},
            {&zone, "45", "4", true},
            {&zone, "-3", "3", true},
            {&lost, "", "20", false},
        };
        for (const auto& [dialog, typed, shown, ok] : cases) {
            dialog->open();  // selects what was there
            auto* const line = child<QLineEdit>(dialog, "lineEdit");
            QTest::keyClicks(line, typed);
            QCOMPARE(line->text(), shown);
            QCOMPARE(button(dialog, QDialogButtonBox::Ok)->isEnabled(), ok);
            QCOMPARE(line->isVisible(), dialog != &change);
            dialog->hide();
        }
        // A set that is gone is not replaced by another until one is chosen.
        lost.open();
        QCOMPARE(lost.index(), -1);
        QTest::keyClick(child(&lost, "comboBox"), Qt::Key_Down);
        QCOMPARE(lost.index(), 0);
        QVERIFY(button(&lost, QDialogButtonBox::Ok)->isEnabled());
    }

    void eachStatement_showsItsOwnValues() {
        const std::pair<QByteArray, QString> cases[] = {
            {"{'type':'moveJ','point':{'near':[3.141592653589793,-1.5707963267948966,0,0,0,0.001]},'zone':2}",
             "空走|1.轴角度：(180.000, -90.000, 0.000, 0.000, 0.000, 0.057)°；\n2.转弯区：2mm；"},
            {"{'type':'moveL','point':{'trans':[0.5,0,0.25]},'speed':'35.9','toolset':{"
             "'end':{'name':'50%4','trans':[0.1,0,0.05]},'ref':{'name':'wobj0','trans':[0,0,0]}}}",
             "直线|1.点位：xyz(500.000, 0.000, 250.000)mm;\n2.速度：v35mm/s；\n"
             "3.工具：50%4, 坐标：xyz(0.100, 0.000, 0.050)mm;\n"
             "4.工件：wobj0, 坐标：xyz(0.000, 0.000, 0.000)mm;"},
            {"{'type':'moveC','point':{},'point1':{'trans':[1,-2,0.0004]}}",
             "圆弧|1.点位：xyz(0.000, 0.000, 0.000)mm;\n2.点位：xyz(1000.000, -2000.000, 0.400)mm;"},
            // A name that is empty leaves a gap in the numbers.
            {"{'type':'moveCC','name':'','speed':20}", "全圆|2.速度：v20mm/s；"},
            // The set's and the port's values, not the statement's own.
            {"{'type':'open','index':0,'laserPower':1,'laserDutyCycle':2,'wireEnable':false,'weldspeed':18}",
             "开始焊接|1.参数名称：A;\n2.激光功率：50%;\n3.激光占空比：30%;\n4.送丝使能：ON;\n"
             "5.焊接速度：v18mm/s；"},
            {"{'type':'param','index':7,'laserPower':50}", "工艺参数|1.参数名称：;\n2.激光功率：%;"},
            {"{'type':'setDO','doName':'DO1','DO_type':'IO','DO_reg':{'name':'R','bias':4},'value':'true'}",
             "setDO|1.DO名称：DO1\n2.设置为：true"},
            // Elements of registers are counted from 1.
            {"{'type':'waitDI','diName':'D','DI_type':'register','DI_reg':{'name':'R','bias':2},'value1':'no'"
             "}",
             "waitDI|1.DI名称：R[3]\n2.等待该信号变为：no"},
            {"{'type':'delay','delaytime':500}", "延时|延时时间为：500ms"},
            {"{'type':'close','note':'n','execute':true}", "停止焊接|"},
        };
        kordservice()->dataNode("sys.info")->set(nullptr, "joint_num", 6);
        for (const auto& [content, expected] : cases) {
            const auto statement = node(content);
            const QString command = type2cn(statement->c("type")->getString());
            QCOMPARE(command + "|" + lumo::statementDetails(statement.get()), expected);
            QCOMPARE(text(statement.get()), text(json(content)));  // showing writes nothing
        }
        kordservice()->dataNode("sys.info")->set(nullptr, "joint_num", 7);
        QVERIFY(
            joints2cn(node("{'near':[0,0,0,0,0,0,3.141592653589793]}").get()).contains(" 0.000,180.000)"));
    }
};

LUMO_TEST(TestDialogs)
#include "test_dialogs.moc"
