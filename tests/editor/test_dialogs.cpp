#include "devices/devicecontrolwidget.h"
#include "editor/batchdialogs.h"
#include "editor/delaydialog.h"
#include "editor/iodialogs.h"
#include "editor/pointwidget.h"
#include "editor/selectparamdialog.h"
#include "editorfixture.h"
#include "params/paramvaluesdialog.h"
#include "stations/signalsbindingparamwidget.h"
#include "widgets/fieldanswer.h"

#include <map>

/// What the dialogs offer, take and store, that each is answered once, and what is shown of a statement.
class TestDialogs : public EditorTest {
    Q_OBJECT

private slots:
    void init() { reset(); }

    void dialog_isAnsweredOnce() {
        const auto statement = node("{'delaytime':500,'DO_type':'IO'}");
        const QList<std::function<void(QDialog*)>> ways{
            [](QDialog* dialog) { clickOk(dialog); },
            [](QDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Return); },
            [](QDialog* dialog) { click(button(dialog, QDialogButtonBox::Cancel)); },
            [](QDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); },
            [](QDialog* dialog) { dialog->close(); },
        };
        for (int i = 0; i < 2 * ways.size(); ++i) {
            SetDODialog closing(statement.get());
            DelayDialog closed(statement.get());  // by who opened it
            AnswerDialog* const dialog = i % 2 ? static_cast<AnswerDialog*>(&closing) : &closed;
            QSignalSpy answers(dialog, i % 2 ? SIGNAL(signalIsok(bool)) : SIGNAL(signaldelayIsok(bool)));
            dialog->open();
            ways[i / 2](dialog);
            for (const auto& again : ways) {
                again(dialog);
            }
            QCOMPARE(answers, QList<QVariantList>{{i / 2 < 2}});
        }
    }

    /// Also what this robot lacks.
    void ioDialog_offersSignalsOfTheRobotAndTheStoredOne() {
        const std::pair<QByteArray, QString> cases[] = {
            {"'doName':'DO1','DO_type':'IO','DO_reg':{'name':'OUT','bias':3,'type':'bit'},'value'",
             "DO1 DO2, OUT BOOL, 1 2 3 4"},
            {"'doName':'D','DO_type':'register','DO_reg':{'name':'X','bias':5,'type':'bit'},'value'",
             "DO1 DO2 D, OUT BOOL X, 1 6"},
            {"'doName':'DO1','DO_type':'register','DO_reg':{'name':'OUT','bias':4,'type':'bit'},'value'",
             "DO1 DO2, OUT BOOL, 1 2 3 4 5"},
            {"'diName':'D','DI_type':'register','DI_reg':{'name':'X','bias':2,'type':'bool'},'value1'",
             "DI1 D, IN X, 1 3"},
            {"'diName':'DI1','DI_type':'register','DI_reg':{'name':'IN','bias':2000000000,'type':'bit'},'"
             "value1'",
             "DI1, IN, 1 2 3 4 2000000001"},
            {"'diName':'DI1','DI_type':'register','DI_reg':{'name':'IN','bias':-1,'type':'bit'},'value1'",
             "DI1, IN, 1 2 3 4"},
        };
        for (const auto& [record, offered] : cases) {
            const auto statement = node("{" + record + ":'true'}");
            const QJsonValue before = statement->exportToJson();
            const bool isInput = record.contains("DI");
            const std::unique_ptr<IoDialog> dialog(
                isInput ? static_cast<IoDialog*>(new WaitDIDialog(statement.get()))
                        : new SetDODialog(statement.get()));
            dialog->open();
            QStringList lists;
            for (const QByteArray list : {"", "Reg", "RegBias"}) {
                const auto* const combo =
                    child<QComboBox>(dialog.get(), (isInput ? "cmbDI" : "cmbDO") + list);
                lists << textsOf(combo).join(' ');
                QCOMPARE(combo->isVisible(), record.contains("'IO'") == list.isEmpty());
            }
            QCOMPARE(lists.join(", "), offered);
            dialog->save(statement.get());
            QCOMPARE(text(statement.get()), text(before));
        }
    }

    void ok_isEnabledForValuesThatCanRun() {
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
            {&delay, "", "500", true},      {&delay, "12345678901", "123456789", false},
            {&delay, "\b", "", false},      {&start, "0", "0", false},
            {&start, "35", "35", true},     {&start, "\b", "", false},
            {&change, "", "", true},        {&speed, "0", "0", false},
            {&speed, "5000", "5000", true}, {&zone, "", "", false},
            {&zone, "7", "", false},        {&zone, "45", "4", false},
            {&zone, "4", "4", true},        {&lost, "", "20", false},  // its set is gone
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
    }

    /// Also after a mistake, when it is corrected.
    void everyField_keepsWhatItDoesNotTake_andRefusesOk() {
        const auto statement = node(
            "{'type':'moveC','delaytime':500,'weldspeed':'20','index':0,'speed':20,"
            "'zone':2,'point':{'trans':[0,0,0]},'point1':{'trans':[0,0,0]}}");
        QTableWidget stations;
        const std::map<QString, std::function<QWidget*()>> pages{
            {"delay", [&] { return new DelayDialog(statement.get()); }},
            {"speed", [&] { return new UpdateSpeedDialog(program(), {}); }},
            {"zone", [&] { return new UpdateTurningParamDialog(program(), {}); }},
            {"values", [] { return new ParamValuesDialog(m("lumo.param")->c(0)); }},
            {"point", [&] { return new PointWidget(0, statement.get(), 6); }},
            {"station", [&] { return new SignalsBindingParamWidget(&stations, true); }},
            {"device", [] { return new DeviceControlWidget; }},
            {"start", [&] {
                 auto* const dialog = new SelectParamDialog(statement.get());
                 dialog->setbeginOrparam(1);
                 return dialog;
             }}};
        const std::tuple<const char*, const char*, QString, const char*> cases[] = {
            {"delay", "lineEdit", "abc|5.5||-1", "150"},
            {"start", "lineEdit", "abc|5.5||0", "150"},
            {"speed", "lineEdit", "abc|5.5||0|150 %", "150"},
            {"zone", "lineEdit", "150|abc|5.5|", "5"},
            {"values", "power", "150|abc|5.5||007", "100"},
            {"values", "stay_time", "5001|abc|5.5|", "150"},
            {"values", "speed", "150|abc|5.5|", "0"},
            {"point", "lineEditSpeed", "200|abc|5.5||0", "150"},
            {"point", "lineEditTurn", "150|abc|5.5|", "5"},
            {"point", "lineEditX1", "abc||inf|1.2.3", "5,5"},
            {"point", "lineEditC2", "abc|", "-5.5"},
            {"station", "lineETime", "abc|5.5|", "150"},
            {"device", "dspnLaserPower", "150|abc", "5,5"},
            {"device", "dspnLaserRatio", "150|abc|5.555", "100"},
        };
        for (const auto& [pageName, name, refused, taken] : cases) {
            const std::unique_ptr<QWidget> dialog(pages.at(pageName)());
            dialog->show();
            auto* const field = child(dialog.get(), name);
            auto* const answer = field->findChild<lumo::FieldAnswer*>(QString(), Qt::FindDirectChildrenOnly);
            const auto isOk = [&] {
                auto* const box = dialog->findChild<QDialogButtonBox*>();
                auto* const ok = dialog->findChild<QAbstractButton*>("okayBtn");
                return box  ? box->button(QDialogButtonBox::Ok)->isEnabled()
                       : ok ? ok->isEnabled()
                            : answer->isTaken();
            };
            for (const QString& typed : refused.split('|')) {
                answer->selectAll();
                typed.isEmpty() ? QTest::keyClick(field, Qt::Key_Backspace) : QTest::keyClicks(field, typed);
                const QString seen = answer->shownText().remove(" %");
                QCOMPARE(name + seen, name + QString(typed).remove(" %"));
                QVERIFY2(!isOk(), name);
                answer->selectAll();
                QTest::keyClicks(field, taken);
                QVERIFY2(isOk(), name);
            }
        }
    }

    /// Also in the draft, which has the focus after a mistake.
    void numberPad_isToldWhatAFieldTakes() {
        const auto statement = node("{'type':'moveL','delaytime':500,'speed':20,'zone':2}");
        DelayDialog delay(statement.get());
        PointWidget point(0, statement.get(), 6);
        const std::tuple<QWidget*, const char*, QString> cases[] = {
            {&delay, "lineEdit", "延时 | ms | 0 及以上 | 0 | false | 0 | "},
            {&point, "lineEditSpeed", "速度(mm/s) | mm/s | 1 至 199 | 0 | false | 1 | 199"},
            {&point, "lineEditC1", "C | ° |  | 15 | true |  | "},
        };
        for (const auto& [form, name, expected] : cases) {
            auto* const line = child<QLineEdit>(form, name);
            for (const QObject* const told : {line, child<QLineEdit>(line, "draft")}) {
                QStringList texts;
                for (const char* property :
                     {lumo::pad::caption, lumo::pad::unit, lumo::pad::range, lumo::pad::decimals,
                      lumo::pad::isSigned, lumo::pad::minimum, lumo::pad::maximum}) {
                    texts << told->property(property).toString();
                }
                QCOMPARE(texts.join(" | "), expected);
            }
        }
    }

    void statement_showsItsValues() {
        const std::pair<QByteArray, QString> cases[] = {
            {"{'type':'moveJ','point':{'near':[3.141592653589793,-1.5707963267948966,0,0,0,0.001]},'zone':2}",
             "空走|1.轴角度：(180.000, -90.000, 0.000, 0.000, 0.000, 0.057)°；\n2.转弯区：2mm；"},
            {"{'type':'moveL','point':{'trans':[0.5,0,0.25]},'speed':'35.9','toolset':{"
             "'end':{'name':'50%4','trans':[0.1,0,0.05]},'ref':{'name':'W'}}}",
             "直线|1.点位：xyz(500.000, 0.000, 250.000)mm;\n2.速度：v35mm/s；\n"
             "3.工具：50%4, 坐标：xyz(0.100, 0.000, 0.050)mm;\n4.工件：W, 坐标：xyz(0.000, 0.000, 0.000)mm;"},
            // The set's and the port's values, not the statement's own.
            {"{'type':'open','index':0,'laserPower':1,'laserDutyCycle':2,'wireEnable':false,'weldspeed':18}",
             "开始焊接|1.参数名称：A;\n2.激光功率：50%;\n3.激光占空比：30%;\n4.送丝使能：ON;\n"
             "5.焊接速度：v18mm/s；"},
            {"{'type':'setDO','doName':'DO1','DO_type':'IO','DO_reg':{'name':'R','bias':4},'value':'true'}",
             "setDO|1.DO名称：DO1\n2.设置为：true"},
            // Elements of registers are counted from 1.
            {"{'type':'waitDI','diName':'D','DI_type':'register','DI_reg':{'name':'R','bias':2}}",
             "waitDI|1.DI名称：R[3]"},
            {"{'type':'delay','delaytime':500}", "延时|延时时间为：500ms"},
        };
        for (const auto& [content, expected] : cases) {
            const auto statement = node(content);
            const QString command = type2cn(statement->c("type")->getString());
            QCOMPARE(command + "|" + lumo::statementDetails(statement.get()), expected);
        }
    }
};

LUMO_TEST(TestDialogs)
#include "test_dialogs.moc"
