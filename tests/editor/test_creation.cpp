#include "editorfixture.h"
#include "panel/projectfile.h"

#include <QProcess>
#include <QRadioButton>

/// Inserting a statement of each type and changing it again, as a person does.
class TestCreation : public EditorTest {
    Q_OBJECT

    const QByteArray posture_ = "{'trans':[0.5,0.25,0.125],'rot':[0,0,0.1],'near':[0,0.1,0.2,0.3,0.4,0.5]}";
    const QByteArray tools_ = "{'end':{'name':'torch','trans':[0,0,0.1]},'ref':{'name':'table'}}";

    /// Chooses and types in the open dialog, in the fields that it has.
    static void fillIn(const QString& set, const QString& value, const QString& number) {
        if (auto* const fromRegister = shown()->findChild<QRadioButton*>("rdbRegIn")) {
            click(fromRegister);
        }
        const std::pair<QString, QString> choices[] = {
            {"comboBox", set}, {"cmbDO", "DO2"}, {"cmbValue", value}, {"cmbDIRegBias", "3"}};
        for (const auto& [name, choice] : choices) {
            if (auto* const combo = shown()->findChild<QComboBox*>(name)) {
                combo->setCurrentText(choice);
            }
        }
        if (auto* const line = shown()->findChild<QLineEdit*>("lineEdit"); line && line->isVisible()) {
            type(number);
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
        m("rova.robot.register._list")
            ->loadJson(this, json("[{'name':'OUT','type':'bit','rw':'rdwr','len':4},"
                                  "{'name':'IN','type':'bit','rw':'rd','len':4}]"));
        kordservice()
            ->dataNode("device.io")
            ->loadJson(this, json("{'DO':{'DO1':false,'DO2':false},'DI':{'DI1':false,'DI2':false}}"));
        bench.setParam("power", 49.5, 1);
        m("lumo.param")->c(1)->set(this, "name", "B");
    }

    void tenButtons_writeWhatWasChosen_alsoWhenItIsEdited() {
        const QJsonValue toolsBefore = m("lumo.toolset")->exportToJson();
        m("lumo.toolset")->loadJson(this, json(tools_));
        kordservice()->dataNode("sys.posture")->loadJson(this, json(posture_));
        find("btnParam")->show();  // it is kept hidden; programs hold such statements
        bench.time.settle();
        for (const char* button : {"btnMoveJ", "btnMoveL", "btnMoveCC", "btnMoveC", "btnOpenLaser",
                                   "btnClose", "btnParam", "btnWaitDI", "btnSetDO", "btnDelay"}) {
            act(button);
            if (shown()) {
                QCOMPARE(m("lumo.dialog.program")->value().value<QWidget*>(), shown());
                fillIn("B", "true", "7");
                answer(true);
            }
            QVERIFY(!m("lumo.dialog.program")->value().isValid());
        }
        // Users check their files with the schema.
        QVERIFY(lumo::saveProject("made.json"));
        QProcess check;
        check.setProcessChannelMode(QProcess::MergedChannels);
        check.start("/usr/bin/python3", {SCHEMA_CHECK, SCHEMAS, "made.json"});
        QVERIFY(check.waitForFinished(-1));
        QVERIFY2(check.exitStatus() == QProcess::NormalExit && check.exitCode() == 0, check.readAll());

        bench.robot.standAt({9, 9, 9});  // what they copied stays as it was
        m("lumo.toolset")->loadJson(this, toolsBefore);
        const QString made = tenStatements(
            "'index':1,'laserPower':'49.5','laserDutyCycle':'30','wireEnable':true", "true", "7");
        QCOMPARE(text(program()), made);
        const QString edited = tenStatements(
            "'index':0,'laserPower':'50','laserDutyCycle':'30','wireEnable':false", "false", "40");
        ExecutorBench::enablePort(8, false);
        for (const bool ok : {false, true}) {
            for (const int row : {4, 6, 7, 8, 9}) {
                doubleClickCell(table(), row, ProgramTable::LineColumn);
                QCOMPARE(m("lumo.dialog.statement")->value().value<QWidget*>(), shown());
                fillIn("A", "false", "40");
                answer(ok);
                QVERIFY(!m("lumo.dialog.statement")->value().isValid());
            }
            QCOMPARE(text(program()), ok ? edited : made);
        }
        QVERIFY(tableTellsTheTruth());
    }

    void emptyTemplates_areFilledByTheDialog() {
        ModuleObject* const templateRecord = m("lumo.default.program.open");
        const QJsonValue kept = templateRecord->exportToJson();
        templateRecord->clear(this);  // as the Russian defaults have it
        act("btnOpenLaser");
        fillIn("B", "", "7");
        answer(true);
        templateRecord->loadJson(this, kept);
        QCOMPARE(values("weldspeed"), QStringList{"7"});
        QCOMPARE(values("laserPower"), QStringList{"49.5"});
    }
};

LUMO_TEST(TestCreation)
#include "test_creation.moc"
