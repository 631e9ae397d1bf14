#include "editorfixture.h"

#include "editor/delaydialog.h"
#include "panel/projectfile.h"

#include <QComboBox>
#include <QJsonArray>
#include <QJsonObject>
#include <QLineEdit>
#include <QProcess>
#include <QRadioButton>
#include <QSignalSpy>

/// Inserting a statement of each type and changing it again, as a person does.
class TestCreation : public QObject {
    Q_OBJECT

    EditorFixture editor_;

    template <typename Widget>
    static Widget* field(const char* name) {
        return EditorFixture::dialog()->findChild<Widget*>(QString::fromLatin1(name));
    }
    static void type(const QString& text) {
        auto* const line = field<QLineEdit>("lineEdit");
        line->clear();
        QTest::keyClicks(line, text);
    }
    static ModuleObject* line(int row) { return EditorFixture::program()->c(row); }
    static QString value(int row, const char* path) {
        return line(row)->r(QString::fromLatin1(path))->getString();
    }

    static void offerRegisters() {
        ModuleObject* const list = m("rova.robot.register._list");
        list->clear(nullptr);
        for (const auto& [name, rw] : {std::pair{"OUT", "rdwr"}, std::pair{"IN", "rd"}}) {
            list->append(nullptr)
                ->set(nullptr, "name", QString(name))
                ->set(nullptr, "type", "bit")
                ->set(nullptr, "rw", QString(rw))
                ->set(nullptr, "len", 4);
        }
    }

private slots:
    void init() {
        editor_.reset();
        offerRegisters();
        ModuleObject* const io = kordservice()->dataNode("device.io");
        for (const char* path : {"DO.DO1", "DO.DO2", "DI.DI1", "DI.DI2"}) {
            io->set(this, QString(path), false);
        }
        editor_.bench.setParam("power", 80, 1);
        m("lumo.param")->c(1)->set(this, "name", "B");
    }
    void cleanup() {
        if (QDialog* dialog = EditorFixture::dialog()) {
            dialog->reject();
        }
    }

    void moves_data() {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<QString>("type");
        QTest::addColumn<bool>("hasToolset");
        QTest::newRow("joint") << QByteArray("btnMoveJ") << "moveJ" << false;
        QTest::newRow("line") << QByteArray("btnMoveL") << "moveL" << true;
        QTest::newRow("circle") << QByteArray("btnMoveCC") << "moveCC" << true;
        QTest::newRow("arc") << QByteArray("btnMoveC") << "moveC" << true;
    }

    void moves() {
        QFETCH(QByteArray, button);
        QFETCH(QString, type);
        QFETCH(bool, hasToolset);
        editor_.bench.robot.standAt({0.5, 0.25, 0.125});
        m("lumo.toolset")->set(this, "end.name", "torch");
        editor_.click(button.constData());
        QCOMPARE(EditorFixture::types(), QStringList{type});
        QCOMPARE(line(0)->r("point.trans.#1")->getDouble(), 0.25);
        QCOMPARE(line(0)->hasRmobj("toolset.end"), hasToolset);
        if (hasToolset) {
            QCOMPARE(value(0, "toolset.end.name"), QString("torch"));
        }
        QVERIFY(line(0)->c("execute")->getBool());
        QVERIFY(line(0)->hasCmobj("note"));
        QCOMPARE(editor_.selected(), QVector<int>{0});
        QVERIFY(editor_.tableTellsTheTruth());
        // A later posture does not move it.
        editor_.bench.robot.standAt({9, 9, 9});
        QCOMPARE(line(0)->r("point.trans.#1")->getDouble(), 0.25);
        m("lumo.toolset")->set(this, "end.name", "tool0");
    }

    void newStatements_goBelowTheSelectedRow() {
        editor_.click("btnMoveJ");
        editor_.click("btnClose");
        editor_.select(0);
        editor_.click("btnMoveL");
        QCOMPARE(EditorFixture::types(), QStringList({"moveJ", "moveL", "close"}));
        QCOMPARE(editor_.selected(), QVector<int>{1});
        editor_.select(-1);
        editor_.click("btnMoveC");
        QCOMPARE(EditorFixture::types(), QStringList({"moveC", "moveJ", "moveL", "close"}));
        QCOMPARE(editor_.selected(), QVector<int>{0});
        QCOMPARE(editor_.column(ProgramTable::RunColumn), QStringList({"运行", "运行", "运行", "运行"}));
        QVERIFY(editor_.tableTellsTheTruth());
    }

    void outputOfTheController() {
        editor_.click("btnSetDO");
        QCOMPARE(m("lumo.dialog.program")->value().value<QWidget*>(), EditorFixture::dialog());
        field<QComboBox>("cmbDO")->setCurrentText("DO2");
        field<QComboBox>("cmbValue")->setCurrentText("true");
        editor_.answer(true);
        QVERIFY(!m("lumo.dialog.program")->value().isValid());
        QCOMPARE(value(0, "doName"), QString("DO2"));
        QCOMPARE(editor_.column(ProgramTable::DetailColumn), QStringList{"1.DO名称：DO2\n2.设置为：true"});
    }

    void inputOfARegister_editedAfterwards() {
        editor_.click("btnWaitDI");
        QTest::mouseClick(field<QRadioButton>("rdbRegIn"), Qt::LeftButton);
        field<QComboBox>("cmbDIRegBias")->setCurrentText("3");
        editor_.answer(true);
        QCOMPARE(editor_.column(ProgramTable::DetailColumn),
                 QStringList{"1.DI名称：IN[3]\n2.等待该信号变为：false"});
        editor_.doubleClick(0);
        QCOMPARE(m("lumo.dialog.statement")->value().value<QWidget*>(), EditorFixture::dialog());
        field<QComboBox>("cmbValue")->setCurrentText("true");
        editor_.answer(true);
        QVERIFY(!m("lumo.dialog.statement")->value().isValid());
        QCOMPARE(editor_.column(ProgramTable::DetailColumn),
                 QStringList{"1.DI名称：IN[3]\n2.等待该信号变为：true"});
    }

    void delay_createdAndEdited() {
        editor_.click("btnDelay");
        type("250");
        editor_.answer(true);
        QCOMPARE(line(0)->c("delaytime")->value(), QVariant("250"));
        editor_.doubleClick(0);
        type("30");
        editor_.answer(false);
        QCOMPARE(value(0, "delaytime"), QString("250"));
        editor_.click("btnEdit");
        type("40");
        editor_.answer(true);
        QCOMPARE(editor_.column(ProgramTable::DetailColumn), QStringList{"延时时间为：40ms"});
    }

    void startOfWelding_takesCopiesOfTheChosenSet() {
        editor_.click("btnOpenLaser");
        field<QComboBox>("comboBox")->setCurrentText("B");
        type("35");
        editor_.answer(true);
        QCOMPARE(line(0)->c("index")->value(), QVariant(1));
        QCOMPARE(line(0)->c("laserPower")->value(), QVariant("80"));
        QCOMPARE(line(0)->c("laserDutyCycle")->value(), QVariant("30"));
        QCOMPARE(line(0)->c("wireEnable")->value(), QVariant(true));
        QCOMPARE(line(0)->c("weldspeed")->value(), QVariant("35"));
        test::ExecutorBench::enablePort(8, false);
        editor_.click("btnEdit");
        field<QComboBox>("comboBox")->setCurrentText("A");
        type("36");
        editor_.answer(true);
        QCOMPARE(line(0)->c("index")->getInt(), 0);
        QCOMPARE(line(0)->c("wireEnable")->getBool(true), false);
        QCOMPARE(value(0, "weldspeed"), QString("36"));
        QVERIFY(editor_.tableTellsTheTruth());
    }

    void changeOfParameters_hasNoSpeed() {
        editor_.find("btnParam")->show();  // it is kept hidden; programs hold such statements
        editor_.bench.time.settle();
        editor_.click("btnParam");
        field<QComboBox>("comboBox")->setCurrentText("B");
        editor_.answer(true);
        QCOMPARE(EditorFixture::types(), QStringList{"param"});
        QVERIFY(!line(0)->hasCmobj("weldspeed"));
        editor_.click("btnEdit");
        field<QComboBox>("comboBox")->setCurrentText("A");
        editor_.answer(true);
        QCOMPARE(value(0, "laserPower"), QString("50"));
        QVERIFY(!line(0)->hasCmobj("weldspeed"));
    }

    /// Users check their files with it.
    void whatTheButtonsMake_fitsTheSchema() {
        editor_.find("btnParam")->show();
        kordservice()
            ->dataNode("sys.posture")
            ->loadJson(this, QJsonObject{{"trans", QJsonArray{0.5, 0.25, 0.125}},
                                         {"rot", QJsonArray{0, 0, 0.1}},
                                         {"near", QJsonArray{0, 0.1, 0.2, 0.3, 0.4, 0.5}}});
        editor_.bench.setParam("power", 49.5, 1);
        editor_.bench.time.settle();
        for (const char* button : {"btnMoveJ", "btnMoveL", "btnMoveCC", "btnMoveC", "btnOpenLaser",
                                   "btnClose", "btnParam", "btnWaitDI", "btnSetDO", "btnDelay"}) {
            editor_.click(button);
            if (EditorFixture::dialog()) {
                if (auto* const set = field<QComboBox>("comboBox")) {
                    set->setCurrentText("B");
                }
                if (auto* const line = field<QLineEdit>("lineEdit"); line && line->isVisible()) {
                    type("7");
                }
                editor_.answer(true);
            }
        }
        QCOMPARE(EditorFixture::types().size(), 10);
        QVERIFY(lumo::saveProject("made.json"));
        QProcess check;
        check.setProcessChannelMode(QProcess::MergedChannels);
        check.start("/usr/bin/python3", {SCHEMA_CHECK, SCHEMAS, "made.json"});
        QVERIFY(check.waitForFinished());
        QVERIFY2(check.exitStatus() == QProcess::NormalExit && check.exitCode() == 0, check.readAll());
    }

    void emptyTemplates_areFilledByTheDialog() {
        ModuleObject* const templateRecord = m("lumo.default.program.open");
        const QJsonValue kept = templateRecord->exportToJson();
        templateRecord->clear(this);  // as the Russian defaults have it
        editor_.click("btnOpenLaser");
        type("7");
        editor_.answer(true);
        templateRecord->loadJson(this, kept);
        QCOMPARE(value(0, "weldspeed"), QString("7"));
        QCOMPARE(value(0, "laserPower"), QString("50"));
    }

    void cancelled_data() {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<QByteArray>("how");
        for (const char* button : {"btnSetDO", "btnWaitDI", "btnDelay", "btnOpenLaser"}) {
            for (const char* how : {"button", "escape", "close"}) {
                QTest::addRow("%s, %s", button, how) << QByteArray(button) << QByteArray(how);
            }
        }
    }

    void cancelled() {
        QFETCH(QByteArray, button);
        QFETCH(QByteArray, how);
        editor_.click(button.constData());
        const QPointer<QDialog> dialog = EditorFixture::dialog();
        QVERIFY(dialog);
        if (how == "escape") {
            QTest::keyClick(dialog, Qt::Key_Escape);
        } else if (how == "close") {
            dialog->close();
        } else {
            editor_.answer(false);
        }
        editor_.bench.time.advance(0);
        QVERIFY(!dialog);
        QCOMPARE(EditorFixture::program()->size(), 0);
        QVERIFY(!m("lumo.dialog.program")->value().isValid());
    }

    void answersAreLogged() {
        QSignalSpy log(mendo::LogHub::instance(), &mendo::LogHub::line);
        editor_.click("btnDelay");
        editor_.answer(false);
        QVERIFY(log.contains({"W", "ProgramWidget::ProgramWidget slot isok =  false"}));
    }

    void oneDialogAtATime() {
        editor_.click("btnDelay");
        QDialog* const first = EditorFixture::dialog();
        editor_.find<QPushButton>("btnSetDO")->click();
        editor_.find<QPushButton>("speedBtn")->click();
        QCOMPARE(m("lumo.dialog.program")->value().value<QWidget*>(), first);
        type("5");
        editor_.answer(true);
        QCOMPARE(EditorFixture::types(), QStringList{"delay"});
    }
};

LUMO_TEST_MAIN(TestCreation)
#include "test_creation.moc"
