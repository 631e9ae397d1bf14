#include "editorfixture.h"

#include "module/globals.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QLineEdit>
#include <QTimer>

/// What happens to the program while a dialog is open: the answer never lands in the wrong line.
class TestOpenDialogs : public QObject {
    Q_OBJECT

    EditorFixture editor_;

    static void type(const QString& text) {
        auto* const line = EditorFixture::dialog()->findChild<QLineEdit*>();
        line->clear();
        QTest::keyClicks(line, text);
    }
    static QStringList delays() {
        QStringList times;
        for (const ModuleObject* statement : EditorFixture::program()->cmobjs()) {
            times << statement->c("delaytime")->getString();
        }
        return times;
    }
    static void insertDelay(int row, int ms) {
        auto* const statement = new ModuleObject("new");
        statement->loadJson(nullptr, QJsonObject{{"type", "delay"}, {"delaytime", ms}, {"execute", true}});
        EditorFixture::program()->insert(nullptr, statement, true, row);
    }

private slots:
    void init() {
        editor_.reset();
        editor_.load(
            R"([{"type":"delay","delaytime":1},{"type":"delay","delaytime":2},{"type":"delay","delaytime":3}])");
    }
    void cleanup() {
        QVERIFY(!EditorFixture::dialog());
        QVERIFY(!m("lumo.dialog.program")->value().isValid());
        QVERIFY(!m("lumo.dialog.statement")->value().isValid());
        if (editor_.page) {
            QVERIFY(editor_.tableTellsTheTruth());
        }
    }

    void editedStatementIsDeleted() {
        editor_.doubleClick(1);
        EditorFixture::program()->remove(this, mIndex(1));
        type("99");
        editor_.answer(true);
        QCOMPARE(delays(), QStringList({"1", "3"}));
    }

    void editedStatementMoves() {
        editor_.doubleClick(1);
        insertDelay(0, 0);
        EditorFixture::program()->reorder(this, 2, 3);
        type("99");
        editor_.answer(true);
        QCOMPARE(delays(), QStringList({"0", "1", "3", "99"}));
    }

    void programOfTheEditedStatementIsReplaced() {
        editor_.doubleClick(1);
        EditorFixture::program()->loadJson(this,
                                           QJsonArray{QJsonObject{{"type", "delay"}, {"delaytime", 7}},
                                                      QJsonObject{{"type", "delay"}, {"delaytime", 8}}});
        type("99");
        editor_.answer(true);
        QCOMPARE(delays(), QStringList({"7", "8"}));
    }

    void newStatement_goesBelowTheRowThatIsSelectedThen() {
        editor_.select(2);
        editor_.click("btnDelay");
        EditorFixture::program()->remove(this, mIndex(0));
        EditorFixture::program()->remove(this, mIndex(0));
        type("99");
        editor_.answer(true);
        QCOMPARE(delays(), QStringList({"3", "99"}));
        QCOMPARE(editor_.selected(), QVector<int>{1});
    }

    void newStatement_comesIntoTheProgramThatIsThere() {
        editor_.select(2);
        editor_.click("btnDelay");
        EditorFixture::program()->loadJson(this, QJsonArray());
        type("99");
        editor_.answer(true);
        QCOMPARE(delays(), QStringList{"99"});
    }

    void batchStatementsAreDeletedAndMove() {
        editor_.load(R"([{"type":"moveL","speed":1},{"type":"moveL","speed":2},{"type":"moveL","speed":3}])");
        editor_.click("multiBtn");
        editor_.select(0);
        editor_.select(1);
        editor_.click("speedBtn");
        EditorFixture::program()->remove(this, mIndex(0));
        EditorFixture::program()->reorder(this, 0, 1);
        type("99");
        editor_.answer(true);
        QCOMPARE(EditorFixture::program()->c(0)->c("speed")->getInt(), 3);
        QCOMPARE(EditorFixture::program()->c(1)->c("speed")->getInt(), 99);
    }

    void stationRunsBelow() {
        m("lumo")
            ->append(this, "signalbind_program")
            ->loadJson(this,
                       QJsonArray{QJsonObject{{"type", "delay"}, {"delaytime", 1000}, {"execute", true}}});
        editor_.bench.robot.setPower("on");
        editor_.find<QPushButton>("btnDelay")->setEnabled(true);
        editor_.select(2);
        editor_.click("btnDelay");
        QTimer::singleShot(300, this, [this] {
            QCOMPARE(editor_.bench.state(), QString("busy"));
            type("99");
            editor_.answer(true);
        });
        editor_.bench.run(0, 1);
        QCOMPARE(editor_.bench.robot.nowMs(), qint64(1000));  // the dialog held nobody up
        QCOMPARE(delays(), QStringList({"1", "2", "3", "99"}));
    }

    void pageGoesAway_data() {
        QTest::addColumn<QByteArray>("button");
        for (const char* button :
             {"btnSetDO", "btnWaitDI", "btnDelay", "btnOpenLaser", "btnEdit", "speedBtn", "turningBtn"}) {
            QTest::newRow(button) << QByteArray(button);
        }
    }

    void pageGoesAway() {
        QFETCH(QByteArray, button);
        editor_.select(1);
        editor_.find(button.constData())->setEnabled(true);
        editor_.click(button.constData());
        const QPointer<QDialog> dialog = EditorFixture::dialog();
        QVERIFY(dialog);
        editor_.page.reset();
        QVERIFY(!dialog);
        QCOMPARE(delays(), QStringList({"1", "2", "3"}));
    }

    void dialogGoesAwayByItself() {
        editor_.click("btnDelay");
        delete EditorFixture::dialog();
        QVERIFY(!m("lumo.dialog.program")->value().isValid());
        editor_.click("btnDelay");  // the next one opens
        editor_.answer(false);
        QCOMPARE(delays(), QStringList({"1", "2", "3"}));
    }
};

LUMO_TEST_MAIN(TestOpenDialogs)
#include "test_opendialogs.moc"
