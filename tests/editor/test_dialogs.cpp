#include "editor/delaydialog.h"
#include "editor/selectparamdialog.h"
#include "editor/setdodialog.h"
#include "editor/updatespeeddialog.h"
#include "editor/updateturningparamdialog.h"
#include "editor/waitdidialog.h"
#include "editorfixture.h"
#include "mendo/log.h"
#include "params/addparamdialog.h"
#include "params/paramvaluesdialog.h"

/// What the dialogs offer, take and store, and that each is answered once.
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
            "{'doName':'DO1','value':'false','DO_type':'IO','DO_reg':{'name':'','bias':0,'type':''}}",
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
            m("rova.robot.register._list")->clear(this);
        }
    }

    void okIsOfferedForWhatCanRun() {
        const auto statement = node("{'delaytime':500,'weldspeed':'20','index':0}");
        DelayDialog delay(statement.get());
        SelectParamDialog start(statement.get()), change(statement.get());
        start.setbeginOrparam(1);
        change.setbeginOrparam(0);
        UpdateSpeedDialog speed(program(), {});
        UpdateTurningParamDialog zone(program(), {});
        const struct {
            QDialog* dialog;
            QString typed, shown;
            bool ok;
        } cases[] = {
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
        };
        for (const auto& [dialog, typed, shown, ok] : cases) {
            dialog->open();  // selects what was there
            auto* const line = child<QLineEdit>(dialog, "lineEdit");
            QTest::keyClicks(line, typed);
            QCOMPARE(line->text(), shown);
            QCOMPARE(button(dialog, QDialogButtonBox::Ok)->isEnabled(), ok);
            dialog->hide();
        }
    }

    void parameterSet_isChosenAndNeverReplacedByAnother() {
        m("lumo.param")->loadJson(this, json("[{'name':'B'},{'name':'A'},{'name':'B'}]"));
        const auto statement = node("{'index':1,'weldspeed':35}"),
                   orphan = node("{'index':4,'weldspeed':20}");
        for (const bool isStart : {true, false}) {
            SelectParamDialog dialog(statement.get()), other(orphan.get());
            for (SelectParamDialog* each : {&dialog, &other}) {
                each->setbeginOrparam(isStart ? 1 : 0);
                each->open();
            }
            QCOMPARE(textsOf(child<QComboBox>(&dialog, "comboBox")).join(' '), "B A B");
            QCOMPARE(dialog.index(), 1);
            QCOMPARE(child(&dialog, "lineEdit")->isVisible(), isStart);
            QCOMPARE(other.index(), -1);
            QVERIFY(!button(&other, QDialogButtonBox::Ok)->isEnabled());
            QTest::keyClick(child(&other, "comboBox"), Qt::Key_Down);
            QCOMPARE(other.index(), 0);
            QVERIFY(button(&other, QDialogButtonBox::Ok)->isEnabled());
        }
    }
};

LUMO_TEST(TestDialogs)
#include "test_dialogs.moc"
