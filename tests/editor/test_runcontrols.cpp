#include "editor/storedstate.h"
#include "editorfixture.h"
#include "support/language.h"

#include <QDoubleSpinBox>
#include <QListWidget>

/// The editor's run buttons, and what stands above the table of the next start and of the program's file.
class TestRunControls : public EditorTest {
    Q_OBJECT

    const QByteArray seam_ = "moveL; open 0 weldspeed=20; moveL to=1,0,0; moveL; close";
    const QString stored_ = "stored", changed_ = "changed";

    void load(const QByteArray& program) { bench.loadSound(program); }
    QString startText() const { return find<QLabel>("lblStart")->text(); }
    QString storedText() {
        bench.time.advance(1000);
        const lumo::StoredState* const file = page->stored();
        return !file->hasFile() ? QString() : file->isStored() ? stored_ : changed_;
    }
    static bool isSaved() { return QFile::exists("project.json"); }

    /// Starts the seam and pauses it in its first welded move.
    void pauseInTheSeam() {
        init();
        load(seam_);
        at(1200, [this] { act("btnPause"); });
        act("btnStart");
        bench.waitUntilIdle();
    }

private slots:
    void init() {
        reset();
        bench.robot.setPower("on");
        QFile::remove("project.json");
        page->setProjectPath("project.json");
    }

    /// From the event loop, once for two clicks: the page with the button may be gone before the run ends.
    void start_savesAppliesAndTriggersInThisOrder() {
        load("delay 1000");
        QSignalSpy apply(page.get(), &ProgramWidget::updateUItoolwobj);
        m("lumo.processTime")->setValue(this, 77);
        hand_or_signalbing = 2;
        QStringList states;
        QObject scope;
        connect(m("lumo.execute.state"), &ModuleObject::changed, &scope, [&](const QVariant& state) {
            QVERIFY(isSaved() && apply.count() == 1);
            QVERIFY(m("lumo.processTime")->getInt() == 0 && hand_or_signalbing == 0);
            states << state.toString();
        });
        click(find("btnStart"));
        click(find("btnStart"));
        QCOMPARE(states, QStringList());
        at(300, [this] { page.reset(); });
        bench.time.advance(3000);
        QCOMPARE(states, QStringList({"busy", "idle"}));
        QCOMPARE(boxes(), QStringList());
    }

    /// A stop does not wait for a long program.
    void longProgram_isComparedInPieces_whileItRuns() {
        load("delay 5000; " + QByteArray("delay 1 off; ").repeated(300) + "delay 1");
        bench.time.advance(1000);
        const auto note = [this](int row) { return table()->item(row, ProgramTable::NoteColumn)->text(); };
        at(1000, [&] {
            page->hide();
            for (const int row : {0, 300}) {
                line(row)->set(this, "note", "edited");
            }
            page->show();
            QCOMPARE(note(0) + note(300), "edited");
        });
        at(2000, [&] {
            QVERIFY(tableTellsTheTruth());
            QVERIFY(page->stored()->isStored());
        });
        act("btnStart");
        QCOMPARE(storedText(), changed_);
    }

    /// Lines that are not executed count, too.
    void unpairedWelding_isNotStarted() {
        for (const QByteArray lines : {"open; delay", "moveL; open; delay; close; open; close"}) {
            init();
            load(QByteArray(lines).replace(";", " off;") + " off");
            act("btnStart");
            QCOMPARE(boxes().size(), lines.startsWith("moveL") ? 0 : 1);
            QCOMPARE(isSaved(), lines.startsWith("moveL"));
        }
    }

    /// After the questions; of a step only what its own line holds.
    void errors_refuseTheStart_andAreTold() {
        const Language chinese("cn");
        load("moveL; open weldspeed=0; moveL to=0.1,0,0 speed=0; close; moveL to=0,0.1,0");
        const QString first = "第 2 行：焊接速度为 0 mm/s；请输入大于 0 的焊接速度。\n另有 1 个错误。";
        act("btnStart");
        QCOMPARE(boxes(), QStringList{first});
        QCOMPARE(selected(), 1);
        closeBoxes();
        act("4 btnStart");
        answerBox(true);
        QCOMPARE(boxes(), QStringList{first});
        closeBoxes();
        QVERIFY(!isSaved() && bench.resumeLine() == 0);
        act("2 btnRunOnce");
        QCOMPARE(boxes(), QStringList{"第 3 行：速度为 0 mm/s；请输入大于 0 的速度。"});
        QCOMPARE(bench.robot.log(), QStringList());
        closeBoxes();
        act("4 btnRunOnce");
        QCOMPARE(boxes(), QStringList());
        QVERIFY(!bench.robot.log().isEmpty());
    }

    void warnings_areCountedAndListed_andStart() {
        const Language chinese("cn");
        const auto* const list = find<QListWidget>("lstFindings");
        const auto counted = [this] {
            bench.time.advance(500);
            return find("btnFindings")->accessibleName();
        };
        load("delay 100; open; close; delay 100");
        QCOMPARE(counted(), QString("1 个警告"));
        act("btnFindings");
        QCOMPARE(list->item(0)->text(),
                 QString("第 2 行：在第 3 行停止焊接之前没有任何运动\n请删除这两行，或添加焊缝"));
        program()->remove(this, "#0");
        QVERIFY(list->item(0)->text().startsWith("第 1 行"));  // before the next check
        table()->moveStatement(this, 0, 1);
        QVERIFY(list->item(0)->text().startsWith("第 2 行"));
        table()->moveStatement(this, 1, 0);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(0)).center());
        QCOMPARE(qMakePair(list->isVisible(), selected()), qMakePair(false, 0));
        act("btnStart");
        QCOMPARE(boxes(), QStringList());
        QCOMPARE(bench.resumeLine(), 2);
        load("delay 100");
        QCOMPARE(counted(), QString("已检查"));
    }

    void startFromAnotherRow_isConfirmed() {
        load("delay 100; delay 200");
        m("lumo.current.openmiddlecolse")->setValue(this, true);
        at(100, [this] { QVERIFY(!bench.weldFlag()); });  // of the run
        for (const bool yes : {false, true}) {
            bench.robot.mark();
            act("1 btnStart btnStart");  // asks once
            QCOMPARE(startText(), "开始：确认后从选中的第 2 行执行");
            QCOMPARE(boxes(), QStringList{"是否跳转到当前行并开始执行!"});
            yes ? answerBox(true) : QTest::keyClick(shown(), Qt::Key_Return);
            QCOMPARE(bench.robot.nowMs(), qint64(yes ? 200 : 0));
            QCOMPARE(bench.weldFlag(), !yes);
            QCOMPARE(isSaved(), yes);
        }
    }

    /// The line above the table does not promise a laser that stays off.
    void pausedSeam_isResumedOrReset() {
        const QString goesOn = "开始：从第 3 行继续";
        pauseInTheSeam();
        QCOMPARE(qMakePair(marked(), selected()), qMakePair(2, 2));
        const std::pair<std::function<void()>, QString> course[] = {
            {[] { ScriptedRobot::setMode("manual"); }, goesOn + "，激光不会打开"},
            {[] { ScriptedRobot::setMode("auto"); }, goesOn + "，激光将重新打开"},
            {[this] { act("btnStart"); }, "开始：再次从第 1 行执行"},
            {[this] { pauseInTheSeam(); }, goesOn + "，激光将重新打开"},
            {[this] { load(seam_); }, goesOn},  // another program
            {[this] { act("-1"); }, goesOn},
            {[this] { m("lumo.current.line")->setValue(this, 9); }, "第 10 行已不存在：请复位或选择一行"},
            {[this] { load(""); }, "程序为空"},
            {[this] { pauseInTheSeam(); }, goesOn + "，激光将重新打开"},
            {[this] { act("btnReset"); }, "开始：从第 1 行执行"},
        };
        for (const auto& [change, expected] : course) {
            change();
            QCOMPARE(startText(), expected);
        }
        QVERIFY(!bench.weldFlag() && selected() == 0);
        QCOMPARE(m("lumo.current.pausepoint")->size() + m("lumo.current.startpoint")->size(), 0);
    }

    /// Only a run that came to its end is run again from its first line, and another row is asked for as
    /// ever.
    void finishedProgram_beginsAgain() {
        const QString again = "开始：再次从第 1 行执行";
        const auto started = [this](const char* how) {
            bench.robot.mark();
            act(how);
            return bench.robot.log().count("0 move.l 0.05 0");
        };
        load(seam_);
        act("btnStart");
        QCOMPARE(startText(), again);
        QCOMPARE(bench.resumeLine(), 4);
        QCOMPARE(started("btnStart"), 1);
        act("1 btnStart");
        QCOMPARE(boxes(), QStringList{"是否跳转到当前行并开始执行!"});
        answerBox(false);
        act("4");
        QCOMPARE(startText(), again);
        const std::function<void()> ends[] = {
            [this] {
                at(200, [this] { act("btnPause"); });
                act("3 btnRunOnce");
                bench.waitUntilIdle();
                act("4");
            },
            [this] { table()->moveStatement(this, 1, 2); },
            [this] { m("lumo.current.line")->setValue(this, 4); },
            [this] {
                at(1200, [this] { act("btnPause"); });
                act("btnStart");
                bench.waitUntilIdle();
            },
        };
        for (const auto& end : ends) {
            load(seam_);
            act("-1 btnStart");
            QCOMPARE(startText(), again);
            end();
            QVERIFY2(!startText().contains("再次"), qPrintable(startText()));
        }
    }

    /// The dialog follows the tool, and goes with its question.
    void stoppedWeld_asksHowItGoesOn() {
        ModuleObject* const y = kordservice()->dataNode("sys.posture.trans.#1");
        const auto ask = [&] {
            pauseInTheSeam();
            y->setValue(this, y->getDouble() + 0.0121);
            bench.robot.mark();
            act("btnStart btnStart btnResume");
            QVERIFY(child<QLabel>(shown(), "lblDistance")->text().startsWith("焊枪不出光退回 12.1 mm"));
        };
        const auto choose = [this](const char* choice) {
            click(child(shown(), choice));
            bench.time.settle();
        };
        ask();
        QCOMPARE(child<QLabel>(shown(), "lblWhere")->text(), "第 3 行，第 1 条焊缝，共 1 条");
        y->setValue(this, y->getDouble() + 0.0121);  // jogged on
        bench.time.settle();
        QVERIFY(child<QLabel>(shown(), "lblDistance")->text().contains("24.2 mm"));
        choose("btnCancel");
        QVERIFY(!shown() && bench.robot.log().isEmpty());
        ask();
        choose("btnGoOn");
        QCOMPARE(bench.robot.firstTime("GAS 1"), qint64(500));
        ask();
        child<QDoubleSpinBox>(shown(), "spinOverlap")->setValue(7.5);
        choose("btnOverlap");
        QCOMPARE(m("lumo.execute.overlap")->getDouble(), 7.5);
        QVERIFY(bench.robot.firstTime("GAS 1") > 0);
        ask();
        choose("btnDark");
        QVERIFY(bench.robot.firstTime("GAS 1") < 0 && !m("lumo.allWeldBtnstatus.weldbtn")->getBool());
        const std::function<void()> closings[] = {
            [this] { program()->remove(this, "#1"); },
            [] { ScriptedRobot::setMode("manual"); },
            [this] { m("lumo.current.line")->setValue(this, 1); },
            [this] { m("lumo.execute.dry")->setValue(this, true); },
        };
        for (const auto& close : closings) {
            ask();
            bench.robot.setPower("off");
            QVERIFY(shown());
            close();
            bench.time.settle();
            QVERIFY(!shown() && bench.robot.log().isEmpty());
        }
        m("lumo.execute.dry")->setValue(this, false);
    }

    void dryRun_isSwitchedWhileNothingRuns() {
        const auto* const speed = find<QComboBox>("cmbDrySpeed");
        load(seam_);
        QVERIFY(!speed->isVisible());
        click(find("widget_dryrun"));
        QVERIFY(speed->isVisible() && m("lumo.execute.dry")->getBool());
        QCOMPARE(startText(), "空运行。开始：从第 1 行执行");
        at(300, [this] {
            click(find("widget_dryrun"));
            QVERIFY(m("lumo.execute.dryRun")->getBool());
        });
        act("btnStart");
        QVERIFY(m("lumo.execute.dry")->getBool() && !m("lumo.execute.dryRun")->getBool());
        QVERIFY(bench.robot.firstTime("GAS 1") < 0 && bench.robot.firstTime("LASER 1") < 0);
        m("lumo.execute.dry")->setValue(this, false);
    }

    void run_isShownAndRefusesOtherStarts() {
        load("delay 100; delay 1000");
        QSignalSpy apply(page.get(), &ProgramWidget::updateUItoolwobj);
        at(50, [this] { QCOMPARE(qMakePair(marked(), selected()), qMakePair(0, 0)); });
        at(500, [&] {
            QCOMPARE(qMakePair(marked(), selected()), qMakePair(1, 1));
            QCOMPARE(startText(), "正在执行第 2 行");
            QFile::remove("project.json");
            for (const char* steps : {"0 btnReset", "0 btnStart", "0 btnRunOnce"}) {
                act(steps);
                QCOMPARE(boxes(), QStringList{"当前不是空闲状态"});
                closeBoxes();
            }
            QCOMPARE(hand_or_signalbing, 0);
            QCOMPARE(apply.count(), 1);
            QVERIFY(!isSaved());
        });
        act("btnStart");
        QCOMPARE(bench.resumeLine(), 1);
        m("lumo.execute.line")->setValue(this, 1);
        makePage();  // a new editor selects the line, without a marker
        QCOMPARE(qMakePair(marked(), selected()), qMakePair(-1, 1));
    }

    void moveToPoint_movesOnly() {
        load(seam_);
        m("lumo.current.openmiddlecolse")->setValue(this, true);
        QSignalSpy apply(page.get(), &ProgramWidget::updateUItoolwobj);
        bench.robot.mark();
        act("3 btnRunOnce");
        QVERIFY(sameLog(bench.robot.log(), {"0 move.reset", "0 move.l 0.05 0", "0 move.opr.enough"}));
        QCOMPARE(apply.count(), 1);
        QVERIFY(!bench.weldFlag() && !isSaved());
        QCOMPARE(marked(), -1);
        act("-1 btnRunOnce");
        QCOMPARE(boxes(), QStringList{"未选中启动行"});
    }

    /// A tap moves nothing. A line that is not executed is left out.
    void heldButton_stepsToTheNextPoint_andStopsWhenLetGo() {
        load("moveL to=9,0,0; delay; moveL off; moveL to=1,0,0; moveL to=2,0,0");
        act("0");
        const std::tuple<const char*, int, int, bool> steps[] = {
            {"btnStepForward", 300, 3, true},  {"btnStepForward", 9000, 4, false},
            {"btnStepForward", 500, 4, false}, {"btnStepBack", 9000, 3, false},
            {"btnStepBack", 0, 3, false},      {"btnStepBack", 100, 3, false},
            {"btnStepBack", 300, 0, true}};
        for (const auto& [name, heldMs, row, stopped] : steps) {
            bench.robot.mark();
            QWidget* const held = find(name);
            QTest::mousePress(held, Qt::LeftButton);
            const auto letGo = [held] { QTest::mouseRelease(held, Qt::LeftButton); };
            heldMs > 0 ? at(heldMs, letGo) : letGo();
            bench.time.advance(10000);
            QCOMPARE(selected(), row);
            QVERIFY(!lumo::isRunning());
            QCOMPARE(bench.robot.log().join(' ').contains("move.stop"), stopped);
        }
        bench.robot.mark();
        QTest::mousePress(find("btnStepForward"), Qt::LeftButton);
        at(300, [this] { page->hide(); });  // another page is shown
        bench.time.advance(10000);
        QVERIFY(bench.robot.log().join(' ').contains("move.stop"));
        QCOMPARE(boxes(), QStringList());
    }

    /// Under the question, and after it was answered but before the start begins.
    void changedProgram_isNotStarted() {
        const std::function<void()> changes[] = {
            [this] { program()->remove(this, "#1"); },
            [this] { program()->append(this)->set(this, "type", "open"); },
            [this] { load(seam_); },
            [this] { page.reset(); },
        };
        for (const auto& change : changes) {
            for (const bool answered : {false, true}) {
                init();
                load(seam_);
                act("2 btnStart");
                const QPointer<QMessageBox> question = shown<QMessageBox>();
                if (answered) {
                    click(question->button(QMessageBox::Yes));
                }
                change();
                bench.time.advance(1000);
                QVERIFY(!question);
                QCOMPARE(bench.resumeLine(), 0);
                QCOMPARE(bench.robot.log(), QStringList());
            }
        }
    }

    void stationRunBegunDuringTheQuestion_goesOn() {
        load(seam_);
        m("lumo")->append(this, "signalbind_program")->copyFrom(this, program());
        act("3 btnStart");
        at(1200, [this] {
            QCOMPARE(startText(), "工位程序正在运行");
            answerBox(true);
            QCOMPARE(boxes(), QStringList{"当前不是空闲状态"});
            QCOMPARE(hand_or_signalbing, 1);
            QVERIFY(bench.weldFlag());
        });
        bench.run(0, 1);
        QCOMPARE(bench.resumeLine(), 4);
    }

    void weldSwitches_areSet() {
        click(find("widget_weld"));
        click(find("widget_handweld"));
        QCOMPARE(text(m("lumo.allWeldBtnstatus")), "{'handweldbtn':true,'weldbtn':false}");
    }

    void programLine_tellsWhetherTheFileHoldsTheProgram() {
        load("[{'type':'delay','delaytime':1,'execute':true},{'type':'delay'}]");
        const QByteArray bare = QJsonDocument(program()->exportToJson().toArray()).toJson();
        const auto store = [this](const QByteArray& content) {
            writeFile("project.json", "\xEF\xBB\xBF" + content);
            QFile file("project.json");
            QVERIFY(file.open(QIODevice::ReadWrite));
            file.setFileTime(QDateTime::fromSecsSinceEpoch(1000), QFile::FileModificationTime);
            page->setProjectPath("project.json");
        };
        const std::pair<std::function<void()>, QString> course[] = {
            {[] {}, changed_},
            {[this] { act("btnStart"); }, stored_},
            {[this] { bench.robot.setPower("off"); }, stored_},
            {[this] { act("0 anotationBtn"); }, changed_},
            {[this] { act("anotationBtn"); }, stored_},
            {[this] { m("lumo.toolset.end")->loadJson(this, json("{'name':'torch'}")); }, changed_},
            {[&] { store(bare); }, stored_},                                 // without a tool set
            {[&] { store(QByteArray(bare).replace("1", "2")); }, changed_},  // of the same time and size
            {[&] { store("[]"); }, changed_},
            {[this] { page->setProjectPath(QString()); }, ""},
        };
        for (const auto& [change, expected] : course) {
            change();
            QCOMPARE(storedText(), expected);
        }
    }
};

LUMO_TEST(TestRunControls)
#include "test_runcontrols.moc"
