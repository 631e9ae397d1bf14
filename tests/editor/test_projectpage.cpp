#include "editor/runpanel.h"
#include "editor/startline.h"
#include "editorfixture.h"
#include "look/scale.h"

/// How the project page divides its place, and what it shows of a run.
class TestProjectPage : public EditorTest {
    Q_OBJECT

    /// The visible children of a widget that stand in one another's way, or outside of it.
    static QString faults(const QWidget* parent) {
        QStringList found;
        QList<QWidget*> shown;
        for (QWidget* const child : parent->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            if (child->isVisible() && !child->testAttribute(Qt::WA_TransparentForMouseEvents)) {
                shown << child;
            }
        }
        for (int i = 0; i < shown.size(); ++i) {
            if (!parent->rect().contains(shown[i]->geometry())) {
                found << shown[i]->objectName() + " outside";
            }
            for (int j = i + 1; j < shown.size(); ++j) {
                if (shown[i]->geometry().intersects(shown[j]->geometry())) {
                    found << shown[i]->objectName() + " on " + shown[j]->objectName();
                }
            }
        }
        return found.join(", ");
    }
    bool areShown(const QString& names) const {
        const QStringList all = names.split(' ');
        return std::all_of(all.begin(), all.end(),
                           [this](const QString& name) { return find(name.toLatin1())->isVisible(); });
    }
    /// A weld is left open, so that the page has more to say.
    static void leaveWeldOpen(bool open) { m("lumo.current.openmiddlecolse")->setValue(nullptr, open); }

private slots:
    void init() { reset(); }
    void cleanup() {
        look::setFactor(1);
        leaveWeldOpen(false);
        m("lumo.execute.dry")->setValue(this, false);
    }

    void nothingOverlaps_andAllCanBeReached_inEveryWidth() {
        const std::tuple<int, int, double> sizes[] = {
            {464, 608, 1},      {528, 608, 1},      {688, 640, 1},     {864, 608, 1},    {1088, 640, 1},
            {1200, 904, 1.125}, {1696, 904, 1.125}, {1568, 1200, 1.5}, {2272, 1200, 1.5}};
        load("moveL; open; moveL; close");
        for (const auto& [width, height, factor] : sizes) {
            look::setFactor(factor);
            page->resize(width, height);
            for (const bool locked : {false, true}) {
                bench.robot.setPower(locked ? "on" : "off");
                for (const bool special : {false, true}) {
                    leaveWeldOpen(special);
                    m("lumo.execute.dry")->setValue(this, special);
                    bench.time.advance(300);
                    QCOMPARE(QString::number(width) + ' ' + faults(page.get()), QString::number(width) + ' ');
                    QCOMPARE(faults(find("runBar")), QString());
                    QVERIFY(areShown("tableWidget btnStart btnRunOnce btnPause btnReset widget_weld"));
                    QCOMPARE(find("lblStart")->isVisible(), special);
                    QVERIFY(find("tableWidget")->height() > height / 3);
                }
                if (locked) {
                    QVERIFY(areShown("btnStepBack btnStepForward") && !find("btnMoveJ")->isVisible());
                } else {
                    const bool inTurn = width < 688;
                    QVERIFY(areShown("btnEdit btnDown btnUp btnCopy btnPaste btnDel multiBtn anotationBtn"));
                    QVERIFY(inTurn != areShown("btnMoveJ btnDelay lineEdit_steptojump btnSteptojump"));
                    if (inTurn) {
                        click(find("btnTools"));
                        QVERIFY(areShown("btnMoveJ btnDelay lineEdit_steptojump btnSteptojump"));
                        QCOMPARE(faults(page.get()), QString());
                        click(find("btnTools"));
                    }
                }
            }
        }
    }

    /// The run panel is made when it is first to be seen. Its figure comes from the place of the tool.
    void runPanel_tellsTheSeamUnderWay() {
        QVERIFY(!page->findChild<lumo::RunPanel*>());
        bench.loadSound("moveL to=0,0,0; open 0 weldspeed=20; moveL to=0.2,0,0; close");
        bench.robot.setPower("on");
        const auto* const panel = page->findChild<lumo::RunPanel*>();
        QVERIFY(panel && panel->isVisible());
        QCOMPARE(panel->shown().seams.size(), 1);
        QCOMPARE(qRound(panel->shown().seams.first().lengthMm), 200);
        lumo::RunView seen;
        m("lumo.current.line")->setValue(this, 0);
        at(1200, [&] { seen = panel->shown(); });
        act("btnStart");
        bench.waitUntilIdle();
        QVERIFY(seen.runs && seen.seam == 0);
        bench.robot.setPower("off");
        QVERIFY(!panel->isVisible());
    }

    void startButton_saysWhatItWillDo_orWhyNot() {
        using lumo::StartOutlook;
        StartOutlook outlook;
        const auto is = [&outlook](const char* words, bool refused) {
            return lumo::startWords(outlook) == words && lumo::isStartRefused(outlook) == refused;
        };
        QVERIFY(is("未打开工程", true));
        outlook.projectOpen = true;
        QVERIFY(is("程序为空", true));
        outlook.lineCount = 8;
        QVERIFY(is("驱动未上电", true));
        outlook.drivesOn = true;
        QVERIFY(is("从第 1 行", false));
        outlook.selectedLine = 4;
        QVERIFY(is("从第 5 行，先确认", false));
        outlook.resumeLine = 4;
        QVERIFY(is("从第 5 行继续", false));
        outlook.weld = StartOutlook::Weld::Reopens;
        QVERIFY(is("第 5 行，继续出光", false) && lumo::isStartSpecial(outlook));
        outlook.weld = StartOutlook::Weld::StaysOff;
        QVERIFY(is("第 5 行，不出光", false));
        outlook.errors = 1;
        QVERIFY(is("程序有错误", true));
        outlook.run = StartOutlook::Run::ByHand;
        outlook.runningLine = 4;
        QVERIFY(is("正在执行第 5 行", true));
        outlook = {};
        outlook.projectOpen = outlook.drivesOn = true;
        outlook.lineCount = 3;
        outlook.resumeLine = 9;
        QVERIFY(is("第 10 行已不存在", true) && lumo::isStartSpecial(outlook));
        outlook.finished = true;
        QVERIFY(is("再次从第 1 行", false));
    }

    /// A press beside the switch switches, too.
    void cellOfASwitch_passesAPressOn() {
        QWidget* const cell = find("widget_weld")->parentWidget();
        QTest::mouseClick(cell, Qt::LeftButton, {}, QPoint(2, 2));
        QVERIFY(!m("lumo.allWeldBtnstatus.weldbtn")->getBool());
        QTest::keyClick(find("widget_weld"), Qt::Key_Space);
        QVERIFY(m("lumo.allWeldBtnstatus.weldbtn")->getBool());
    }
};

LUMO_TEST(TestProjectPage)
#include "test_projectpage.moc"
