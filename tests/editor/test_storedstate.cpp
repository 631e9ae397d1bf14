#include "editorfixture.h"

#include "panel/projectfile.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonObject>

/// Whether the line above the table knows that the program differs from its file.
class TestStoredState : public QObject {
    Q_OBJECT

    EditorFixture editor_;

    QString shown() {
        editor_.bench.time.advance(1000);
        return editor_.find<QLabel>("lblStored")->text();
    }
    static void write(const QByteArray& content) {
        QFile file("project.json");
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

private slots:
    void init() {
        editor_.reset();
        editor_.load(
            R"([{"type":"close","note":"","execute":true},{"type":"delay","delaytime":1,"execute":true}])");
        lumo::saveProject("project.json");
        editor_.page->setProjectPath("project.json");
    }

    void withoutAProject_nothingIsSaid() {
        editor_.page->setProjectPath(QString());
        QCOMPARE(shown(), QString());
    }

    void changes_areNoticedAndTakenBack() {
        QCOMPARE(shown(), QString("已保存"));
        editor_.select(1);
        editor_.click("anotationBtn");
        QCOMPARE(shown(), QString("有未保存的更改"));
        editor_.click("anotationBtn");
        QCOMPARE(shown(), QString("已保存"));
        editor_.click("btnUp");
        QCOMPARE(shown(), QString("有未保存的更改"));
        editor_.click("btnDown");
        QCOMPARE(shown(), QString("已保存"));
    }

    void changesOfAStatement_areNoticedWithItsRow() {
        EditorFixture::program()->c(1)->set(this, "delaytime", 5);
        editor_.page->changeStatement(1);
        QCOMPARE(shown(), QString("有未保存的更改"));
    }

    void saving_isNoticed() {
        editor_.click("btnClose");
        QCOMPARE(shown(), QString("有未保存的更改"));
        lumo::saveProject("project.json");
        editor_.page->checkStored();
        QCOMPARE(editor_.find<QLabel>("lblStored")->text(), QString("已保存"));
    }

    void startSavesTheProject() {
        editor_.click("btnClose");
        QCOMPARE(shown(), QString("有未保存的更改"));
        EditorFixture::program()->loadJson(this, QJsonArray{QJsonObject{{"type", "delay"}}});
        editor_.bench.robot.setPower("on");
        editor_.click("btnStart");
        QCOMPARE(editor_.find<QLabel>("lblStored")->text(), QString("已保存"));
        QCOMPARE(shown(), QString("已保存"));
    }

    void theToolSetBelongsToTheProject() {
        const QJsonValue kept = m("lumo.toolset.end")->exportToJson();
        ModuleObject other("other");
        other.copyFrom(this, m("lumo.toolset.end"));
        other.set(this, "name", "torch");
        m("lumo.toolset.end")->copyFrom(this, &other);
        QCOMPARE(shown(), QString("有未保存的更改"));
        m("lumo.toolset.end")->loadJson(this, kept);
        QCOMPARE(shown(), QString("已保存"));
    }

    void files_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("text");
        const QByteArray statements =
            R"({"type":"close","note":"","execute":true},{"type":"delay","delaytime":1,"execute":true})";
        QTest::newRow("same statements, no tool set") << "[" + statements + "]"
                                                      << "已保存";
        QTest::newRow("with a byte-order mark") << "\xEF\xBB\xBF[" + statements + "]"
                                                << "已保存";
        QTest::newRow("empty, as a new project") << QByteArray("[]") << "有未保存的更改";
        QTest::newRow("damaged") << "[" + statements << "有未保存的更改";
        QTest::newRow("something else") << QByteArray(R"({"a":1})") << "有未保存的更改";
    }

    void files() {
        QFETCH(QByteArray, content);
        write(content);
        editor_.page->setProjectPath("project.json");
        QTEST(shown(), "text");
    }

    void aNewProject_isStored() {
        write("[]");
        EditorFixture::program()->loadJson(this, QJsonArray());
        editor_.page->setProjectPath("project.json");
        QCOMPARE(shown(), QString("已保存"));
    }

    void aFileThatWentAway_isNotStored() {
        QVERIFY(QFile::remove("project.json"));
        editor_.page->checkStored();
        QCOMPARE(shown(), QString("有未保存的更改"));
    }
};

LUMO_TEST_MAIN(TestStoredState)
#include "test_storedstate.moc"
