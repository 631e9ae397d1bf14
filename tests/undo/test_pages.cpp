#include "panel/pagebench.h"

#include "support/suite.h"
#include "undo/history.h"
#include "widgets/switchbutton.h"

#include <QToolButton>

using test::json;

/// Undo and redo on the pages, as an operator has them.
class TestPages : public QObject {
    Q_OBJECT

    test::PageBench bench_;

    QTableWidget* table() const { return bench_.programTable(); }
    int selected() const {
        const QModelIndexList rows = table()->selectionModel()->selectedRows();
        return rows.isEmpty() ? -1 : rows.first().row();
    }
    /// Presses buttons of the page in view with the mouse; a number selects a row of its table.
    void act(const QString& steps) {
        for (const QString& step : steps.split(' ')) {
            bool isRow = false;
            const int row = step.toInt(&isRow);
            if (isRow) {
                test::clickCell(bench_.find<QTableWidget>(), row, 1);
            } else if (step == "ok") {
                test::clickOk(test::shown());
            } else if (step == "yes") {
                test::click(test::shown<QMessageBox>()->button(QMessageBox::Yes));
            } else if (step.startsWith("type=")) {
                auto* const line = test::shown()->findChild<QLineEdit*>();
                line->selectAll();
                QTest::keyClicks(line, step.mid(5));
            } else {
                bench_.click(step.toLatin1());
            }
            bench_.time.settle();
        }
    }
    void key(Qt::Key key, Qt::KeyboardModifiers more = Qt::NoModifier) {
        QApplication::setActiveWindow(bench_.page->window());  // a dialog may have been it
        QTest::keyClick(bench_.page.get(), key, Qt::ControlModifier | more);
    }
    bool isEnabled(const char* name) const {
        return test::child<QToolButton>(bench_.page.get(), name)->isEnabled();
    }
    void open(const QByteArray& program) {
        bench_.renew();
        isEnable_moveorder = true;
        bench_.makePage();
        QApplication::setActiveWindow(bench_.page->window());
        bench_.loadSound(program);
        bench_.time.advance(300);
    }
    static QString program() { return test::text(m("lumo.program")); }

private slots:
    void everyAction_isOneStep() {
        const std::tuple<const char*, int, int> cases[] = {
            // what is done; the line that is selected after undo, after redo
            {"1 btnDel", 1, 1},
            {"0 btnMoveJ", 1, 1},
            {"0 btnCopy 2 btnPaste", 2, 3},
            {"2 btnUp", 2, 1},
            {"1 anotationBtn", 1, 1},
            {"multiBtn 0 1 speedBtn type=77 ok", 0, 0},
            {"2 btnEdit type=9 ok", 2, 2},
            {"0 btnEdit lineEditSpeed okayBtn", 0, 0},
            {"1 btnEdit updateBtn2 cancelBtn", 1, 1},
        };
        for (const auto& [steps, afterUndo, afterRedo] : cases) {
            open("moveL to=1,0,0; moveC to=1,0,0 to1=0,1,0 off; delay 300");
            const QString before = program();
            bench_.robot.standAt({3.0, 4.0, 5.0});
            for (const QString& step : QString(steps).split(' ')) {
                if (step == "lineEditSpeed") {
                    auto* const line = bench_.find<QLineEdit>("lineEditSpeed");
                    line->selectAll();
                    QTest::keyClicks(line, "61");
                } else {
                    act(step);
                }
            }
            const QString after = program();
            QVERIFY2(after != before, steps);
            table()->clearSelection();
            test::click(bench_.find<QToolButton>("btnUndo"));
            QVERIFY2(program() == before && selected() == afterUndo && !isEnabled("btnUndo"), steps);
            key(Qt::Key_Y);
            QVERIFY2(program() == after && selected() == afterRedo && !isEnabled("btnRedo"), steps);
            key(Qt::Key_Z);
            key(Qt::Key_Z, Qt::ShiftModifier);
            QVERIFY2(program() == after, steps);
            QVERIFY2(test::columnOf(table(), 2).size() == m("lumo.program")->size(), steps);
        }
    }

    void aRunADriveAndAForm_lockIt() {
        open("delay 300; delay 300");
        act("0 btnDel");
        QVERIFY(isEnabled("btnUndo"));
        bench_.robot.setPower("on");
        QVERIFY(!isEnabled("btnUndo"));
        bench_.at(100, [this] {
            key(Qt::Key_Z);
            QCOMPARE(test::boxes().size(), 1);
            test::closeBoxes();
        });
        bench_.run();
        key(Qt::Key_Z);
        QCOMPARE(m("lumo.program")->size(), 1);
        bench_.robot.setPower("off");
        act("btnMoveL 1 btnEdit");
        QVERIFY(!isEnabled("btnUndo"));  // the fields of the point's page are not stored yet
        key(Qt::Key_Z);
        act("cancelBtn");
        QCOMPARE(m("lumo.program")->size(), 2);
        key(Qt::Key_Z);
        key(Qt::Key_Z);
        QCOMPARE(m("lumo.program")->size(), 2);
    }

    void fieldsKeepTheirOwnUndo_andANewProjectStartsAnew() {
        open("delay 300; delay 300");
        act("0 btnDel");
        auto* const line = bench_.find<QLineEdit>("lineEdit_steptojump");
        line->setFocus();
        QTest::keyClicks(line, "12");
        QTest::keyClick(line, Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(line->text() != "12" && m("lumo.program")->size() == 1);
        QVERIFY(isEnabled("btnUndo"));
        bench_.click("btnNew");
        QVERIFY(test::answerBox("不保存"));
        bench_.time.settle();
        bench_.answerName("fresh");
        QVERIFY(!isEnabled("btnUndo") && !isEnabled("btnRedo"));
    }

    void parameterSets_followWithTheLinesAndTheFile() {
        open("open 0; close");
        m("lumo.program.#0")->set(this, "laserPower", 50);
        act("btnParamCfg 0 btnEdit type=33 ok");
        const QByteArray changed = test::contentOf("lumo_param.json");
        QCOMPARE(m("lumo.program.#0.laserPower")->getInt(), 33);
        act("btnAdd type=B ok 0 btnDel yes");
        QCOMPARE(m("lumo.param")->size(), 1);
        act("btnProject btnUndo");  // shows the page only
        QVERIFY(bench_.find<QWidget>("btnAdd") && m("lumo.param")->size() == 1);
        act("btnUndo btnUndo");
        QCOMPARE(test::contentOf("lumo_param.json"), changed);
        act("btnUndo");
        QCOMPARE(m("lumo.param.#0.power")->getInt(), 50);
        QCOMPARE(m("lumo.program.#0.laserPower")->getInt(), 50);
        QVERIFY(!isEnabled("btnUndo"));
    }

    void aPort_isSwitchedOffBeforeItGoesBack() {
        open("delay");
        act("btnPort");
        auto* const ports = bench_.find<QTableWidget>();
        auto* const name = qobject_cast<QComboBox*>(ports->cellWidget(7, 3));
        const QString before = name->currentText();
        name->setCurrentIndex(name->findText("LUMO_DO.#12"));
        act("okayBtn");
        test::closeBoxes();
        QCOMPARE(m("lumo.port.#7.name")->getString(), "LUMO_DO.#12");
        kordservice()->dataNode("register.values")->set(this, "LUMO_DO.#12", 1);
        bench_.robot.mark();
        act("btnUndo");
        QCOMPARE(m("lumo.port.#7.name")->getString(), before);
        QCOMPARE(bench_.robot.log(), QStringList("0 LUMO_DO#12 0"));
        QCOMPARE(json(test::contentOf("lumo_port.json")).toArray()[7].toObject()["name"].toString(), before);
    }

    void stations_keepTheirRows() {
        open("delay");
        m("lumo.signalsConfig")->remove(this, "#5");
        act("btnBind");
        const auto names = [this] { return test::columnOf(bench_.find<QTableWidget>(), 1).join(' '); };
        for (const char* name : {"E", "F"}) {
            act("btnAdd");
            QTest::keyClicks(bench_.find<QLineEdit>("lineEdit_stationname"), name);
            act("okayBtn");
        }
        const QString both = names();
        act("4 btnDel");
        QVERIFY(names() != both && !names().contains("E"));
        act("btnUndo");
        QCOMPARE(names(), both);
        QCOMPARE(test::columnOf(bench_.find<QTableWidget>(), 0).join(' '), "1 2 3 4 5 6");
        act("btnUndo btnUndo");
        QCOMPARE(bench_.find<QTableWidget>()->rowCount(), 4);
        act("btnRedo btnRedo");
        QCOMPARE(names(), both);
    }
};

LUMO_TEST(TestPages)
#include "test_pages.moc"
