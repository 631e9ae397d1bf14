#include "editorfixture.h"
#include "panel/projectfile.h"

#include <QFile>

/// Whether the line above the table knows that the program differs from its file.
class TestStoredState : public EditorTest {
    Q_OBJECT

    const QString stored_ = "已保存", changed_ = "有未保存的更改";

    QString toldAtOnce() const { return find<QLabel>("lblStored")->text(); }
    QString told() {
        bench.time.advance(1000);
        return toldAtOnce();
    }

private slots:
    void init() {
        reset();
        load("[{'type':'close','note':'','execute':true},{'type':'delay','delaytime':1,'execute':true}]");
        QVERIFY(lumo::saveProject("project.json"));
        page->setProjectPath("project.json");
    }

    void everyChange_isNoticedAndTakenBack() {
        QCOMPARE(told(), stored_);
        for (const char* steps : {"1 anotationBtn", "0 anotationBtn", "btnDown", "btnCopy btnPaste"}) {
            act(steps);
            QCOMPARE(told(), changed_);
            init();
            QCOMPARE(told(), stored_);
        }
        act("btnDown");
        QCOMPARE(told(), changed_);
        act("btnUp");
        QCOMPARE(told(), stored_);
        line(1)->set(this, "delaytime", 5);
        page->changeStatement(1);
        QCOMPARE(told(), changed_);
        QVERIFY(lumo::saveProject("project.json"));
        page->checkStored();
        QCOMPARE(toldAtOnce(), stored_);

        ModuleObject* const tool = m("lumo.toolset.end");
        const QJsonValue kept = tool->exportToJson();
        tool->loadJson(this, json("{'name':'torch'}"));
        QCOMPARE(told(), changed_);
        tool->loadJson(this, kept);
        QCOMPARE(told(), stored_);
        page->setProjectPath(QString());
        QCOMPARE(told(), "");
    }

    void start_savesTheProject() {
        load("[{'type':'delay'}]");
        QCOMPARE(told(), changed_);
        bench.robot.setPower("on");
        act("btnStart");
        QCOMPARE(toldAtOnce(), stored_);
        QCOMPARE(told(), stored_);
    }

    void file_isComparedAsItIs() {
        const QByteArray same = QJsonDocument(program()->exportToJson().toArray()).toJson();
        const std::pair<QByteArray, QString> files[] = {{same, stored_},  // without a tool set
                                                        {"\xEF\xBB\xBF" + same, stored_},
                                                        {"[]", changed_},
                                                        {same.chopped(3), changed_},
                                                        {"{'a':1}", changed_}};
        for (const auto& [content, expected] : files) {
            writeFile("project.json", content);
            page->setProjectPath("project.json");
            QVERIFY2(told() == expected, content);
        }
        writeFile("project.json", "[]");
        load("[]");
        QCOMPARE(told(), stored_);
        QVERIFY(QFile::remove("project.json"));
        page->checkStored();
        QCOMPARE(toldAtOnce(), changed_);
    }
};

LUMO_TEST(TestStoredState)
#include "test_storedstate.moc"
