#include "pagebench.h"

#include "editor/pointwidget.h"
#include "kord/controllermanager.h"
#include "panel/elidedcombo.h"
#include "params/paramconfigwidget.h"

#include <QComboBox>
#include <QContextMenuEvent>
#include <QDialog>
#include <QJsonArray>
#include <QJsonObject>
#include <QPointer>
#include <QScrollBar>
#include <QToolButton>
#include <QTranslator>

namespace {

const QByteArray oneMove = R"([{"type":"moveL","speed":20,"zone":2,"note":"","execute":true,
                                "point":{"trans":[0.5,0,0],"rot":[0,0,0]}}])";
const QByteArray oneWeld = R"([{"type":"open","index":0,"weldspeed":"20","execute":true},
                               {"type":"close","execute":true}])";

}  // namespace

Q_DECLARE_METATYPE(const ModuleObject*)

/// The pages of the panel and how the operator goes from one to another.
class TestPanel : public QObject {
    Q_OBJECT

    test::PageBench bench_;

    QStackedWidget* stack() const {
        return bench_.page->findChild<QStackedWidget*>(QStringLiteral("stackedWidget"));
    }
    QByteArray shownPage() const { return stack()->currentWidget()->metaObject()->className(); }
    bool hasTopBar() const { return bench_.find<QWidget>("topWgt") != nullptr; }
    QTableWidget* table() const { return bench_.programTable(); }
    void openPointPage() {
        bench_.load(oneMove);
        table()->selectRow(0);
        bench_.click("btnEdit");
        QCOMPARE(shownPage(), QByteArray("PointWidget"));
    }

private slots:
    void initTestCase() { qRegisterMetaType<const ModuleObject*>("const mendo::ModuleObject*"); }

    void init() { bench_.renew(); }

    void editorComesFirst() {
        QCOMPARE(shownPage(), QByteArray("ProgramWidget"));
        QVERIFY(hasTopBar());
        QCOMPARE(bench_.shownProject(), "工程名");
    }

    void buttonsOfMissingPages_areDisabled_data() {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<bool>("enabled");
        QTest::newRow("project") << QByteArray("btnProject") << true;
        QTest::newRow("parameters") << QByteArray("btnParamCfg") << true;
        QTest::newRow("ports") << QByteArray("btnPort") << true;
        QTest::newRow("monitor") << QByteArray("btnMonitor") << true;
        QTest::newRow("device") << QByteArray("btnDeviceControl") << true;
        QTest::newRow("stations") << QByteArray("btnBind") << true;
    }

    void buttonsOfMissingPages_areDisabled() {
        QFETCH(QByteArray, button);
        const auto* tool = bench_.find<QToolButton>(button);
        QVERIFY(tool);
        QTEST(tool->isEnabled(), "enabled");
        QCOMPARE(tool->toolTip(), tool->text());
    }

    void page_isNewOnEachVisit_andTwoAreKept_data() {
        QTest::addColumn<QByteArray>("button");
        QTest::newRow("parameters") << QByteArray("btnParamCfg");
        QTest::newRow("ports") << QByteArray("btnPort");
    }

    void page_isNewOnEachVisit_andTwoAreKept() {
        QFETCH(QByteArray, button);
        QList<QPointer<QWidget>> seen;
        for (int visit = 0; visit < 4; ++visit) {
            bench_.click(button);
            seen << stack()->currentWidget();
            QVERIFY(!hasTopBar());
            QCOMPARE(bench_.find<QToolButton>(button)->isChecked(), true);
            bench_.click("btnProject");
            QCOMPARE(shownPage(), QByteArray("ProgramWidget"));
            QVERIFY(hasTopBar());
            bench_.time.settle();
        }
        QVERIFY(!seen[0] && !seen[1]);
        QVERIFY(seen[2] && seen[3] && seen[2] != seen[3]);
        QCOMPARE(stack()->count(), 6);
    }

    void renamedSet_isRedrawnInTheEditor() {
        bench_.load(oneWeld);
        QVERIFY(table()->item(0, 3)->text().contains("A;"));
        bench_.click("btnParamCfg");
        bench_.find<QTableWidget>("tblWgtGroup")->item(0, 1)->setText("steel");
        QVERIFY(table()->item(0, 3)->text().contains("steel"));
    }

    void wireUse_isRedrawnInTheEditor() {
        bench_.load(oneWeld);
        const QString before = table()->item(0, 3)->text();
        bench_.click("btnPort");
        auto* check = qobject_cast<QAbstractButton*>(bench_.find<QTableWidget>()->cellWidget(8, 4));
        QTest::mouseClick(check, Qt::LeftButton);
        bench_.click("okayBtn");
        QVERIFY(table()->item(0, 3)->text() != before);
    }

    void pointPage_returnsToTheEditor_data() {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<bool>("stored");
        QTest::newRow("OK") << QByteArray("okayBtn") << true;
        QTest::newRow("cancel") << QByteArray("cancelBtn") << false;
        QTest::newRow("another page") << QByteArray("btnParamCfg") << false;
        QTest::newRow("the editor's button") << QByteArray("btnProject") << false;
    }

    void pointPage_returnsToTheEditor() {
        QFETCH(QByteArray, button);
        QFETCH(bool, stored);
        openPointPage();
        const QPointer<QWidget> pointPage = stack()->currentWidget();
        QVERIFY(isnew_pWgt);
        QVERIFY(!hasTopBar());
        auto* speed = bench_.find<QLineEdit>("lineEditSpeed");
        QVERIFY(!speed->hasFocus());
        speed->selectAll();
        QTest::keyClicks(speed, "33");
        bench_.click(button);
        bench_.time.settle();
        QVERIFY(!pointPage);
        QVERIFY(!isnew_pWgt);
        QCOMPARE(m("lumo.program.#0.speed")->getInt(), stored ? 33 : 20);
        QCOMPARE(table()->item(0, 3)->text().contains("v33"), stored);
        bench_.click("btnProject");
        QCOMPARE(shownPage(), QByteArray("ProgramWidget"));
        QVERIFY(hasTopBar());

        // It can be opened again.
        table()->selectRow(0);
        bench_.click("btnEdit");
        QCOMPARE(shownPage(), QByteArray("PointWidget"));
    }

    /// The second point is stored at once, whatever becomes of the page. Somebody else may have changed more.
    void secondPoint_isShownInTheTable() {
        bench_.load(QByteArray(oneMove)
                        .replace("moveL", "moveC")
                        .replace(R"("point":)", R"("point1":{"trans":[0,0,0],"rot":[0,0,0]},"point":)"));
        bench_.robot.standAt({0.7, 0.8, 0.9});
        for (const char* leave : {"cancelBtn", "btnMonitor"}) {
            m("lumo.program.#0.point1.trans.#0")->setValue(this, 0);
            table()->selectRow(0);
            bench_.click("btnEdit");
            bench_.click("updateBtn2");
            bench_.click(leave);
            bench_.click("btnProject");
            QVERIFY2(table()->item(0, 3)->text().contains("700.000, 800.000, 900.000"), leave);
        }
        bench_.click("btnMonitor");
        m("lumo.program.#0.execute")->setValue(this, false);
        bench_.click("btnProject");
        QCOMPARE(table()->item(0, 5)->text(), "不运行");
    }

    void selectors_areLockedDuringARun() {
        bench_.robot.setPower("on");
        bench_.load(R"([{"type":"delay","delaytime":100,"execute":true}])");
        const auto enabled = [this] {
            return QVector<bool>{bench_.find<QComboBox>("toolCmb")->isEnabled(),
                                 bench_.find<QComboBox>("wobjCmb")->isEnabled()};
        };
        bench_.at(50, [&] {
            QCOMPARE(enabled(), QVector<bool>({false, false}));
            bench_.makePage();
            QCOMPARE(enabled(), QVector<bool>({false, false}));
        });
        bench_.run();
        QCOMPARE(enabled(), QVector<bool>({true, true}));
    }

    /// A menu takes the click that closes it, a modal box takes all: Stop has to stay in reach.
    void whatOpensInARun_leavesStopInReach() {
        bench_.robot.setPower("on");
        bench_.load(R"([{"type":"delay","delaytime":1000,"execute":true}])");
        bench_.at(500, [this] {
            QWidget* const bar = table()->verticalScrollBar();
            QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(2, 2), bar->mapToGlobal(QPoint(2, 2)));
            QApplication::sendEvent(bar, &event);
            QCOMPARE(bench_.robot.nowMs(), qint64(500));  // no loop of a menu's own
            test::ExecutorBench::trigger("start", 0);
            QCOMPARE(bench_.boxes(), QStringList("当前不是空闲状态"));
            QVERIFY(!QApplication::activeModalWidget());
            bench_.click("btnPause");
        });
        bench_.run();
        QCOMPARE(bench_.robot.nowMs(), qint64(500));
        bench_.settle();
        test::ExecutorBench::closeBoxes();
    }

    void pageThatGoesAway_endsThePointPage() {
        openPointPage();
        bench_.makePage();
        QVERIFY(!isnew_pWgt);
        table()->selectRow(0);
        bench_.click("btnEdit");
        QCOMPARE(shownPage(), QByteArray("PointWidget"));
    }

    void pageThatGoesAway_closesTheDialogsOfTheTree_data() {
        QTest::addColumn<QString>("path");
        QTest::newRow("program") << "lumo.dialog.program";
        QTest::newRow("statement") << "lumo.dialog.statement";
    }

    void pageThatGoesAway_closesTheDialogsOfTheTree() {
        QFETCH(QString, path);
        QDialog dialog;
        dialog.open();
        m(path)->setValue(this, QVariant::fromValue<QWidget*>(&dialog));
        bench_.page.reset();
        QVERIFY(!dialog.isVisible());
        m(path)->setValue(this, QVariant());
    }

    void pageThatGoesAway_withADialogOfTheEditor_data() {
        QTest::addColumn<QByteArray>("button");
        QTest::newRow("new delay") << QByteArray("btnDelay");
        QTest::newRow("new start of welding") << QByteArray("btnOpenLaser");
        QTest::newRow("new output") << QByteArray("btnSetDO");
        QTest::newRow("edit") << QByteArray("btnEdit");
    }

    void pageThatGoesAway_withADialogOfTheEditor() {
        QFETCH(QByteArray, button);
        bench_.click("btnNew");
        bench_.answerName("seam");
        bench_.load(oneWeld);
        table()->selectRow(0);
        bench_.click(button);
        QVERIFY(QApplication::activeModalWidget());
        bench_.page.reset();
        bench_.time.settle();
        QVERIFY(!QApplication::activeModalWidget());
        QCOMPARE(bench_.types(), QStringList({"open", "close"}));
        QVERIFY(!m("lumo.dialog.program")->value().value<QObject*>());
        QVERIFY(!m("lumo.dialog.statement")->value().value<QObject*>());
        bench_.makePage();
        table()->selectRow(0);
        bench_.click("btnEdit");
        QVERIFY(QApplication::activeModalWidget());
    }

    void selector_isTheToolInForce() {
        m("rova.project.tool._list")->loadJson(this, QJsonArray({QJsonObject{{"name", "T1"}}}));
        m("lumo.toolset.end.name")->setValue(this, "T1");
        QSignalSpy handed(kordservice(), &KordService::handed);
        bench_.makePage();
        auto* tools = bench_.find<QComboBox>("toolCmb");
        QCOMPARE(tools->currentText(), "T1");
        QCOMPARE(handed.size(), 0);
        QTest::keyClick(tools, Qt::Key_Up);
        QCOMPARE(m("lumo.toolset.end.name")->getString(), "tool0");
        QCOMPARE(handed.size(), 1);
    }

    /// What stands beside the pages has its place, and no page makes the panel higher than itself.
    void room_isThatOfTheShownPage() {
        bench_.makePage();
        const int width = bench_.page->minimumSizeHint().width();
        for (const char* button : {"btnPort", "btnParamCfg", "btnMonitor", "btnDeviceControl", "btnBind"}) {
            bench_.click(button);
            bench_.time.settle();
            QVERIFY2(bench_.page->minimumSizeHint().width() == width, button);
        }
        const int stations = bench_.page->minimumSizeHint().height();
        bench_.click("btnDeviceControl");
        bench_.time.settle();
        QVERIFY(bench_.page->minimumSizeHint().height() > stations);
    }

    void selector_shortensWhatDoesNotFit_data() {
        QTest::addColumn<QString>("tool");
        QTest::addColumn<bool>("whole");
        QTest::newRow("usual") << "laser_head" << true;
        QTest::newRow("long") << "laser_head_with_wire_feeder" << false;
    }

    void selector_shortensWhatDoesNotFit() {
        QFETCH(QString, tool);
        m("rova.project.tool._list")->loadJson(this, QJsonArray({QJsonObject{{"name", tool}}}));
        m("lumo.toolset.end.name")->setValue(this, tool);
        bench_.makePage();
        const auto* tools = bench_.find<lumo::ElidedCombo>("toolCmb");
        QCOMPARE(tools->currentText(), tool);
        QTEST(tools->shownText() == tool, "whole");
        QVERIFY(tools->fontMetrics().horizontalAdvance(tools->shownText()) < tools->width());
    }

    void start_appliesBothSelectorsAgain() {
        bench_.load(oneWeld);
        m("lumo.toolset.end.name")->setValue(this, "left over");
        m("lumo.toolset.ref.name")->setValue(this, "left over");
        isEnable_moveorder = true;
        bench_.makePage();
        bench_.robot.setPower("on");
        QSignalSpy handed(kordservice(), &KordService::handed);
        bench_.click("btnStart");
        QCOMPARE(handed.size(), 2);
        QCOMPARE(m("lumo.toolset.end.name")->getString(), "tool0");
        QCOMPARE(m("lumo.toolset.ref.name")->getString(), "wobj0");
        bench_.settle();
    }

    void pendantKey_reachesTheTree() {
        ModuleObject* keys = kord::ControllerManager::cmdItemMobj("endtool.keypad.state_change", "notify");
        QSignalSpy clicked(m("lumo.keypad.next.clicked"), &ModuleObject::changed);
        keys->set(nullptr, "next", false)->trigger();
        bench_.time.advance(200);
        keys->set(nullptr, "next", true)->trigger();
        QCOMPARE(clicked.size(), 1);
    }

    void page_fitsEachLanguage_data() {
        QTest::addColumn<QString>("language");
        QTest::newRow("Chinese") << "";
        QTest::newRow("English") << "en";
        QTest::newRow("Russian") << "ru";
    }

    // Captions of the buttons are never shortened and nothing makes the page wider than the panel.
    void page_fitsEachLanguage() {
        QFETCH(QString, language);
        if (!language.isEmpty()) {
            QVERIFY(translator()->installQMTranslator(
                QStringLiteral(":/lumo/language/lumo_%1.qm").arg(language)));
        }
        bench_.makePage();
        qDeleteAll(qApp->findChildren<QTranslator*>());
        bench_.page->findChild<QLabel*>("lblProject")->setText(QString(60, 'W'));
        QVERIFY2(bench_.page->minimumSizeHint().width() <= 1024,
                 qPrintable(QString::number(bench_.page->minimumSizeHint().width())));
        QVERIFY(bench_.page->minimumSizeHint().height() <= 768);
        instantiatedCenterWidget()->resize(1024, 768);
        bench_.time.settle();
        for (const char* bar : {"navWidget", "topWgt"}) {
            for (const QToolButton* button : bench_.find<QWidget>(bar)->findChildren<QToolButton*>()) {
                const int room = button->width() - 4;
                QVERIFY2(button->fontMetrics().horizontalAdvance(button->text()) <= room,
                         qPrintable(button->text()));
                QVERIFY(button->height() >= 48 && button->width() >= 48);
            }
        }
    }
};

LUMO_TEST_MAIN(TestPanel)
#include "test_panel.moc"
