#include "editorfixture.h"

/// Changing a program with mouse, keyboard and pendant, and which buttons can be pressed when.
class TestEditing : public EditorTest {
    Q_OBJECT

    void loadThree() {
        load(
            "[{'type':'moveJ','note':'a','execute':true},{'type':'close','note':'','execute':true},"
            "{'type':'delay','delaytime':5,'note':'c','execute':true}]");
    }

    /// The letter in capitals when all these buttons are enabled, small when none is, "?" for a mixture.
    QString group(const QString& letter, const QString& names) const {
        const QStringList buttons = names.split(' ');
        const int enabled = std::count_if(buttons.begin(), buttons.end(), [this](const QString& name) {
            return find(name.toLatin1())->isEnabled();
        });
        return enabled == buttons.size() ? letter.toUpper() : enabled == 0 ? letter : "?";
    }

    /// Statement group, editing group, multi-selection, batch, run tools, pause.
    QString enabled() const {
        return group("s",
                     "btnMoveJ btnMoveL btnMoveCC btnMoveC btnOpenLaser btnClose btnParam btnWaitDI "
                     "btnSetDO btnDelay btnSteptojump") +
               group("e", "btnEdit btnDown btnUp btnCopy btnPaste btnDel anotationBtn") +
               group("m", "multiBtn") + group("b", "speedBtn turningBtn") +
               group("r", "btnStart btnRunOnce btnReset") + group("p", "btnPause");
    }

    void happens(const QString& event) {
        if (event == "project") {
            isEnable_moveorder = true;
            page->refreshMoveOrderEnable(true);
        } else if (event == "multi") {
            act("multiBtn");
        } else if (event == "busy" || event == "idle" || event == "asleep") {
            m("lumo.execute.state")->setValue(this, event);
        } else {
            bench.robot.setPower(event.toLatin1());
        }
    }

private slots:
    void init() { reset(); }

    void everyEdit_changesTheSelectedLine() {
        const std::tuple<const char*, QString, int> cases[] = {
            {"0 btnCopy -1 btnEdit btnDel btnPaste btnUp btnDown anotationBtn", "moveJ close delay", -1},
            {"1 btnDel", "moveJ delay", 1},
            {"0 btnPaste", "moveJ close delay", 0},  // nothing was copied yet
            {"0 btnCopy 1 btnPaste btnPaste", "moveJ close moveJ moveJ delay", 1},
            {"2 btnUp", "moveJ delay close", 1},
            {"0 btnDown", "close moveJ delay", 1},
            {"0 btnUp", "moveJ close delay", 0},
            {"2 btnDown", "moveJ close delay", 2},
            {"1 btnEdit", "moveJ close delay", 1},  // has nothing to edit
            {"0 btnMoveC btnClose 0 btnMoveL", "moveJ moveL moveC close close delay", 1},
            {"-1 btnMoveCC", "moveCC moveJ close delay", 0},
        };
        for (const auto& [steps, types, row] : cases) {
            reset();
            loadThree();
            act(steps);
            QVERIFY2(values("type") == types, steps);
            QVERIFY2(selected() == row, steps);
            QVERIFY2(values("execute").count("true") == program()->size(), steps);
            QVERIFY2(tableTellsTheTruth() && !shown(), steps);
        }
    }

    void whatIsPasted_isTheLineAsItWasCopied() {
        loadThree();
        act("0 btnCopy");
        line(0)->set(this, "note", "changed");
        act("1 btnPaste btnPaste");
        QCOMPARE(values("note"), "changed  a a c");
        QVERIFY(line(2)->name() != line(3)->name());
    }

    void runFlag_isInvertedWhereTheStatementHasOne() {
        load("[{'type':'moveJ','execute':true},{'type':'close','execute':false},{'type':'delay'}]");
        act("0 anotationBtn 1 anotationBtn 2 anotationBtn");
        QCOMPARE(values("execute"), "false true ");
        QVERIFY(tableTellsTheTruth());
    }

    void batch_changesTheSelectedMovesOnceAgreed() {
        for (const QString field : {"speed", "zone"}) {
            reset();
            load(
                "[{'type':'moveL','speed':3,'zone':3},{'type':'delay','delaytime':1},"
                "{'type':'moveJ','speed':3,'zone':3},{'type':'moveJ','speed':3,'zone':3}]");
            act("multiBtn speedBtn turningBtn");
            QVERIFY(!shown());  // without rows
            for (const bool ok : {false, true}) {
                act(field == "speed" ? "-1 0 1 2 speedBtn" : "-1 0 1 2 turningBtn");
                type("4");
                answer(ok);
                QCOMPARE(values(field), ok ? "4  4 3" : "3  3 3");
            }
            QVERIFY(tableTellsTheTruth());
            act("multiBtn");
            QCOMPARE(selected(), -1);
        }
    }

    void jump_selectsTheLineThatWasTyped() {
        const QString tooFar = "跳转行数大于当前程序行数!";
        const std::tuple<const char*, int, QString> cases[] = {
            {"12", 11, ""},    {"3", 2, ""}, {"14", 13, ""},
            {"15", 0, tooFar}, {"", 0, ""},  {"99999999999999", 0, tooFar},
            {"a01b2", 11, ""}};  // letters and a leading zero cannot be typed
        load("[" + QByteArray("{'type':'delay'},").repeated(13) + "{'type':'delay'}]");
        auto* const field = find<QLineEdit>("lineEdit_steptojump");
        for (const auto& [typed, row, box] : cases) {
            field->clear();
            QTest::keyClicks(field, typed);
            act("0 btnSteptojump");
            QVERIFY2(selected() == row && boxes().join("") == box, typed);
            closeBoxes();
        }
        m("lumo.execute.state")->setValue(this, "busy");
        find("btnSteptojump")->setEnabled(true);
        act("0 btnSteptojump");
        QCOMPARE(boxes(), QStringList{"当前不是空闲状态"});
        QCOMPARE(selected(), 0);
    }

    void movesAreEditedOnTheirPage_oneAtATime() {
        QSignalSpy asked(page.get(), &ProgramWidget::pointBtnClicked);
        loadThree();
        doubleClick(0);
        m("lumo.dialog.statement")->setValue(this, QVariant::fromValue<QWidget*>(page.get()));
        act("btnEdit");
        QCOMPARE(asked, QList<QVariantList>({{0, QVariant::fromValue(line(0)), 6}}));
    }

    void pendant_selectsInsertsDeletesAndEdits() {
        loadThree();
        QString rows;
        for (const char* name : {"next", "next", "next", "next", "last", "last", "last"}) {
            key(name);
            rows += QString::number(selected());
        }
        QCOMPARE(rows, "0122100");
        for (int count = 0; count < 5; ++count) {
            act("-1");
            key("enter");
            act("-1");
            key("delete");  // with nothing selected it only goes on to the next move
        }
        QCOMPARE(values("type"), "moveJ moveC moveCC moveL moveJ moveJ close delay");
        act("6");
        key("delete");
        QCOMPARE(values("type"), "moveJ moveC moveCC moveL moveJ moveJ delay");
        key("center");
        QVERIFY(shown());
    }

    void pendantAndDoubleClicks_areIgnoredElsewhere() {
        loadThree();
        act("2");
        const auto pressAll = [this] {
            for (const char* name : {"next", "enter", "delete", "center"}) {
                key(name);
            }
            return values("type") == "moveJ close delay" && selected() == 2 && !shown();
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
        reset();
        loadThree();
        bench.robot.setPower("on");  // editing is disabled
        doubleClick(2);
        QVERIFY(pressAll());
    }

    void everyEvent_enablesWhatCanBeDoneThen() {
        // Power and whether a project is open at first, then what is enabled, each event with what is then.
        const std::tuple<const char*, bool, QString> cases[] = {
            {"off", false, "sEMbrp project SEMbRP"},
            {"on", false, "sembrp project sembRP"},
            {"off", true, "SEMbRP busy sembRP idle SEMbRp"},
            {"on", true, "sembRP busy sembRP idle sembRP"},
            {"off", false, "sEMbrp busy sEMbrP multi sEMBrP"},  // a run without a project can be stopped
            {"off", false, "sEMbrp busy sEMbrP idle sEMbrp"},
            {"off", true, "SEMbRP asleep SEMbRP on sembRP lost sembRP off SEMbRP"},
            {"on", false, "sembrp off sEMbrp multi sEMBrp"},
            {"off", true, "SEMbRP multi seMBRp multi SEMbRP multi seMBRp"},
            {"off", true, "SEMbRP multi seMBRp on sembRp off SEMBRp"},
        };
        for (const auto& [power, projectOpen, course] : cases) {
            reset(projectOpen);
            bench.robot.setPower(power);
            makePage();
            QStringList seen{enabled()};
            const QStringList steps = course.split(' ');
            for (int i = 1; i < steps.size(); i += 2) {
                happens(steps[i]);
                seen << steps[i] << enabled();
            }
            QCOMPARE(seen.join(' '), course);
        }
    }
};

LUMO_TEST(TestEditing)
#include "test_editing.moc"
