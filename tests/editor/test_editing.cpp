#include "editorfixture.h"

/// Changing a program with mouse, keyboard and pendant, and which buttons can be pressed when.
class TestEditing : public EditorTest {
    Q_OBJECT

    const QByteArray three_ =
        "[{'type':'moveJ','note':'a','execute':true},{'type':'close','note':'','execute':true},"
        "{'type':'delay','delaytime':5,'note':'c'}]";

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
        const std::tuple<const char*, QString, QString, int> cases[] = {
            {"0 btnCopy -1 btnEdit btnDel btnPaste btnUp btnDown anotationBtn", "a, , c", "true true ", -1},
            {"1 btnDel", "a, c", "true ", 1},
            {"0 btnPaste", "a, , c", "true true ", 0},  // nothing was copied yet
            {"0 btnCopy 1 btnPaste btnPaste", "a, , a, a, c", "true true true true ", 1},
            {"2 btnUp", "a, c, ", "true  true", 1},
            {"0 btnDown", ", a, c", "true true ", 1},
            {"0 btnUp", "a, , c", "true true ", 0},
            {"2 btnDown", "a, , c", "true true ", 2},
            {"1 btnEdit", "a, , c", "true true ", 1},  // has nothing to edit
            {"0 btnMoveC btnClose 0 btnMoveL", "a, , , , , c", "true true true true true ", 1},
            {"-1 btnMoveCC", ", a, , c", "true true true ", 0},
            {"0 anotationBtn 1 anotationBtn 0 anotationBtn 2 anotationBtn", "a, , c", "true false ", 2},
            {"multiBtn 0 1 multiBtn", "a, , c", "true true ", -1},
        };
        for (const auto& [steps, notes, flags, row] : cases) {
            reset();
            load(three_);
            act(steps);
            QVERIFY2(values("note").split(' ').join(", ") == notes, steps);
            QVERIFY2(values("execute") == flags, steps);
            QVERIFY2(selected() == row, steps);
            QVERIFY2(tableTellsTheTruth() && !shown(), steps);
        }
    }

    void jump_selectsTheLineThatWasTyped() {
        load("[" + QByteArray("{'type':'delay'},").repeated(13) + "{'type':'delay'}]");
        // Letters and a leading zero cannot be typed.
        const std::tuple<const char*, int, int> cases[] = {
            {"3", 2, 0}, {"14", 13, 0}, {"15", 0, 1}, {"a01b2", 11, 0}};
        for (const auto& [typed, row, warnings] : cases) {
            find<QLineEdit>("lineEdit_steptojump")->clear();
            QTest::keyClicks(find("lineEdit_steptojump"), typed);
            act("0 btnSteptojump");
            QVERIFY2(selected() == row && boxes().size() == warnings, typed);
            closeBoxes();
        }
    }

    void movesAreEditedOnTheirPage_oneAtATime() {
        QSignalSpy asked(page.get(), &ProgramWidget::pointBtnClicked);
        load(three_);
        doubleClick(0);
        m("lumo.dialog.statement")->setValue(this, QVariant::fromValue<QWidget*>(page.get()));
        act("btnEdit");
        QCOMPARE(asked, QList<QVariantList>({{0, QVariant::fromValue(line(0)), 6}}));
    }

    void pendant_selectsInsertsDeletesAndEdits() {
        load(three_);
        QString rows;
        for (const char* name : {"last", "next", "next", "next", "last", "last", "last"}) {
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
        load(three_);
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
        load(three_);
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
