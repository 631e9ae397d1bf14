#include "pagebench.h"

#include "support/suite.h"

#include <QContextMenuEvent>
#include <QListView>
#include <QPointer>
#include <QScrollBar>
#include <QToolButton>

using test::contentOf;
using test::json;
using test::quoted;

namespace {

const QByteArray weld = quoted(
    "[{'type':'open','index':0,'weldspeed':'20','execute':true},"
    " {'type':'close','execute':true}]");
const QByteArray second = quoted("[{'type':'delay','delaytime':1000,'execute':true}]");
const QByteArray arc = quoted(
    "[{'type':'moveC','speed':20,'zone':2,'note':'','execute':true,"
    "  'point':{'trans':[0.5,0,0],'rot':[0,0,0]},"
    "  'point1':{'trans':[0,0,0],'rot':[0,0,0]}}]");

}  // namespace

/// The panel: projects, pages and navigation.
class TestPanel : public QObject {
    Q_OBJECT

    test::PageBench bench_;

    QComboBox* combo(const char* name) const { return test::child<QComboBox>(bench_.page.get(), name); }
    QWidget* shownPage() const {
        return test::child<QStackedWidget>(bench_.page.get(), "stackedWidget")->currentWidget();
    }
    bool isEditor() const { return bench_.find<ProgramWidget>() && bench_.find<QWidget>("topWgt"); }
    QTableWidget* table() const { return bench_.programTable(); }

    /// Name, program, resume data, messages (which are closed), number of reports, files.
    QString seen() {
        QString stop;
        for (const char* part : {"line", "programtype", "programmovetype", "openmiddlecolse"}) {
            stop += m("lumo.current")->c(part)->getString() + ' ';
        }
        stop += QString::number(m("lumo.current.startpoint")->size() + m("lumo.current.pausepoint")->size());
        const QString told = test::boxes().join(' ') + " | " + QString::number(bench_.problems.size());
        const QString all =
            bench_.shownProject() + " | " + bench_.types().join(' ') + " | " + stop + " | " + told;
        test::closeBoxes();
        bench_.problems.clear();
        const QString files = " reports | " + QDir().entryList(QDir::Files).join(' ');
        return table()->rowCount() == bench_.types().size() ? all + files : "the table differs";
    }

    /// Opens a weld that was stopped in its second line.
    void openStopped() {
        test::writeFile("seam.json", weld);
        bench_.openFile("seam.json");
        for (const char* field : {"programtype", "programmovetype", "startpoint.x", "pausepoint.x"}) {
            m("lumo.current")->set(this, field, "set");
        }
        m("lumo.current.line")->setValue(this, 1);
        m("lumo.current.openmiddlecolse")->setValue(this, true);
        QCOMPARE(seen(), stopped);
    }
    const QString stopped = "seam | open close | 1 set set true 2 |  | 0 reports | seam.json";

private slots:
    void init() { bench_.renew(); }

    void newProject_isEmpty_refusedCancelledOrFailedChangesNothing() {
        bench_.click("btnSave");
        QVERIFY(seen().startsWith("工程名 |  |") && QDir().isEmpty());
        openStopped();
        const QStringList refusals[] = {{"btnNew", "", "请输入新建工程名称"},
                                        {"btnSaveAs", "", "请输入另存为工程名称"},
                                        {"btnNew", QString(20, 'n'), "输入工程名过长，限制长度为20"},
                                        {"btnSaveAs", "seam", "该工程名已存在"}};
        for (const QStringList& refusal : refusals) {
            bench_.click(refusal[0].toLatin1());
            bench_.answerName(refusal[1]);
            QVERIFY(qobject_cast<QMessageBox*>(QApplication::activeModalWidget()));
            QCOMPARE(seen(), QString(stopped).replace("|  |", "| " + refusal[2] + " |"));
        }
        for (const char* button : {"btnNew", "btnSaveAs", "btnOpen"}) {
            bench_.click(button);
            QTest::keyClick(bench_.find<QDialog>(), Qt::Key_Escape);
            bench_.time.settle();
            QCOMPARE(bench_.page->findChildren<QDialog*>().size(), 0);
            QCOMPARE(seen(), stopped);
        }
        m("lumo.toolset.end.load.mass")->setValue(this, 3);
        bench_.click("btnNew");
        bench_.answerName("new");
        QCOMPARE(seen(), "new |  | 0 0 0 false 0 |  | 0 reports | new.json seam.json");
        QCOMPARE(contentOf("new.json").simplified(), QByteArray("[ ]"));
        QCOMPARE(m("lumo.toolset.end.load.mass")->getInt(), 3);
        QVERIFY(bench_.folder->remove());  // nothing can be written any more
        for (const char* button : {"btnNew", "btnSaveAs", "btnSave"}) {
            bench_.click(button);
            if (bench_.find<AddParamDialog>()) {
                bench_.answerName("copy");
            }
            QCOMPARE(seen(), "new |  | 0 0 0 false 0 |  | 1 reports | ");
        }
    }

    /// The resume line and the marker of the project before must not remain.
    void openedProject_beginsAtItsFirstLineWithItsTools() {
        openStopped();
        m("lumo.execute.line")->setValue(this, 1);
        QCOMPARE(test::columnOf(table(), 0), QStringList({"", "-->"}));
        m("lumo.toolset.end.trans.#0")->setValue(this, 0.3);
        const std::pair<const char*, QString> toolsets[] = {
            {"{'type':'close'}", "tool0 wobj0 0.3"},  // no tool set: the one in force stays
            {"{'end':{'name':'tool0','trans':[0.2,0,0]},'ref':{'name':'wobj0'}}", "tool0 wobj0 0.2"},
            {"{'end':{'name':'T1','trans':[0.1,0,0]},'ref':{'name':'W1'}}", "T1 W1 0.1"},
            {"{'ref':{'name':'W2'}}", "tool0 W2 0"}};
        for (const auto& [toolset, expected] : toolsets) {
            test::writeFile("new.a.json", quoted(QByteArray("[{'type':'close'},") + toolset + "]"));
            bench_.openFile("new.a.json");
            QVERIFY(seen().startsWith("new | close") && seen().contains("| 0 0 0 false 0 |  | 0 reports"));
            QCOMPARE(LumoWidget::filePath, QDir::current().filePath("new.a.json"));
            QVERIFY(!test::columnOf(table(), 0).contains("-->"));
            QVERIFY(table()->selectionModel()->selectedRows().size() == 1 && table()->currentRow() == 0);
            const ModuleObject* now = m("lumo.toolset");
            const QString x = now->r("end.trans.#0")->getString();
            const QString names = combo("toolCmb")->currentText() + ' ' + combo("wobjCmb")->currentText();
            QCOMPARE(names + ' ' + x, expected);
            QCOMPARE(now->r("end.name")->getString() + ' ' + now->r("ref.name")->getString(), names);
            const ModuleObject* told = kordservice()->dataNode("pel.coord.toolset");
            QVERIFY(x == "0.3" || test::text(told) == test::text(now));
        }
    }

    void fileThatIsNoProject_isNeitherOpenedNorOverwritten() {
        openStopped();
        const QByteArray other = quoted("{'name':'steel'}");
        test::writeFile("other.json", other);
        test::writeFile("lumo_param.json", "[]");
        QVERIFY(QFile::link("lumo_param.json", "alias.json"));
        for (const QString name : {"other.json", "missing.json", "lumo_param.json", "alias.json"}) {
            bench_.openFile(name);
            QVERIFY(seen().contains("| open close | 1 set set true 2 | 无法打开工程：" + name + " | 1 rep"));
        }
        bench_.click("btnSave");
        QVERIFY(seen().contains("| 保存成功 | 0 reports |"));
        QCOMPARE(contentOf("other.json"), other);
        bench_.click("btnOpen");
        bench_.time.settle();
        const auto* list = test::child<QListView>(bench_.find<QFileDialog>(), "listView");
        QVERIFY(!(list->model()->index(0, 0, list->rootIndex()).flags() & Qt::ItemIsEditable));
        QVERIFY(!bench_.find<QAbstractButton>("newFolderButton"));
    }

    /// Tool selectors are locked. No menu or modal box opens: it would take clicks on Stop.
    void projectButtonsDuringRun_changeNothing() {
        openStopped();
        bench_.robot.setPower("on");
        bench_.load(second);
        test::writeFile("seam.json", second);
        for (const QByteArray button : {"btnNew", "btnOpen", "btnSaveAs"}) {
            bench_.click(button);
            bench_.at(500, [&] {
                if (bench_.find<QFileDialog>()) {
                    bench_.answerFile("seam.json");
                } else {
                    bench_.answerName(button);
                }
                QCOMPARE(test::boxes(), QStringList("当前不是空闲状态").mid(button == "btnSaveAs" ? 1 : 0));
                bench_.makePage();
                // Only hidden while something runs; a host may press them.
                for (const char* hidden : {"btnNew", "btnOpen"}) {
                    QVERIFY(!bench_.find<QAbstractButton>(hidden));
                    test::child<QAbstractButton>(bench_.page.get(), hidden)->click();
                }
                bench_.trigger("start", 0);
                QWidget* const bar = table()->verticalScrollBar();
                QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(2, 2),
                                        bar->mapToGlobal(QPoint(2, 2)));
                QApplication::sendEvent(bar, &event);
                QCOMPARE(bench_.robot.nowMs(), qint64(500));  // no event loop of a menu
                QCOMPARE(test::boxes(), QStringList("当前不是空闲状态"));
                QVERIFY(!bench_.find<AddParamDialog>() && !bench_.find<QFileDialog>());
                QVERIFY(!QApplication::activeModalWidget());
                QVERIFY(!combo("toolCmb")->isEnabled() && !combo("wobjCmb")->isEnabled());
                bench_.click("btnPause");
            });
            bench_.run();
            QCOMPARE(bench_.robot.nowMs(), qint64(500));
            QVERIFY(combo("toolCmb")->isEnabled() && combo("wobjCmb")->isEnabled());
            QVERIFY(seen().startsWith("seam | delay | 0") && contentOf("seam.json") == second);
        }
        QVERIFY(contentOf("btnSaveAs.json").contains("1000") && !QFile::exists("btnNew.json"));
    }

    /// A new page saves to the project that the page before it had opened.
    void project_isSavedByButtonAndByStart_withTheToolsShown() {
        openStopped();
        QVERIFY(QFile::remove("seam.json"));
        bench_.click("btnSave");
        QVERIFY(seen().endsWith("| 保存成功 | 0 reports | seam.json"));
        bench_.time.advance(1000);
        QCOMPARE(bench_.find<QLabel>("lblStored")->text(), "已保存");
        combo("wobjCmb")->addItem("another");  // in no list of the host: only the name changes
        combo("wobjCmb")->setCurrentText("another");
        bench_.time.advance(1000);
        QCOMPARE(bench_.find<QLabel>("lblStored")->text(), "未保存");
        bench_.makePage();
        QCOMPARE(bench_.shownProject(), "seam");
        const QString shown = test::text(m("lumo.default.default_toolset"));
        bench_.load(second);
        m("lumo.current.line")->setValue(this, 0);
        m("lumo.toolset")->loadJson(this, json("{'end':{'name':'left over'},'ref':{'name':'left over'}}"));
        bench_.robot.setPower("on");
        bench_.click("btnStart");
        QVERIFY(contentOf("seam.json").contains("1000"));
        QCOMPARE(test::text(m("lumo.toolset")), shown);
        QCOMPARE(test::text(kordservice()->dataNode("pel.coord.toolset")), shown);
        bench_.waitUntilIdle();
    }

    /// Hidden pages do not make the panel larger. The last two pages of a kind are kept: they may be saving.
    void visitedPage_leavesTheEditorAsItWas() {
        const QSize size = bench_.page->minimumSizeHint();
        QVERIFY(!bench_.page->styleSheet().isEmpty());  // the theme's
        for (const QByteArray button :
             {"btnPort", "btnParamCfg", "btnMonitor", "btnDeviceControl", "btnBind"}) {
            QList<QPointer<QWidget>> visited;
            for (int visit = 0; visit < 4; ++visit) {
                bench_.click(button);
                visited << shownPage();
                QVERIFY(!bench_.find<QWidget>("topWgt") && bench_.find<QToolButton>(button)->isChecked());
                bench_.time.settle();
                bench_.click("btnProject");
                bench_.time.settle();
                QVERIFY(isEditor() && bench_.page->minimumSizeHint() == size);
            }
            const bool isMadeForAVisit = button == "btnPort" || button == "btnParamCfg";
            QVERIFY(visited[2] && visited[3] && (visited[2] != visited[3]) == isMadeForAVisit);
            QCOMPARE(!visited[0] && !visited[1], isMadeForAVisit);
        }
    }

    void message_saysLineReasonAndRemedy_leadsThere_andDimsWhatItBlocks() {
        const auto isDimmed = [this] { return bench_.page->findChild<QWidget*>("veil") != nullptr; };
        const auto told = [] {
            const auto* const box = test::shown<QMessageBox>();
            return box ? QString(box->text() + '|' + box->informativeText()).remove("\n\n") : QString();
        };
        const QString busy = "当前不是空闲状态|第 %1 行正在执行。请等待其结束，或先按“停止”，然后再试。";
        bench_.robot.setPower("on");
        bench_.load("delay 100; delay 100; moveL to=1,0,0");
        bench_.robot.codes = {-2};
        for (const int line : {0, 1}) {  // the standing message is renewed
            bench_.at(50 + 100 * line, [&] { bench_.trigger("start", 0); });
            bench_.at(60 + 100 * line, [&, line] {
                QCOMPARE(told(), busy.arg(line + 1));
                QVERIFY(!isDimmed());  // Stop has to be seen and pressed
            });
        }
        bench_.at(190, [] { test::closeBoxes(); });
        bench_.click("btnMonitor");
        bench_.run();
        QCOMPARE(told(),
                 "机器人运动错误：-0x2|第 3 行：an axis would pass its limit on the way。处理方法：teach the "
                 "point with the arm in another posture, or go there with a joint line first。");
        test::click(test::child(test::shown<QMessageBox>(), "btnWay"));
        QVERIFY(isEditor() && test::boxes().isEmpty());
        QCOMPARE(table()->selectionModel()->selectedRows().value(0).row(), 2);
        bench_.robot.setPower("off");
        bench_.once(2);
        QCOMPARE(told(), "机器人未上电|请松开急停，打开驱动电源，然后再试。");
        QVERIFY(test::child(test::shown<QMessageBox>(), "btnWay")->isHidden() && isDimmed());
        test::closeBoxes();
        QVERIFY(!isDimmed());
    }

    /// The second point is stored at once. Changes from elsewhere during the visit stay.
    void pointPage_storesFieldsOnlyOnOk() {
        bench_.load(arc);
        bench_.robot.standAt({0.7, 0.8, 0.9});
        for (const QByteArray leave : {"cancelBtn", "btnParamCfg", "btnProject", "", "okayBtn"}) {
            m("lumo.program.#0.point1.trans.#0")->setValue(this, 0);
            table()->selectRow(0);
            bench_.click("btnEdit");
            const QPointer<QWidget> pointPage = shownPage();
            QVERIFY(!isEditor() && isnew_pWgt);
            auto* speed = bench_.find<QLineEdit>("lineEditSpeed");
            QVERIFY(!speed->hasFocus());
            speed->selectAll();
            QTest::keyClicks(speed, "33");
            bench_.click("updateBtn2");
            m("lumo.program.#0.execute")->setValue(this, false);
            if (leave.isEmpty()) {
                bench_.makePage();
            } else {
                bench_.click(leave);
            }
            bench_.time.settle();
            QVERIFY(!pointPage && !isnew_pWgt);
            bench_.click("btnProject");
            QVERIFY(isEditor());
            QCOMPARE(m("lumo.program.#0.speed")->getInt(), leave == "okayBtn" ? 33 : 20);
            const QString details = table()->item(0, 3)->text();
            QVERIFY2(details.contains("v33") == (leave == "okayBtn"), leave);
            QVERIFY2(details.contains("700.000, 800.000, 900.000"), leave);
            QCOMPARE(table()->item(0, 5)->text(), "不运行");
        }
    }

    void deletedPage_closesItsDialogs() {
        openStopped();
        for (const char* button :
             {"btnNew", "btnOpen", "btnSaveAs", "btnDelay", "btnOpenLaser", "btnSetDO", "btnEdit"}) {
            table()->selectRow(0);
            bench_.click(button);
            QVERIFY2(QApplication::activeModalWidget(), button);
            bench_.page.reset();
            bench_.time.settle();
            QVERIFY2(!QApplication::activeModalWidget(), button);
            QVERIFY(!m("lumo.dialog.program")->value().value<QObject*>());
            QVERIFY(!m("lumo.dialog.statement")->value().value<QObject*>());
            bench_.makePage();
            QCOMPARE(seen(), stopped);
        }
    }
};

LUMO_TEST(TestPanel)
#include "test_panel.moc"
