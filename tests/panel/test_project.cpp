#include "pagebench.h"

#include "executor/lumoexecutor.h"

#include <QComboBox>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QListView>
#include <QTimer>

namespace {

const QByteArray twoLines = R"([{"type":"open","index":0,"execute":true},{"type":"close","execute":true}])";
const QByteArray withTool = R"([{"type":"delay","delaytime":"5","execute":true},
    {"end":{"name":"T1","trans":[0.1,0,0]},"ref":{"name":"W1"}}])";

}  // namespace

/// Creating, opening and saving projects with the buttons of the page.
class TestProject : public QObject {
    Q_OBJECT

    test::PageBench bench_;

    QComboBox* combo(const char* name) const {
        return bench_.page->findChild<QComboBox*>(QLatin1String(name));
    }
    static void pretendPaused() {
        m("lumo.current.line")->setValue(nullptr, 7);
        m("lumo.current.openmiddlecolse")->setValue(nullptr, true);
    }
    static bool isPaused() {
        return m("lumo.current.line")->getInt() == 7 && m("lumo.current.openmiddlecolse")->getBool();
    }
    void openFile(const QString& name) {
        bench_.click("btnOpen");
        bench_.answerFile(name);
    }

private slots:
    void init() { bench_.renew(); }

    void new_makesAnEmptyProject() {
        bench_.load(twoLines);
        m("lumo.toolset.end.load.mass")->setValue(this, 3);
        pretendPaused();
        QVERIFY(!bench_.find<QPushButton>("btnMoveJ")->isEnabled());
        bench_.click("btnNew");
        bench_.answerName("1234567890123456789");
        QCOMPARE(bench_.content("1234567890123456789.json").simplified(), QByteArray("[ ]"));
        QCOMPARE(LumoWidget::filePath, "1234567890123456789.json");
        QCOMPARE(bench_.shownProject(), "1234567890123456789");
        QCOMPARE(bench_.rows(), 0);
        QCOMPARE(m("lumo.toolset.end.load.mass")->getInt(), 3);
        QCOMPARE(m("lumo.current.line")->getInt(-1), 0);
        QVERIFY(!m("lumo.current.openmiddlecolse")->getBool());
        QVERIFY(bench_.find<QPushButton>("btnMoveJ")->isEnabled());
        QVERIFY(isEnable_moveorder);
        QCOMPARE(bench_.boxes(), QStringList());
    }

    void name_isRefused_data() {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("text");
        for (const char* button : {"btnNew", "btnSaveAs"}) {
            const auto row = [button](const char* tag, const QString& name, const QString& title,
                                      const QString& text) {
                QTest::addRow("%s: %s", button, tag) << QByteArray(button) << name << title << text;
            };
            row("empty", "", "",
                button == QByteArray("btnNew") ? "请输入新建工程名称" : "请输入另存为工程名称");
            row("20 characters", "12345678901234567890", "提示", "输入工程名过长，限制长度为20");
            row("existing", "old", "提示", "该工程名已存在");
            row("settings", "lumo_signalsConfig", "提示", "该工程名已存在");
            row("in another folder", "../old2", "提示", "该工程名已存在");
        }
    }

    void name_isRefused() {
        QFETCH(QByteArray, button);
        QFETCH(QString, name);
        bench_.load(twoLines);
        pretendPaused();
        bench_.write("old.txt", "keep");
        bench_.click(button);
        bench_.answerName(name);
        const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        QVERIFY(box);
        QTEST(box->windowTitle(), "title");
        QTEST(box->text(), "text");
        QCOMPARE(QDir().entryList(QDir::Files), QStringList("old.txt"));
        QCOMPARE(bench_.rows(), 2);
        QVERIFY(isPaused());
        QVERIFY(LumoWidget::filePath.isEmpty());

        // The operator begins again with the button.
        bench_.closeBoxes();
        bench_.click(button);
        bench_.answerName("new");
        QVERIFY(QFile::exists("new.json"));
    }

    void name_isCancelled_data() {
        QTest::addColumn<QByteArray>("button");
        QTest::newRow("new") << QByteArray("btnNew");
        QTest::newRow("save as") << QByteArray("btnSaveAs");
    }

    void name_isCancelled() {
        QFETCH(QByteArray, button);
        bench_.load(twoLines);
        bench_.click(button);
        bench_.answerName("new", QDialogButtonBox::Cancel);
        bench_.click(button);
        QTest::keyClick(bench_.find<AddParamDialog>(), Qt::Key_Escape);
        bench_.time.settle();
        QVERIFY(!bench_.page->findChild<AddParamDialog*>());
        QVERIFY(QDir().isEmpty());
        QCOMPARE(bench_.rows(), 2);
    }

    void new_thatCannotBeWritten_changesNothing() {
        bench_.load(twoLines);
        pretendPaused();
        bench_.click("btnNew");
        QVERIFY(bench_.folder->remove());  // the disk is gone
        bench_.answerName("seam");
        QCOMPARE(bench_.problems.size(), 1);
        QCOMPARE(bench_.problems[0][0].toString(), "seam.json");
        QVERIFY(LumoWidget::filePath.isEmpty());
        QCOMPARE(bench_.rows(), 2);
        QVERIFY(isPaused());
        QCOMPARE(bench_.boxes(), QStringList());
    }

    void open_bringsProgramAndToolset() {
        m("rova.project.tool._list")->loadJson(this, QJsonArray());
        bench_.write("seam.a.json", withTool);
        bench_.load(twoLines);
        pretendPaused();
        openFile("seam.a.json");
        QCOMPARE(bench_.types(), QStringList("delay"));
        QCOMPARE(bench_.rows(), 1);
        QCOMPARE(LumoWidget::filePath, QDir::current().filePath("seam.a.json"));
        QCOMPARE(bench_.shownProject(), "seam");
        QVERIFY(!isPaused());
        // Neither the host nor the page knew this tool: its values are the file's.
        QCOMPARE(combo("toolCmb")->currentText(), "T1");
        QCOMPARE(combo("wobjCmb")->currentText(), "W1");
        QCOMPARE(m("lumo.toolset.end.trans.#0")->getDouble(), 0.1);
        QCOMPARE(kordservice()->dataNode("pel.coord.toolset")->exportToJson(),
                 m("lumo.toolset")->exportToJson());
        QVERIFY(bench_.find<QPushButton>("btnMoveJ")->isEnabled());
    }

    /// Start is not to ask about a line, nor the marker to point at one, that was another program's.
    void open_beginsAtTheFirstLine() {
        bench_.load(twoLines);
        m("lumo.execute.line")->setValue(this, 1);
        auto* table = bench_.programTable();
        const auto isMarked = [table](int row) { return !table->item(row, 0)->text().isEmpty(); };
        QVERIFY(isMarked(1));
        bench_.write("seam.json", twoLines);
        openFile("seam.json");
        QCOMPARE(table->selectionModel()->selectedRows().size(), 1);
        QCOMPARE(table->selectionModel()->selectedRows().first().row(), 0);
        QVERIFY(!isMarked(0) && !isMarked(1));
    }

    void open_withTheToolInForce_tellsTheRobot() {
        bench_.write("seam.json", R"([{"end":{"name":"tool0","trans":[0.2,0,0]},"ref":{"name":"wobj0"}}])");
        openFile("seam.json");
        QCOMPARE(combo("toolCmb")->count(), 1);
        QCOMPARE(m("lumo.toolset.end.trans.#0")->getDouble(), 0.2);
        QCOMPARE(kordservice()->dataNode("pel.coord.toolset")->r("end.trans.#0")->getDouble(), 0.2);
    }

    void open_withoutToolset_keepsTheOneInForce() {
        m("lumo.toolset.end.trans.#0")->setValue(this, 0.3);
        bench_.write("seam.json", twoLines);
        openFile("seam.json");
        QCOMPARE(bench_.types(), QStringList({"open", "close"}));
        QCOMPARE(m("lumo.toolset.end.trans.#0")->getDouble(), 0.3);
        QCOMPARE(combo("toolCmb")->currentText(), "tool0");
    }

    void open_completesTheToolSet_data() {
        QTest::addColumn<QByteArray>("toolset");
        QTest::addColumn<QString>("tool");
        QTest::addColumn<QString>("wobj");
        QTest::newRow("no work object") << QByteArray(R"({"end":{"name":"T1"}})") << "T1"
                                        << "wobj0";
        QTest::newRow("no tool") << QByteArray(R"({"ref":{"name":"W1"}})") << "tool0"
                                 << "W1";
        QTest::newRow("a number") << QByteArray(R"({"end":5,"ref":{"name":"W1"}})") << "tool0"
                                  << "W1";
    }

    void open_completesTheToolSet() {
        QFETCH(QByteArray, toolset);
        bench_.write("seam.json", R"([{"type":"close","execute":true},)" + toolset + ']');
        openFile("seam.json");
        QCOMPARE(bench_.types(), QStringList("close"));
        QTEST(m("lumo.toolset.end.name")->getString(), "tool");
        QTEST(m("lumo.toolset.ref.name")->getString(), "wobj");
        // Both selectors go on working.
        for (const char* name : {"toolCmb", "wobjCmb"}) {
            combo(name)->addItem("another");
            combo(name)->setCurrentText("another");
        }
        QCOMPARE(m("lumo.toolset.end.name")->getString(), "another");
        QCOMPARE(m("lumo.toolset.ref.name")->getString(), "another");
    }

    void open_ofWhatIsNoProject_changesNothing_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("missing") << "missing.json" << QByteArray();
        QTest::newRow("cut off") << "other.json" << QByteArray("[{\"type\":\n");
        QTest::newRow("another kind") << "other.json" << QByteArray(R"({"name":"steel"})");
        QTest::newRow("no statement") << "other.json" << QByteArray(R"([{"type":"dance"}])");
        QTest::newRow("settings") << "lumo_param.json" << QByteArray(R"([{"name":"steel"}])");
        QTest::newRow("no settings yet") << "lumo_param.json" << QByteArray("[]");
    }

    void open_ofWhatIsNoProject_changesNothing() {
        QFETCH(QString, name);
        QFETCH(QByteArray, text);
        bench_.write("seam.json", twoLines);
        openFile("seam.json");
        pretendPaused();
        if (!text.isEmpty()) {
            bench_.write(name, text);
        }
        openFile(name);
        QCOMPARE(bench_.problems.size(), 1);
        QVERIFY(bench_.problems[0][0].toString().endsWith(name));
        QCOMPARE(bench_.boxes(), QStringList("无法打开工程：" + name));
        test::ExecutorBench::closeBoxes();
        QCOMPARE(bench_.rows(), 2);
        QVERIFY(isPaused());
        QCOMPARE(bench_.shownProject(), "seam");
        bench_.click("btnSave");
        QCOMPARE(bench_.boxes(), QStringList("保存成功"));
        QCOMPARE(bench_.content(name), text.isEmpty() ? QByteArray("(no file)") : text);
        QCOMPARE(QDir().entryList(QDir::Files).size(), text.isEmpty() ? 1 : 2);  // nothing to be kept aside
    }

    void fileDialog_changesNoFiles() {
        bench_.write("seam.json", twoLines);
        bench_.click("btnOpen");
        bench_.time.settle();
        auto* const list = bench_.find<QFileDialog>()->findChild<QListView*>("listView");
        const QModelIndex file = list->model()->index(0, 0, list->rootIndex());
        QCOMPARE(file.data().toString(), "seam.json");
        list->setCurrentIndex(file);
        list->setFocus();
        QTimer::singleShot(500, this, [] {
            if (auto* const question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                question->button(QMessageBox::Yes)->click();
            }
        });
        QTest::keyClick(list, Qt::Key_Delete);
        bench_.time.advance(1000);
        QVERIFY(QFile::exists("seam.json"));
        QVERIFY(!(file.flags() & Qt::ItemIsEditable));
        QVERIFY(!bench_.find<QAbstractButton>("newFolderButton")->isEnabled());
    }

    /// One that no list offers changes its name alone.
    void aToolOfNoList_isAChange() {
        bench_.write("seam.json", withTool);
        openFile("seam.json");
        for (const char* name : {"toolCmb", "wobjCmb"}) {
            bench_.click("btnSave");
            bench_.time.advance(1000);
            QCOMPARE(bench_.find<QLabel>("lblStored")->text(), "已保存");
            combo(name)->addItem("another");
            combo(name)->setCurrentText("another");
            bench_.time.advance(1000);
            QCOMPARE(bench_.find<QLabel>("lblStored")->text(), "有未保存的更改");
        }
    }

    void open_isCancelled() {
        bench_.load(twoLines);
        bench_.click("btnOpen");
        QTest::keyClick(bench_.find<QFileDialog>(), Qt::Key_Escape);
        bench_.time.settle();
        QVERIFY(!bench_.page->findChild<QFileDialog*>());
        QCOMPARE(bench_.rows(), 2);
        QVERIFY(LumoWidget::filePath.isEmpty());
    }

    void whileRunning_neitherNewNorOpen_data() {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<bool>("before");
        for (const char* button : {"btnNew", "btnOpen"}) {
            QTest::addRow("%s, running already", button) << QByteArray(button) << true;
            QTest::addRow("%s, started under the dialog", button) << QByteArray(button) << false;
        }
    }

    void whileRunning_neitherNewNorOpen() {
        QFETCH(QByteArray, button);
        QFETCH(bool, before);
        bench_.write("seam.json", twoLines);
        bench_.robot.setPower("on");
        bench_.load(R"([{"type":"delay","delaytime":1000,"execute":true}])");
        bench_.at(500, [&] {
            QCOMPARE(bench_.state(), "busy");
            if (before) {
                bench_.click(button);
                QVERIFY(!bench_.page->findChild<AddParamDialog*>());
                QVERIFY(!bench_.page->findChild<QFileDialog*>());
            } else if (button == "btnNew") {
                bench_.answerName("new");
            } else {
                bench_.answerFile("seam.json");
            }
            QCOMPARE(bench_.boxes(), QStringList("当前不是空闲状态"));
        });
        if (!before) {
            bench_.click(button);
        }
        bench_.run();
        QCOMPARE(bench_.boxes(), QStringList("当前不是空闲状态"));
        QCOMPARE(bench_.types(), QStringList("delay"));
        QVERIFY(LumoWidget::filePath.isEmpty());
        QCOMPARE(QDir().entryList(QDir::Files), QStringList("seam.json"));
    }

    void save_needsAnOpenProject() {
        bench_.load(twoLines);
        bench_.click("btnSave");
        QCOMPARE(bench_.boxes(), QStringList("当前没有已打开工程"));
        QVERIFY(QDir().isEmpty());
    }

    void save_writesTheProgramAndTheToolset() {
        bench_.write("seam.json", withTool);
        openFile("seam.json");
        m("lumo.program.#0.delaytime")->setValue(this, "77");
        m("lumo.toolset.end.trans.#0")->setValue(this, 0.5);
        bench_.click("btnSave");
        QCOMPARE(bench_.boxes(), QStringList("保存成功"));
        const QJsonArray saved = QJsonDocument::fromJson(bench_.content("seam.json")).array();
        QCOMPARE(saved.size(), 2);
        QCOMPARE(saved[0].toObject()["delaytime"].toString(), "77");
        QCOMPARE(saved[1].toObject()["end"].toObject()["trans"].toArray()[0].toDouble(), 0.5);
    }

    void save_thatFails_doesNotPretend() {
        bench_.write("seam.json", withTool);
        openFile("seam.json");
        QVERIFY(QFile::remove("seam.json"));
        QVERIFY(QDir().mkpath("seam.json/in the way"));
        bench_.click("btnSave");
        QCOMPARE(bench_.boxes(), QStringList());
        QCOMPARE(bench_.problems.size(), 1);
    }

    void saveAs_leavesTheOpenProject_evenWhileRunning() {
        bench_.write("seam.json", withTool);
        openFile("seam.json");
        bench_.robot.setPower("on");
        bench_.load(R"([{"type":"delay","delaytime":1000,"execute":true}])");
        bench_.at(500, [&] {
            bench_.click("btnSaveAs");
            bench_.answerName("copy");
        });
        bench_.run();
        QCOMPARE(QJsonDocument::fromJson(bench_.content("copy.json")).array().size(), 2);
        QVERIFY(bench_.content("copy.json").contains("1000"));
        QVERIFY(!bench_.content("seam.json").contains("1000"));
        QCOMPARE(LumoWidget::filePath, QDir::current().filePath("seam.json"));
        QCOMPARE(bench_.shownProject(), "seam");
        QCOMPARE(bench_.boxes(), QStringList());
    }

    void saveAs_thatFails_isReported() {
        bench_.load(twoLines);
        bench_.click("btnSaveAs");
        QVERIFY(bench_.folder->remove());
        bench_.answerName("copy");
        QCOMPARE(bench_.problems.size(), 1);
        QCOMPARE(bench_.boxes(), QStringList());
    }

    // What start saves goes to the project that the page before it had opened.
    void secondPage_goesOnWithTheProject() {
        bench_.write("seam.json", withTool);
        openFile("seam.json");
        bench_.makePage();
        QCOMPARE(bench_.shownProject(), "seam");
        QVERIFY(bench_.find<QPushButton>("btnMoveJ")->isEnabled());
        QCOMPARE(combo("toolCmb")->currentText(), "tool0");
        m("lumo.program.#0.delaytime")->setValue(this, "77");
        bench_.robot.setPower("on");
        bench_.click("btnStart");
        QVERIFY(bench_.content("seam.json").contains("77"));
    }

    void pageThatGoesAway_takesItsDialogsAlong_data() {
        QTest::addColumn<QByteArray>("button");
        QTest::newRow("new") << QByteArray("btnNew");
        QTest::newRow("open") << QByteArray("btnOpen");
        QTest::newRow("save as") << QByteArray("btnSaveAs");
    }

    void pageThatGoesAway_takesItsDialogsAlong() {
        QFETCH(QByteArray, button);
        bench_.click(button);
        QVERIFY(QApplication::activeModalWidget());
        bench_.page.reset();
        bench_.time.settle();
        QVERIFY(!QApplication::activeModalWidget());
        QVERIFY(QDir().isEmpty());
    }
};

LUMO_TEST_MAIN(TestProject)
#include "test_project.moc"
