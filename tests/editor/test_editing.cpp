#include "editorfixture.h"
#include "params/setuse.h"

/// Changing a program with mouse, keyboard and pendant, which buttons can be pressed when, and that the table
/// follows the tree.
class TestEditing : public EditorTest {
    Q_OBJECT

    const QByteArray three_ = "moveJ note=a off; close note= off; delay 5 note=c";

    /// Statement group, editing group, multi-selection, batch, run tools, pause: the letter in capitals when
    /// all these buttons are enabled, small when none is, "?" for a mixture.
    QString enabled() const {
        const QString groups =
            "btnMoveJ btnMoveL btnMoveCC btnMoveC btnOpenLaser btnClose btnParam btnWaitDI btnSetDO btnDelay "
            "btnSteptojump|btnEdit btnDown btnUp btnCopy btnPaste btnDel anotationBtn|multiBtn|"
            "speedBtn turningBtn|btnStart btnRunOnce btnReset|btnPause";
        QString seen;
        for (const QString& group : groups.split('|')) {
            QSet<bool> states;
            for (const QString& name : group.split(' ')) {
                states << find(name.toLatin1())->isEnabled();
            }
            const char* const letters = states.contains(true) ? "SEMBRP" : "sembrp";
            seen += states.size() > 1 ? '?' : letters[seen.size()];
        }
        return seen;
    }

    /// Clicks a pendant key.
    void key(const QString& name) { m("lumo.keypad." + name + ".clicked")->setValue(this, true); }

private slots:
    void init() { reset(); }

    void edits_changeTheSelectedLine() {
        const std::tuple<const char*, QString, QString, int> cases[] = {
            {"0 btnCopy -1 btnEdit btnDel btnPaste btnUp btnDown anotationBtn", "a, , c", "false false ", -1},
            {"1 btnDel", "a, c", "false ", 1},
            {"0 btnDel", ", c", "false ", 0},
            {"0 btnPaste", "a, , c", "false false ", 0},  // nothing was copied yet
            {"0 btnCopy 1 btnPaste btnPaste", "a, , a, a, c", "false false false false ", 1},
            {"2 btnUp", "a, c, ", "false  false", 1},
            {"0 btnDown", ", a, c", "false false ", 1},
            {"0 btnUp", "a, , c", "false false ", 0},
            {"2 btnDown", "a, , c", "false false ", 2},
            {"1 btnEdit", "a, , c", "false false ", 1},  // has nothing to edit
            {"0 btnMoveC btnClose 0 btnMoveL", "a, , , , , c", "false true true true false ", 1},
            {"-1 btnMoveCC", ", a, , c", "true false false ", 0},
            {"0 anotationBtn 1 anotationBtn 0 anotationBtn 2 anotationBtn", "a, , c", "false true ", 2},
            {"multiBtn 0 1 multiBtn", "a, , c", "false false ", -1},
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

    void pastedWeld_usesTheSetThatWasCopied_orNone() {
        m("lumo.param")->loadJson(this, json("[{'name':'A'},{'name':'B'},{'name':'C'}]"));
        load("open 1; delay; param 9");
        act("0 btnCopy");
        lumo::moveSet(this, 1, 2);
        act("1 btnPaste");
        QCOMPARE(values("index"), "2  2 9");
        lumo::removeSet(this, 2);
        act("1 btnPaste");
        QCOMPARE(values("index"), "-1  -1 -1 9");
        act("4 btnCopy 1 btnPaste");
        QCOMPARE(values("index"), "-1  9 -1 -1 9");
    }

    void jump_selectsTheTypedLine() {
        load(QByteArray("delay; ").repeated(13) + "delay");
        // There is no line 15; letters and a leading zero are told, and lead nowhere.
        for (const auto& [typed, row] : {std::pair("3", 2), {"14", 13}, {"15", 0}, {"a01b2", 0}}) {
            typeIn(find<QLineEdit>("lineEdit_steptojump"), typed);
            act("0 btnSteptojump");
            QVERIFY2(selected() == row && boxes().size() == (row == 0 ? 1 : 0), typed);
            closeBoxes();
        }
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

    void pendantAndDoubleClicks_areIgnoredWithoutFocus() {
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
        QVERIFY(pressAll());  // while another page is shown
        reset(true, "on");    // editing is disabled
        load(three_);
        doubleClick(2);
        QVERIFY(pressAll());
    }

    void eachEvent_enablesItsButtons() {
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
            reset(projectOpen, power);
            QStringList seen{enabled()};
            const QStringList steps = course.split(' ');
            for (int i = 1; i < steps.size(); i += 2) {
                if (steps[i] == "project") {
                    isEnable_moveorder = true;
                    page->refreshMoveOrderEnable(true);
                } else if (steps[i] == "multi") {
                    act("multiBtn");
                } else if (QString("busy idle asleep").contains(steps[i])) {
                    m("lumo.execute.state")->setValue(this, steps[i]);
                } else {
                    bench.robot.setPower(steps[i].toLatin1());
                }
                seen << steps[i] << enabled();
            }
            QCOMPARE(seen.join(' '), course);
        }
    }

    void changesOfTheProgram_areShown() {
        for (int i = 0; i < 16; ++i) {
            const int from = i / 4, to = i % 4;
            load("moveL to=1,0,0 note=a; close off; open 0 weldspeed=20; delay 5 note=c");
            const std::function<void()> changes[] = {
                [&] { table()->moveStatement(this, from, to); },
                [&] { program()->reorder(this, to, from); },
                [&] {
                    line(to)
                        ->set(this, "note", QString(60, 'n'))
                        ->set(this, "speed", i)
                        ->set(this, "zone", 1);
                    page->changeStatement(to);
                },
                [&] {
                    page->hide();
                    bench.setParam("power", i);  // on another page
                    page->show();
                },
                [&] { program()->remove(this, mIndex(to)); },
            };
            for (const auto& change : changes) {
                change();
                QVERIFY(tableTellsTheTruth());
            }
        }
    }

    void rebuild_keepsSelectionAndMarker() {
        load(QByteArray("delay 1; ").repeated(60) + "close");
        m("lumo.execute.line")->setValue(this, 30);
        act("31 30");
        const QRect cell = table()->visualItemRect(table()->item(30, ProgramTable::MarkerColumn));
        const QImage marker = table()->viewport()->grab(cell).toImage();
        QCOMPARE(marker.pixelColor(19, marker.height() / 2), QColor(0, 255, 0));
        program()->loadJson(this, program()->exportToJson());
        QCOMPARE(qMakePair(marked(), selected()), qMakePair(30, 30));
        m("lumo.execute.line")->setValue(this, 61);
        QCOMPARE(qMakePair(marked(), selected()), qMakePair(-1, 30));
    }
};

LUMO_TEST(TestEditing)
#include "test_editing.moc"
