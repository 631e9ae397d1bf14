#include "editorfixture.h"

#include "module/globals.h"

#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>

/// Changing a program with mouse, keyboard and pendant.
class TestEditing : public QObject {
    Q_OBJECT

    EditorFixture editor_;

    static constexpr const char* threeLines =
        R"([{"type":"moveJ","note":"a","execute":true},{"type":"close","note":"","execute":true},
            {"type":"delay","delaytime":5,"note":"c","execute":true}])";

    void typeIn(const char* lineEdit, const QString& text) const {
        auto* const line = editor_.find<QLineEdit>(lineEdit);
        line->clear();
        QTest::keyClicks(line, text);
    }
    static ModuleObject* line(int row) { return EditorFixture::program()->c(row); }

private slots:
    void init() { editor_.reset(); }
    void cleanup() {
        test::ExecutorBench::closeBoxes();
        if (QDialog* dialog = EditorFixture::dialog()) {
            dialog->reject();
        }
    }

    // --- Rows -------------------------------------------------------------------------------------

    void withoutASelection_nothingIsEditedDeletedOrPasted() {
        editor_.load(threeLines);
        editor_.select(0);
        editor_.click("btnCopy");
        editor_.select(-1);
        for (const char* button : {"btnEdit", "btnDel", "btnPaste", "btnUp", "btnDown", "anotationBtn"}) {
            editor_.click(button);
        }
        QCOMPARE(EditorFixture::types(), QStringList({"moveJ", "close", "delay"}));
        QVERIFY(!EditorFixture::dialog());
        QVERIFY(editor_.tableTellsTheTruth());
    }

    void selectedMeansSelected_notCurrent() {
        editor_.load(threeLines);
        editor_.select(2);
        editor_.table()->selectionModel()->clearSelection();
        QCOMPARE(editor_.table()->currentRow(), 2);
        editor_.click("btnDel");
        QCOMPARE(EditorFixture::program()->size(), 3);
    }

    void deleting() {
        editor_.load(threeLines);
        editor_.select(1);
        editor_.click("btnDel");
        QCOMPARE(EditorFixture::types(), QStringList({"moveJ", "delay"}));
        QVERIFY(editor_.tableTellsTheTruth());
    }

    void pasting() {
        editor_.load(threeLines);
        editor_.select(0);
        editor_.click("btnPaste");  // nothing was copied yet
        QCOMPARE(EditorFixture::program()->size(), 3);
        editor_.click("btnCopy");
        line(0)->set(this, "note", "changed after copying");
        editor_.select(1);
        editor_.click("btnPaste");
        editor_.click("btnPaste");
        QCOMPARE(EditorFixture::types(), QStringList({"moveJ", "close", "moveJ", "moveJ", "delay"}));
        QCOMPARE(line(2)->c("note")->getString(), QString("a"));
        QCOMPARE(editor_.selected(), QVector<int>{1});
        QVERIFY(line(2)->name() != line(3)->name());
        QVERIFY(editor_.tableTellsTheTruth());
    }

    void moving_data() {
        QTest::addColumn<int>("row");
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<QStringList>("types");
        QTest::addColumn<int>("selected");
        QTest::newRow("up") << 2 << QByteArray("btnUp") << QStringList{"moveJ", "delay", "close"} << 1;
        QTest::newRow("down") << 0 << QByteArray("btnDown") << QStringList{"close", "moveJ", "delay"} << 1;
        QTest::newRow("up from the top")
            << 0 << QByteArray("btnUp") << QStringList{"moveJ", "close", "delay"} << 0;
        QTest::newRow("down from the end")
            << 2 << QByteArray("btnDown") << QStringList{"moveJ", "close", "delay"} << 2;
    }

    void moving() {
        QFETCH(int, row);
        QFETCH(QByteArray, button);
        QFETCH(int, selected);
        editor_.load(threeLines);
        editor_.select(row);
        editor_.click(button.constData());
        QTEST(EditorFixture::types(), "types");
        QCOMPARE(editor_.selected(), QVector<int>{selected});
        QVERIFY(editor_.tableTellsTheTruth());
    }

    void runFlag_isInvertedForEverySelectedRow() {
        editor_.load(R"([{"type":"moveJ","execute":true},{"type":"close","execute":false},{"type":"delay"},
                         {"type":"delay","execute":true}])");
        for (int row = 0; row < 3; ++row) {
            editor_.table()->setSelectionMode(QAbstractItemView::MultiSelection);
            editor_.select(row);
        }
        editor_.click("anotationBtn");
        QCOMPARE(line(0)->c("execute")->getBool(), false);
        QCOMPARE(line(1)->c("execute")->getBool(), true);
        QVERIFY(!line(2)->hasCmobj("execute"));  // a statement without the flag is left alone
        QCOMPARE(line(3)->c("execute")->getBool(), true);
        QVERIFY(editor_.tableTellsTheTruth());
        editor_.click("anotationBtn");
        QCOMPARE(line(0)->c("execute")->getBool(), true);
        QVERIFY(editor_.tableTellsTheTruth());
    }

    // --- Several rows -----------------------------------------------------------------------------

    void batch_data() {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<QByteArray>("field");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QVector<int>>("expected");
        QTest::newRow("speed") << QByteArray("speedBtn") << QByteArray("speed") << "500"
                               << QVector<int>{500, -1, 500, 20};
        QTest::newRow("zone") << QByteArray("turningBtn") << QByteArray("zone") << "4"
                              << QVector<int>{4, -1, 4, 2};
    }

    void batch() {
        QFETCH(QByteArray, button);
        QFETCH(QByteArray, field);
        QFETCH(QString, typed);
        QFETCH(QVector<int>, expected);
        editor_.load(R"([{"type":"moveL","speed":20,"zone":2},{"type":"delay","delaytime":1},
                         {"type":"moveJ","speed":20,"zone":2},{"type":"moveJ","speed":20,"zone":2}])");
        editor_.click("multiBtn");
        QCOMPARE(editor_.find<QPushButton>("multiBtn")->text(), QString("单选"));
        for (const bool ok : {false, true}) {
            editor_.table()->clearSelection();
            for (int row = 0; row < 3; ++row) {
                editor_.select(row);
            }
            editor_.click(button.constData());
            QCOMPARE(m("lumo.dialog.program")->value().value<QWidget*>(), EditorFixture::dialog());
            QTest::keyClicks(EditorFixture::dialog()->findChild<QLineEdit*>(), typed);
            editor_.answer(ok);
            QVERIFY(!m("lumo.dialog.program")->value().isValid());
            QVERIFY(!EditorFixture::dialog());
            QCOMPARE(line(3)->c(QString(field))->getInt(-1), expected.at(3));
        }
        for (int row = 0; row < expected.size(); ++row) {
            QCOMPARE(line(row)->c(QString(field))->getInt(-1), expected.at(row));
        }
        QVERIFY(editor_.tableTellsTheTruth());
        editor_.click("multiBtn");
        QCOMPARE(editor_.selected(), QVector<int>());
        QCOMPARE(editor_.find<QPushButton>("multiBtn")->text(), QString("多选"));
    }

    void batchOfNoRows_opensNothing() {
        editor_.load(threeLines);
        editor_.click("multiBtn");
        editor_.click("speedBtn");
        editor_.click("turningBtn");
        QVERIFY(!EditorFixture::dialog());
    }

    // --- Line jump --------------------------------------------------------------------------------

    void jump_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QVector<int>>("selected");
        QTest::addColumn<QStringList>("boxes");
        const QStringList tooFar{"跳转行数大于当前程序行数!"};
        QTest::newRow("two digits") << "12" << QVector<int>{11} << QStringList();
        QTest::newRow("one digit") << "3" << QVector<int>{2} << QStringList();
        QTest::newRow("last line") << "14" << QVector<int>{13} << QStringList();
        QTest::newRow("behind the last") << "15" << QVector<int>{0} << tooFar;
        QTest::newRow("far behind, as many digits as can be typed")
            << "99999999999999" << QVector<int>{0} << tooFar;
        QTest::newRow("nothing") << "" << QVector<int>{0} << QStringList();
        QTest::newRow("letters and a leading zero cannot be typed")
            << "a01b2" << QVector<int>{11} << QStringList();
    }

    void jump() {
        QFETCH(QString, typed);
        editor_.load("[" + QByteArray(R"({"type":"delay"},)").repeated(13) + R"({"type":"delay"}])");
        editor_.select(0);
        typeIn("lineEdit_steptojump", typed);
        editor_.click("btnSteptojump");
        QTEST(editor_.selected(), "selected");
        QTEST(test::ExecutorBench::boxes(), "boxes");
    }

    void jumpWhileRunning_isRefused() {
        editor_.load(threeLines);
        editor_.bench.robot.setPower("on");
        m("lumo.execute.state")->setValue(this, "busy");
        editor_.find("btnSteptojump")->setEnabled(true);
        typeIn("lineEdit_steptojump", "2");
        editor_.click("btnSteptojump");
        QCOMPARE(test::ExecutorBench::boxes(), QStringList{"当前不是空闲状态"});
        QCOMPARE(editor_.selected(), QVector<int>());
    }

    // --- Opening the editors of statements ----------------------------------------------------------

    void movesAreEditedOnTheirPage() {
        QSignalSpy asked(editor_.page.get(), &ProgramWidget::pointBtnClicked);
        editor_.load(threeLines);
        editor_.doubleClick(0);
        QCOMPARE(asked.count(), 1);
        QCOMPARE(asked.at(0).at(0).toInt(), 0);
        QCOMPARE(asked.at(0).at(1).value<ModuleObject*>(), line(0));
        QCOMPARE(asked.at(0).at(2).toInt(), 6);
        m("lumo.dialog.statement")->setValue(this, QVariant::fromValue<QWidget*>(editor_.page.get()));
        editor_.click("btnEdit");
        QCOMPARE(asked.count(), 1);  // one is open already
    }

    void stopsOfWelding_haveNothingToEdit() {
        editor_.load(threeLines);
        editor_.doubleClick(1);
        QVERIFY(!EditorFixture::dialog());
        QVERIFY(!m("lumo.dialog.statement")->value().isValid());
    }

    // --- Pendant ----------------------------------------------------------------------------------

    void pendant_movesTheSelection() {
        editor_.load(threeLines);
        QVector<int> rows;
        for (const char* key : {"next", "next", "next", "next", "last", "last", "last"}) {
            editor_.key(key);
            rows << editor_.selected();
        }
        QCOMPARE(rows, QVector<int>({0, 1, 2, 2, 1, 0, 0}));
    }

    void pendant_insertsTheMoveThatIsItsTurn() {
        for (int count = 0; count < 5; ++count) {
            editor_.select(-1);
            editor_.key("enter");
            editor_.select(-1);
            editor_.key("delete");  // with nothing selected it only goes on to the next move
        }
        QCOMPARE(EditorFixture::types(), QStringList({"moveJ", "moveC", "moveCC", "moveL", "moveJ"}));
        editor_.select(0);
        editor_.key("delete");
        QCOMPARE(EditorFixture::program()->size(), 4);
    }

    void pendant_editsTheSelectedLine() {
        editor_.load(threeLines);
        editor_.select(2);
        editor_.key("center");
        QVERIFY(EditorFixture::dialog());
    }

    void pendant_isIgnored_data() {
        QTest::addColumn<QByteArray>("why");
        QTest::newRow("while a point is taught") << QByteArray("point");
        QTest::newRow("below another window") << QByteArray("window");
        QTest::newRow("while another page is shown") << QByteArray("page");
    }

    void pendant_isIgnored() {
        QFETCH(QByteArray, why);
        editor_.load(threeLines);
        editor_.select(0);
        QWidget other;
        if (why == "point") {
            isnew_pWgt = true;
        } else if (why == "window") {
            other.show();
            QApplication::setActiveWindow(&other);
        } else {
            editor_.page->setParent(&other);
            editor_.page->hide();
            other.show();
            QApplication::setActiveWindow(&other);
            QVERIFY(editor_.page->isActiveWindow());
        }
        for (const char* key : {"next", "enter", "delete", "center"}) {
            editor_.key(key);
        }
        QCOMPARE(EditorFixture::types(), QStringList({"moveJ", "close", "delay"}));
        QCOMPARE(editor_.selected(), QVector<int>{0});
        editor_.page->setParent(nullptr);
    }

    void pendant_setsTheHandGuiding_data() {
        QTest::addColumn<QByteArray>("key");
        QTest::addColumn<int>("space");
        QTest::addColumn<int>("type");
        QTest::newRow("next") << QByteArray("next") << 0 << 2;
        QTest::newRow("last") << QByteArray("last") << 1 << 2;
        QTest::newRow("enter") << QByteArray("enter") << 1 << 1;
        QTest::newRow("center") << QByteArray("center") << 1 << 0;
    }

    void pendant_setsTheHandGuiding() {
        QFETCH(QByteArray, key);
        editor_.page->hide();  // not limited to the page on the screen
        m(QStringLiteral("lumo.keypad.%1.pressing").arg(QString(key)))->setValue(this, false);
        const QString drag = m("rova.handle")->isNull() ? "rova.sidemove.drag." : "rova.handle.drag.";
        QTEST(m(drag + "space")->getInt(-1), "space");
        QTEST(m(drag + "type")->getInt(-1), "type");
    }
};

LUMO_TEST_MAIN(TestEditing)
#include "test_editing.moc"
