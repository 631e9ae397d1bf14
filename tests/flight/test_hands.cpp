#include "app/panelfixture.h"
#include "flight/recorder.h"
#include "flight/ringfile.h"
#include "flight/ringreader.h"
#include "flight/runindex.h"
#include "support/runnerfolder.h"

/// What operators do at the panel, and what the package does because of it, is repeated.
class TestHands : public test::PanelTest {
    Q_OBJECT

    /// Presses buttons of a page of the package.
    void press(const char* page, const QStringList& buttons) const {
        click(page);
        for (const QString& button : buttons) {
            pass(200);  // until the page shows which can be pressed
            click(button);
        }
        pass(200);
    }
    void key(const QString& name) const {
        robot()->reportKey(name, false);
        pass(100);
        robot()->reportKey(name, true);
        pass(100);
    }
    static int currentLine() { return m("lumo.current.line")->getInt(); }
    static bool isOn(const QString& output) {
        return kordservice()->dataNode("register.values." + output)->getBool();
    }
    QAbstractButton* testOf(int output) const {
        QList<QAbstractButton*> tests;
        for (QAbstractButton* const one : window()->findChildren<QAbstractButton*>()) {
            if (one->inherits("lumo::TestButton") && one->isVisible()) {
                tests << one;
            }
        }
        return tests.value(output);
    }

    /// A laser that is lit by hand goes off with the start; in the weld a hand switches it off, then the weld
    /// is stopped.
    void weldAndStop() {
        press("btnDeviceControl", {"btnLaserControl", "btnLaserTest", "btnBlowControl", "btnBlowTest"});
        QVERIFY(isOn(laser) && isOn(gas));
        run(0, {{200, [this] { QVERIFY(!isOn(laser)); }},
                {8000, [this] { press("btnDeviceControl", {"btnLaserTest"}); }},
                {9000, [] { m("lumo.execute.trigger.pause")->trigger(); }}});
        waitUntilIdle();
        QVERIFY(m("lumo.current.openmiddlecolse")->getBool());
    }
    /// The pendant's keys select a line and insert a move; then the weld goes on with an overlap.
    void editAndGoOn() {
        press("btnProject", {});
        const int lines = m("lumo.program")->size();
        window()->activateWindow();
        robot()->setPower(false);  // the page lets nothing be inserted while the drives are on
        key("next");
        key("enter");
        QCOMPARE(m("lumo.program")->size(), lines + 1);
        robot()->setPower(true);
        set("lumo.execute.overlap", 5.0);
        run(currentLine(), {});
        waitUntilIdle();
    }
    /// Laser and wire are lit by hand where nothing runs, and go off with the power.
    void losePower() {
        press("btnDeviceControl", {"btnLaserTest", "btnWireControl", "btnWireTest"});
        QVERIFY(isOn(laser) && isOn(wire));
        robot()->setPower(false);
        pass(500);
        QVERIFY(!isOn(laser) && !isOn(wire));
        robot()->setPower(true);
        pass(500);
    }
    /// A start ends the test of an output that is held; then a dry run and a step.
    void testDryRunAndStep() {
        press("btnPort", {});
        QAbstractButton* const test = testOf(0);
        QVERIFY(test && test->isEnabled());
        QTest::mousePress(test, Qt::LeftButton);
        QVERIFY(isOn(gas));
        set("lumo.execute.dry", true);
        run(0, {{100, [this] { QVERIFY(!isOn(gas)); }}});
        waitUntilIdle();
        QTest::mouseRelease(test, Qt::LeftButton);
        set("lumo.execute.dry", false);
        setRunMode(2);
        set("lumo.execute.trigger.once", 1);
        pass(0);
        waitUntilIdle();
    }

    const QString laser = "LUMO_DO.#3", gas = "LUMO_DO.#0", wire = "LUMO_DO.#2";

private slots:
    void whatHandsDidIsRepeated() {
        openSample();
        robot()->setPower(true);
        robot()->setInput("DI3", true);
        set("lumo.allWeldBtnstatus.weldbtn", true);
        pass(100);
        flight::RingProblem problem;
        const auto ring = flight::RingFile::open("hands.ring", 4 << 20, &problem);
        QVERIFY2(ring, qPrintable(problem.text()));
        flight::Facts facts;
        facts.language = "en";
        facts.isExact = true;
        facts.runMode = panel_->packageFlags().runMode;
        auto recorder = std::make_unique<flight::Recorder>(ring.get(), facts);
        weldAndStop();
        editAndGoOn();
        losePower();
        testDryRunAndStep();
        recorder.reset();
        const QByteArray list = runIn(".", {"--replay", "hands.ring", "--list"}).out;
        QVERIFY2(list.count('\n') == 4, list.constData());
        for (int run = 1; run <= 4; ++run) {
            const Result repeated = runIn(".", {"--replay", "hands.ring", "--run", QString::number(run)});
            QVERIFY2(repeated.status == 0, (repeated.out + repeated.err).constData());
        }
    }
};

LUMO_TEST(TestHands)
#include "test_hands.moc"
