#include "editorfixture.h"

#include "binding/switchbutton.h"
#include "module/globals.h"
#include "panel/projectfile.h"

#include <QFile>
#include <QJsonArray>
#include <QSignalSpy>
#include <QTimer>

using test::ExecutorBench;

/// Starting, stopping and stepping a program with the editor's buttons.
class TestRunControls : public QObject {
    Q_OBJECT

    EditorFixture editor_;

    static constexpr const char* seam =
        R"([{"type":"moveL","execute":true},{"type":"open","index":0,"weldspeed":20,"execute":true},
            {"type":"moveL","execute":true,"point":{"trans":[1,0,0]}},
            {"type":"moveL","execute":true,"point":{"trans":[2,0,0]}},{"type":"close","execute":true}])";

    void at(int ms, const std::function<void()>& action) { QTimer::singleShot(ms, this, action); }
    QString startText() const { return editor_.find<QLabel>("lblStart")->text(); }
    static int resumeLine() { return m("lumo.current.line")->getInt(); }

    /// Starts the seam and pauses it in its first welded move.
    void pauseInTheSeam() {
        editor_.load(seam);
        at(1200, [this] { editor_.click("btnPause"); });
        editor_.click("btnStart");
        editor_.bench.settle();
    }

private slots:
    void init() {
        editor_.reset();
        editor_.bench.robot.setPower("on");
        QFile::remove("project.json");
        editor_.page->setProjectPath("project.json");
    }
    void cleanup() { ExecutorBench::closeBoxes(); }

    void start_savesAppliesAndTriggersInThisOrder() {
        editor_.load(R"([{"type":"delay","delaytime":100,"execute":true}])");
        QSignalSpy apply(editor_.page.get(), &ProgramWidget::updateUItoolwobj);
        m("lumo.processTime")->setValue(this, 77);
        hand_or_signalbing = 2;
        QStringList seen;
        QObject scope;
        connect(m("lumo.execute.state"), &ModuleObject::changed, &scope, [&](const QVariant& state) {
            seen << QString("%1 file:%2 applied:%3 time:%4 mode:%5")
                        .arg(state.toString())
                        .arg(QFile::exists("project.json"))
                        .arg(apply.count())
                        .arg(m("lumo.processTime")->getInt())
                        .arg(hand_or_signalbing);
        });
        editor_.click("btnStart");
        QCOMPARE(seen,
                 QStringList({"busy file:1 applied:1 time:0 mode:0", "idle file:1 applied:1 time:0 mode:0"}));
        const auto stored = lumo::readProject("project.json");
        QVERIFY(stored);
        QCOMPARE(QJsonValue(stored->statements), EditorFixture::program()->exportToJson());
        QCOMPARE(QJsonValue(stored->toolset), m("lumo.toolset")->exportToJson());
    }

    void startWithoutAProjectFile_runsUnsaved() {
        editor_.page->setProjectPath(QString());
        editor_.load(R"([{"type":"delay","delaytime":100,"execute":true}])");
        editor_.bench.robot.mark();
        editor_.click("btnStart");
        QCOMPARE(editor_.bench.robot.nowMs(), qint64(100));
        QVERIFY(ExecutorBench::boxes().isEmpty());
    }

    void unpairedWelding_isRefused() {
        editor_.load(R"([{"type":"moveL"},{"type":"open","execute":false}])");
        editor_.select(1);
        editor_.click("btnStart");
        QCOMPARE(ExecutorBench::boxes(),
                 QStringList{"当前程序中的\"开始焊接\"和\"停止焊接\"个数或者顺序不匹配!"});
        QVERIFY(!QFile::exists("project.json"));
        QCOMPARE(editor_.bench.robot.log(), QStringList());
        QVERIFY(!editor_.page->checkOpenMatchClose());
        QCOMPARE(editor_.page->openRows(), QVector<int>{1});
        QCOMPARE(editor_.page->closeRows(), QVector<int>());
    }

    void anotherRow_isAskedAbout_data() {
        QTest::addColumn<bool>("yes");
        QTest::newRow("yes") << true;
        QTest::newRow("no") << false;
    }

    void anotherRow_isAskedAbout() {
        QFETCH(bool, yes);
        editor_.load(
            R"([{"type":"delay","delaytime":100},{"type":"delay","delaytime":200},{"type":"delay","delaytime":400}])");
        m("lumo.current.openmiddlecolse")->setValue(this, true);
        editor_.select(1);
        QCOMPARE(startText(), QString("开始：确认后从选中的第 2 行执行"));
        QStringList states;
        QObject scope;
        connect(m("lumo.execute.state"), &ModuleObject::changed, &scope, [&](const QVariant& state) {
            states << QString("%1 weld:%2 line:%3")
                          .arg(state.toString())
                          .arg(editor_.bench.weldFlag())
                          .arg(resumeLine());
        });
        editor_.bench.robot.mark();
        editor_.click("btnStart");
        editor_.click("btnStart");  // asks once
        QCOMPARE(ExecutorBench::boxes(), QStringList{"是否跳转到当前行并开始执行!"});
        const auto* question = EditorFixture::dialog<QMessageBox>();
        QCOMPARE(question->defaultButton(), question->button(QMessageBox::No));
        QCOMPARE(editor_.bench.state(), QString("idle"));
        editor_.answerBox(yes ? QMessageBox::Yes : QMessageBox::No);
        QCOMPARE(editor_.bench.robot.nowMs(), qint64(yes ? 600 : 0));
        const QStringList run{"busy weld:0 line:1", "idle weld:0 line:2"};
        QCOMPARE(states, yes ? run : QStringList());
        QCOMPARE(editor_.bench.weldFlag(), !yes);
        QCOMPARE(QFile::exists("project.json"), yes);
    }

    void pauseAndResume_inAWeld() {
        pauseInTheSeam();
        QCOMPARE(editor_.bench.state(), QString("idle"));
        QCOMPARE(resumeLine(), 2);
        QCOMPARE(editor_.selected(), QVector<int>{2});
        QCOMPARE(editor_.marked(), QVector<int>{2});
        QCOMPARE(startText(), QString("开始：从第 3 行继续，激光将重新打开"));
        editor_.bench.robot.mark();
        editor_.click("btnStart");
        QVERIFY(ExecutorBench::boxes().isEmpty());
        QVERIFY(editor_.bench.robot.firstTime("GAS 1") >= 0);  // the laser was opened again
        QCOMPARE(editor_.bench.robot.output("LASER"), 0.0);
        QCOMPARE(resumeLine(), 4);
        QCOMPARE(startText(), QString("开始：从第 5 行继续"));
    }

    void aTorchThatWasMoved_isAskedAbout_data() {
        QTest::addColumn<bool>("yes");
        QTest::newRow("yes") << true;
        QTest::newRow("no") << false;
    }

    void aTorchThatWasMoved_isAskedAbout() {
        QFETCH(bool, yes);
        pauseInTheSeam();
        ModuleObject* const y = kordservice()->dataNode("sys.posture.trans.#1");
        y->setValue(this, y->getDouble() + 0.0121);
        editor_.bench.robot.mark();
        editor_.click("btnStart");
        QCOMPARE(ExecutorBench::boxes(),
                 QStringList{"焊枪距中断点 12.1 mm，先不出光回到中断点，再继续焊接？"});
        const auto* question = EditorFixture::dialog<QMessageBox>();
        QCOMPARE(question->defaultButton(), question->button(QMessageBox::No));
        y->setValue(this, y->getDouble() + 0.0121);  // jogged on meanwhile: it asks again
        editor_.answerBox(QMessageBox::Yes);
        QCOMPARE(ExecutorBench::boxes(),
                 QStringList{"焊枪距中断点 24.2 mm，先不出光回到中断点，再继续焊接？"});
        editor_.answerBox(yes ? QMessageBox::Yes : QMessageBox::No);
        QCOMPARE(editor_.bench.robot.log().isEmpty(), !yes);
        QCOMPARE(editor_.bench.robot.firstTime("GAS 1"), qint64(yes ? 500 : -1));
        QCOMPARE(editor_.bench.weldFlag(), !yes);
    }

    void theLineAboveTheTable_doesNotPromiseALaserThatStaysOff() {
        pauseInTheSeam();
        editor_.bench.robot.setMode("manual");
        QCOMPARE(startText(), QString("开始：从第 3 行继续，激光不会打开"));
        editor_.bench.robot.setMode("auto");
        QCOMPARE(startText(), QString("开始：从第 3 行继续，激光将重新打开"));
        editor_.load(seam);  // another program
        QCOMPARE(startText(), QString("开始：从第 3 行继续"));
        hand_or_signalbing = 1;
        m("lumo.current.openmiddlecolse")->setValue(this, true);  // a station's weld
        QCOMPARE(startText(), QString("开始：从第 3 行继续，激光不会打开"));
    }

    void reset_forgetsWhereItStopped() {
        pauseInTheSeam();
        editor_.click("btnReset");
        QCOMPARE(resumeLine(), 0);
        QVERIFY(!editor_.bench.weldFlag());
        QCOMPARE(m("lumo.current.pausepoint")->size(), 0);
        QCOMPARE(m("lumo.current.startpoint")->size(), 0);
        QCOMPARE(editor_.selected(), QVector<int>{0});
        QCOMPARE(startText(), QString("开始：从第 1 行执行"));
    }

    void duringARun_resetAndStartsAreRefused() {
        editor_.load(R"([{"type":"delay","delaytime":10},{"type":"delay","delaytime":1000}])");
        QSignalSpy apply(editor_.page.get(), &ProgramWidget::updateUItoolwobj);
        at(500, [&] {
            QCOMPARE(startText(), QString("正在执行第 2 行"));
            QFile::remove("project.json");
            editor_.select(0);
            editor_.click("btnReset");
            QCOMPARE(ExecutorBench::boxes(), QStringList{"当前不是空闲状态"});
            ExecutorBench::closeBoxes();
            m("lumo.processTime")->setValue(this, 5);
            editor_.click("btnStart");
            QCOMPARE(ExecutorBench::boxes(), QStringList{"当前不是空闲状态"});
            ExecutorBench::closeBoxes();
            editor_.click("btnRunOnce");
            QCOMPARE(ExecutorBench::boxes(), QStringList{"当前不是空闲状态"});
            QCOMPARE(hand_or_signalbing, 0);
            QCOMPARE(apply.count(), 1);
            QCOMPARE(m("lumo.processTime")->getInt(), 5);
            QVERIFY(!QFile::exists("project.json"));
        });
        editor_.click("btnStart");
        QCOMPARE(resumeLine(), 1);
    }

    void moveToPoint() {
        editor_.load(seam);
        m("lumo.current.openmiddlecolse")->setValue(this, true);
        QSignalSpy apply(editor_.page.get(), &ProgramWidget::updateUItoolwobj);
        editor_.select(3);
        editor_.bench.robot.mark();
        editor_.click("btnRunOnce");
        QVERIFY(
            test::sameLog(editor_.bench.robot.log(), {"0 move.reset", "0 move.l 0 0", "0 move.opr.enough"}));
        QCOMPARE(apply.count(), 1);
        QCOMPARE(hand_or_signalbing, 2);
        QVERIFY(!editor_.bench.weldFlag());
        QVERIFY(!QFile::exists("project.json"));
        QCOMPARE(editor_.marked(), QVector<int>());
        editor_.select(1);
        editor_.click("btnRunOnce");
        QCOMPARE(ExecutorBench::boxes(), QStringList{"单步只能运行运动指令"});
        ExecutorBench::closeBoxes();
        editor_.select(-1);
        editor_.click("btnRunOnce");
        QCOMPARE(ExecutorBench::boxes(), QStringList{"未选中启动行"});
    }

    void markerAndSelection_followAHandRun() {
        editor_.load(
            R"([{"type":"delay","delaytime":100},{"type":"delay","delaytime":100},{"type":"delay","delaytime":100}])");
        QVector<int> marked;
        for (int ms : {50, 150, 250}) {
            at(ms, [&] {
                marked << editor_.marked();
                QCOMPARE(editor_.selected(), editor_.marked());
            });
        }
        editor_.click("btnStart");
        QCOMPARE(marked, QVector<int>({0, 1, 2}));
    }

    void aNewEditor_selectsTheLineWithoutAMarker() {
        editor_.load(seam);
        m("lumo.execute.line")->setValue(this, 3);
        editor_.makePage();
        QCOMPARE(editor_.selected(), QVector<int>{3});
        QCOMPARE(editor_.marked(), QVector<int>());
    }

    // --- Under an open question ---------------------------------------------------------------------

    void programChangesUnderTheQuestion_nothingStarts_data() {
        QTest::addColumn<QByteArray>("how");
        for (const char* how : {"deleted", "inserted", "replaced", "page"}) {
            QTest::newRow(how) << QByteArray(how);
        }
    }

    void programChangesUnderTheQuestion_nothingStarts() {
        QFETCH(QByteArray, how);
        editor_.load(seam);
        editor_.select(2);
        editor_.click("btnStart");
        const QPointer<QMessageBox> question = EditorFixture::dialog<QMessageBox>();
        QVERIFY(question);
        if (how == "deleted") {
            EditorFixture::program()->remove(this, mIndex(0));
        } else if (how == "inserted") {
            EditorFixture::program()->append(this);
        } else if (how == "replaced") {
            editor_.load(seam);
        } else {
            editor_.page.reset();
        }
        editor_.bench.time.advance(1000);
        QVERIFY(!question);
        QCOMPARE(resumeLine(), 0);
        QCOMPARE(editor_.bench.robot.log(), QStringList());
    }

    void aRunStartsUnderTheQuestion_yesIsRefused() {
        editor_.load(seam);
        m("lumo")->append(this, "signalbind_program")->copyFrom(this, m("lumo.program"));
        editor_.select(3);
        editor_.click("btnStart");
        at(1200, [this] {
            editor_.answerBox(QMessageBox::Yes);
            QCOMPARE(ExecutorBench::boxes(), QStringList{"当前不是空闲状态"});
            QCOMPARE(hand_or_signalbing, 1);
            QVERIFY(editor_.bench.weldFlag());
            QVERIFY(resumeLine() != 3);
        });
        editor_.bench.run(0, 1);
        QCOMPARE(resumeLine(), 4);
    }

    void clicks_areAnsweredFromTheEventLoop_data() {
        QTest::addColumn<QByteArray>("how");
        for (const char* how : {"btnStart", "btnRunOnce", "yes"}) {
            QTest::newRow(how) << QByteArray(how);
        }
    }

    /// The page, and with it the button or the box that was clicked, may be gone before the run ends.
    void clicks_areAnsweredFromTheEventLoop() {
        QFETCH(QByteArray, how);
        editor_.load(R"([{"type":"moveL"},{"type":"delay","delaytime":1000}])");
        editor_.select(how == "yes" ? 1 : 0);
        QSignalSpy states(m("lumo.execute.state"), &ModuleObject::changed);
        QWidget* clicked = editor_.find(how == "yes" ? "btnStart" : how.constData());
        if (how == "yes") {
            editor_.click("btnStart");
            clicked = EditorFixture::dialog<QMessageBox>()->button(QMessageBox::Yes);
        }
        QTest::mouseClick(clicked, Qt::LeftButton);
        if (how != "yes") {
            QTest::mouseClick(clicked, Qt::LeftButton);
        }
        QCOMPARE(states.size(), 0);
        at(300, [this] { editor_.page.reset(); });
        editor_.bench.time.advance(3000);
        QVERIFY(!editor_.page);
        QCOMPARE(states.size(), 2);  // one run, though there were two clicks
        QCOMPARE(ExecutorBench::boxes(), QStringList());
        QCOMPARE(editor_.bench.state(), QString("idle"));
    }

    void aPause_isBegunFromTheEventLoop() {
        editor_.load(seam);
        at(1200, [this] {
            QTest::mouseClick(editor_.find("btnPause"), Qt::LeftButton);
            QCOMPARE(editor_.bench.state(), QString("busy"));
        });
        editor_.click("btnStart");
        QCOMPARE(editor_.bench.state(), QString("idle"));
        QCOMPARE(resumeLine(), 2);
        editor_.bench.settle();
    }

    /// What a click asked for is checked when it is done.
    void whatStartChecks_holdsWhenItBegins_data() {
        QTest::addColumn<QByteArray>("how");
        for (const char* how : {"unpaired", "another program", "page"}) {
            QTest::newRow(how) << QByteArray(how);
        }
    }

    void whatStartChecks_holdsWhenItBegins() {
        QFETCH(QByteArray, how);
        editor_.load(seam);
        editor_.select(2);
        editor_.click("btnStart");
        QTest::mouseClick(EditorFixture::dialog<QMessageBox>()->button(QMessageBox::Yes), Qt::LeftButton);
        if (how == "unpaired") {
            EditorFixture::program()->remove(this, mIndex(1));
        } else if (how == "another program") {
            editor_.load(seam);
            editor_.table()->selectOnly(2);
        } else {
            editor_.page.reset();
        }
        editor_.bench.time.advance(1000);
        QCOMPARE(editor_.bench.robot.log(), QStringList());
        QCOMPARE(resumeLine(), 0);
    }

    // --- Weld switches ----------------------------------------------------------------------------

    void weldSwitches() {
        m("lumo.allWeldBtnstatus.weldbtn")->setValue(this, false);
        m("lumo.allWeldBtnstatus.handweldbtn")->setValue(this, true);
        editor_.makePage();
        QCOMPARE(m("lumo.allWeldBtnstatus.weldbtn")->value(), QVariant(true));
        QCOMPARE(m("lumo.allWeldBtnstatus.handweldbtn")->value(), QVariant(false));
        QTest::mouseClick(editor_.find("widget_weld"), Qt::LeftButton);
        QTest::mouseClick(editor_.find("widget_handweld"), Qt::LeftButton);
        QCOMPARE(m("lumo.allWeldBtnstatus.weldbtn")->value(), QVariant(false));
        QCOMPARE(m("lumo.allWeldBtnstatus.handweldbtn")->value(), QVariant(true));
        m("lumo.allWeldBtnstatus.weldbtn")->setValue(this, true);  // by another page
        QVERIFY(editor_.find<SwitchButton>("widget_weld")->checked());
    }
};

LUMO_TEST_MAIN(TestRunControls)
#include "test_runcontrols.moc"
