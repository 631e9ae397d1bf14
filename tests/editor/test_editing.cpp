#include "editorfixture.h"

/// Changing a program with mouse, keyboard and pendant.
class TestEditing : public EditorTest {
    Q_OBJECT

    void loadThree() {
        load(
            "[{'type':'moveJ','note':'a','execute':true},{'type':'close','note':'','execute':true},"
            "{'type':'delay','delaytime':5,'note':'c','execute':true}]");
    }

private slots:
    void init() { reset(); }

    void everyEdit_changesTheSelectedLine() {
        const struct {
            const char *steps, *types;
            QVector<int> selected;
        } cases[] = {
            {"0 btnCopy -1 btnEdit btnDel btnPaste btnUp btnDown anotationBtn", "moveJ close delay", {}},
            {"1 btnDel", "moveJ delay", {1}},
            {"0 btnPaste", "moveJ close delay", {0}},  // nothing was copied yet
            {"0 btnCopy 1 btnPaste btnPaste", "moveJ close moveJ moveJ delay", {1}},
            {"2 btnUp", "moveJ delay close", {1}},
            {"0 btnDown", "close moveJ delay", {1}},
            {"0 btnUp", "moveJ close delay", {0}},
            {"2 btnDown", "moveJ close delay", {2}},
            {"1 btnEdit", "moveJ close delay", {1}},  // has nothing to edit
            {"0 btnMoveC btnClose 0 btnMoveL", "moveJ moveL moveC close close delay", {1}},
            {"-1 btnMoveCC", "moveCC moveJ close delay", {0}},
        };
        for (const auto& [steps, types, rows] : cases) {
            reset();
            loadThree();
            act(steps);
            QVERIFY2(values("type").join(' ') == types, steps);
            QVERIFY2(selected() == rows, steps);
            QVERIFY2(values("execute").count("true") == program()->size(), steps);
            QVERIFY2(tableTellsTheTruth(), steps);
            QVERIFY2(!shown(), steps);
        }
    }

    void whatIsPasted_isTheLineAsItWasCopied() {
        loadThree();
        act("0 btnCopy");
        line(0)->set(this, "note", "changed after copying");
        act("1 btnPaste btnPaste");
        QCOMPARE(values("note"), QStringList({"changed after copying", "", "a", "a", "c"}));
        QVERIFY(line(2)->name() != line(3)->name());
    }

    void runFlag_isInvertedWhereTheStatementHasOne() {
        load("[{'type':'moveJ','execute':true},{'type':'close','execute':false},{'type':'delay'}]");
        act("0 anotationBtn 1 anotationBtn 2 anotationBtn");
        QCOMPARE(values("execute"), QStringList({"false", "true", ""}));
        QVERIFY(tableTellsTheTruth());
    }

    void batch_changesTheSelectedMovesOnceAgreed() {
        for (const QString field : {"speed", "zone"}) {
            reset();
            load(
                "[{'type':'moveL','speed':20,'zone':2},{'type':'delay','delaytime':1},"
                "{'type':'moveJ','speed':20,'zone':2},{'type':'moveJ','speed':20,'zone':2}]");
            const QStringList before = values(field);
            act("multiBtn speedBtn turningBtn");
            QVERIFY(!shown());  // without rows
            QCOMPARE(find<QPushButton>("multiBtn")->text(), "单选");
            for (const bool ok : {false, true}) {
                act(field == "speed" ? "-1 0 1 2 speedBtn" : "-1 0 1 2 turningBtn");
                QCOMPARE(m("lumo.dialog.program")->value().value<QWidget*>(), shown());
                type("4");
                answer(ok);
                QVERIFY(!m("lumo.dialog.program")->value().isValid());
                QCOMPARE(values(field), ok ? QStringList({"4", "", "4", before[3]}) : before);
            }
            QVERIFY(tableTellsTheTruth());
            act("multiBtn");
            QCOMPARE(selected(), QVector<int>());
            QCOMPARE(find<QPushButton>("multiBtn")->text(), "多选");
        }
    }

    void jump_selectsTheLineThatWasTyped() {
        const QStringList tooFar{"跳转行数大于当前程序行数!"};
        const struct {
            const char* typed;
            int selected;
            QStringList boxes;
        } cases[] = {{"12", 11, {}},    {"3", 2, {}}, {"14", 13, {}},
                     {"15", 0, tooFar}, {"", 0, {}},  {"99999999999999", 0, tooFar},
                     {"a01b2", 11, {}}};  // letters and a leading zero cannot be typed
        load("[" + QByteArray("{'type':'delay'},").repeated(13) + "{'type':'delay'}]");
        auto* const field = find<QLineEdit>("lineEdit_steptojump");
        for (const auto& [typed, row, expected] : cases) {
            field->clear();
            QTest::keyClicks(field, typed);
            act("0 btnSteptojump");
            QVERIFY2(selected() == QVector<int>{row}, typed);
            QVERIFY2(boxes() == expected, typed);
            closeBoxes();
        }
        m("lumo.execute.state")->setValue(this, "busy");
        find("btnSteptojump")->setEnabled(true);
        act("0 btnSteptojump");
        QCOMPARE(boxes(), QStringList{"当前不是空闲状态"});
        QCOMPARE(selected(), QVector<int>{0});
    }

    void movesAreEditedOnTheirPage_oneAtATime() {
        QSignalSpy asked(page.get(), &ProgramWidget::pointBtnClicked);
        loadThree();
        doubleClickCell(table(), 0, ProgramTable::LineColumn);
        m("lumo.dialog.statement")->setValue(this, QVariant::fromValue<QWidget*>(page.get()));
        act("btnEdit");
        QCOMPARE(asked, QList<QVariantList>({{0, QVariant::fromValue(line(0)), 6}}));
    }

    void pendant_selectsInsertsDeletesAndEdits() {
        loadThree();
        QVector<int> rows;
        for (const char* name : {"next", "next", "next", "next", "last", "last", "last"}) {
            key(name);
            rows << selected();
        }
        QCOMPARE(rows, QVector<int>({0, 1, 2, 2, 1, 0, 0}));
        for (int count = 0; count < 5; ++count) {
            act("-1");
            key("enter");
            act("-1");
            key("delete");  // with nothing selected it only goes on to the next move
        }
        QCOMPARE(values("type").join(' '), "moveJ moveC moveCC moveL moveJ moveJ close delay");
        act("6");
        key("delete");
        QCOMPARE(values("type").join(' '), "moveJ moveC moveCC moveL moveJ moveJ delay");
        key("center");
        QVERIFY(shown());
    }

    void pendant_isIgnoredElsewhere() {
        loadThree();
        act("2");
        const auto pressAll = [this] {
            for (const char* name : {"next", "enter", "delete", "center"}) {
                key(name);
            }
            return values("type").join(' ') == "moveJ close delay" && selected() == QVector<int>{2} &&
                   !shown();
        };
        isnew_pWgt = true;
        QVERIFY(pressAll());  // while a point is taught
        isnew_pWgt = false;
        QWidget other;
        other.show();
        QApplication::setActiveWindow(&other);
        QVERIFY(pressAll());  // below another window
        page->setParent(&other);
        page->hide();
        QVERIFY(page->isActiveWindow());
        QVERIFY(pressAll());  // while another page is shown
        page->setParent(nullptr);
    }
};

LUMO_TEST(TestEditing)
#include "test_editing.moc"
