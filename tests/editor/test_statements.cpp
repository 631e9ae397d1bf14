#include "editorfixture.h"

#include <QRadioButton>

/// Inserting and changing statements in their dialogs: no answer is lost, none lands in the wrong line.
class TestStatements : public EditorTest {
    Q_OBJECT

    const QByteArray posture_ = "{'trans':[0.5,0.25,0.125],'rot':[0,0,0.1],'near':[0,0.1,0.2,0.3,0.4,0.5]}";
    const QByteArray tools_ = "{'end':{'name':'torch','trans':[0,0,0.1]},'ref':{'name':'table'}}";

    const QByteArray three_ = "delay 1 speed=1 zone=1; delay 2 speed=2 zone=2; delay 3";

    /// Chooses and types in the open dialog, in the fields that it has.
    static void fillIn(const QString& set, const QString& value, const QString& number) {
        if (auto* const fromRegister = shown()->findChild<QRadioButton*>("rdbRegIn")) {
            click(fromRegister);
            QVERIFY(child(shown(), "cmbDIRegBias")->isVisible());
        }
        const std::pair<QString, QString> choices[] = {
            {"comboBox", set}, {"cmbDO", "DO2"}, {"cmbValue", value}, {"cmbDIRegBias", "3"}};
        for (const auto& [name, choice] : choices) {
            if (auto* const combo = shown()->findChild<QComboBox*>(name)) {
                combo->setCurrentText(choice);
            }
        }
        if (auto* const line = shown()->findChild<QLineEdit*>("lineEdit"); line && line->isVisible()) {
            typeIn(line, number);
        }
    }

    /// The program that the ten buttons make, with this chosen in the dialogs.
    QString tenStatements(const QByteArray& weld, const QByteArray& value, const QByteArray& number) const {
        QByteArray statements =
            "[{'type':'moveJ','point':@p,'speed':20,'zone':2,@c},"
            "{'type':'moveL','point':@p,'speed':20,'zone':2,'toolset':@t,@c},"
            "{'type':'moveCC','point':@p,'point1':{},'speed':20,'zone':2,'toolset':@t,@c},"
            "{'type':'moveC','point':@p,'point1':{},'speed':20,'zone':2,'toolset':@t,@c},"
            "{'type':'open',@w,'weldspeed':'@n',@c},{'type':'close',@c},{'type':'param',@w,@c},"
            "{'type':'waitDI','diName':'DI1','value1':'@v','DI_type':'register',"
            "'DI_reg':{'name':'IN','type':'bit','bias':2},@c},"
            "{'type':'setDO','doName':'DO2','value':'@v','DO_type':'IO',"
            "'DO_reg':{'name':'OUT','type':'bit','bias':0},@c},{'type':'delay','delaytime':'@n',@c}]";
        statements.replace("@c", "'note':'','execute':true").replace("@p", posture_).replace("@t", tools_);
        statements.replace("@w", weld).replace("@v", value).replace("@n", number);
        return text(json(statements));
    }

private slots:
    void init() {
        reset();
        load(three_);
    }
    void cleanup() {
        QVERIFY(!shown());
        QVERIFY(!m("lumo.dialog.program")->value().isValid());
        QVERIFY(!m("lumo.dialog.statement")->value().isValid());
    }

    void buttonsAndEdits_writeTheChosenValues() {
        bench.setParam("power", 49.5, 1);
        m("lumo.param")->c(1)->set(this, "name", "B");
        m("lumo.toolset")->loadJson(this, json(tools_));
        kordservice()->dataNode("sys.posture")->loadJson(this, json(posture_));
        m("lumo.default.program.open")->clear(this);  // as the Russian defaults have it
        find("btnParam")->show();                     // it is kept hidden; programs hold such statements
        bench.time.settle();
        load("[]");
        for (const char* button : {"btnMoveJ", "btnMoveL", "btnMoveCC", "btnMoveC", "btnOpenLaser",
                                   "btnClose", "btnParam", "btnWaitDI", "btnSetDO", "btnDelay"}) {
            act(button);
            if (shown()) {
                QCOMPARE(m("lumo.dialog.program")->value().value<QWidget*>(), shown());
                fillIn("B", "true", "7");
                answer(true);
            }
        }
        const QString made = tenStatements(
            "'index':1,'laserPower':'49.5','laserDutyCycle':'30','wireEnable':true", "true", "7");
        QCOMPARE(text(program()), made);
        const QString edited = tenStatements(
            "'index':0,'laserPower':'50','laserDutyCycle':'30','wireEnable':false", "false", "40");
        ExecutorBench::enablePort(8, false);
        for (const bool ok : {false, true}) {
            for (const int row : {4, 6, 7, 8, 9}) {
                doubleClick(row);
                QCOMPARE(m("lumo.dialog.statement")->value().value<QWidget*>(), shown());
                fillIn("A", "false", "40");
                answer(ok);
            }
            QCOMPARE(text(program()), ok ? edited : made);
        }
        QVERIFY(tableTellsTheTruth());
    }

    void programChangedDuringADialog_answerGoesToItsStatement() {
        // What opens the dialog, then times, speeds and zones.
        const std::tuple<const char*, std::function<void()>, QString> cases[] = {
            {"1 btnEdit", [this] { program()->remove(this, "#1"); }, "1 3, 1 , 1 "},
            {"1 btnEdit", [this] { m("lumo")->insert(this, line(1)); }, "1 3, 1 , 1 "},
            {"1 btnEdit", [this] { program()->reorder(this, 1, 2); }, "1 3 4, 1  2, 1  2"},
            {"1 btnEdit", [this] { program()->remove(this, "#0"); }, "4 3, 2 , 2 "},
            {"1 btnEdit", [this] { load(three_); }, "1 2 3, 1 2 , 1 2 "},
            {"2 btnDelay", [this] { program()->remove(this, "#0"); }, "2 3 4, 2  , 2  "},
            {"2 btnDelay", [this] { load("[]"); }, "4, , "},
            {"multiBtn 0 1 2 speedBtn", [this] { program()->remove(this, "#0"); }, "2 3, 4 , 2 "},
            {"multiBtn 0 2 speedBtn", [this] { program()->reorder(this, 0, 1); }, "2 1 3, 2 4 , 2 1 "},
            {"multiBtn 0 1 speedBtn", [this] { load(three_); }, "1 2 3, 1 2 , 1 2 "},
            {"multiBtn 0 1 turningBtn", [] {}, "1 2 3, 1 2 , 4 4 "},
        };
        for (const auto& [opens, change, expected] : cases) {
            init();
            act(QString("multiBtn speedBtn turningBtn multiBtn ") + opens);  // none opens without rows
            const QPointer<ModuleObject> edited = line(1);
            change();
            typeIn(child<QLineEdit>(shown(), "lineEdit"), "4");
            answer(true);
            QCOMPARE(values("delaytime") + ", " + values("speed") + ", " + values("zone"), expected);
            QVERIFY(tableTellsTheTruth());
            QVERIFY(!edited || edited->pmobj() == program() || edited->c("delaytime")->getInt() == 2);
        }
    }

    void cancelledDialog_changesNothing() {
        for (const char* button :
             {"btnSetDO", "btnWaitDI", "btnDelay", "btnOpenLaser", "btnEdit", "speedBtn", "turningBtn"}) {
            act("1");
            find(button)->setEnabled(true);
            act(button);
            for (const char* other : {"btnSetDO", "speedBtn", "btnEdit"}) {
                find<QPushButton>(other)->click();  // one is open at a time
            }
            answer(false);
            QVERIFY2(!shown(), button);
        }
        QCOMPARE(values("delaytime"), "1 2 3");
    }
};

LUMO_TEST(TestStatements)
#include "test_statements.moc"
