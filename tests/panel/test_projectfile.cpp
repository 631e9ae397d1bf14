#include "panel/projectfile.h"

#include "pagebench.h"
#include "support/suite.h"

using lumo::NameFault;
using test::contentOf;
using test::json;
using test::text;

/// What project files hold, and which names they can have.
class TestProjectFile : public QObject {
    Q_OBJECT

    test::PageBench bench_;

    /// What the file brings into the tree, or "LINE:COLUMN reason" of the only report.
    QString opened(const QString& path) {
        m("lumo.program")->clear(this);
        m("lumo.toolset")->copyFrom(this, m("lumo.default.default_toolset"));
        bench_.problems.clear();
        const auto project = lumo::readProject(path);
        if (!project) {
            const QVariantList said = bench_.problems.size() == 1 ? bench_.problems[0] : QVariantList();
            return QString("%1:%2 ").arg(said.value(1).toInt()).arg(said.value(2).toInt()) +
                   said.value(3).toString();
        }
        lumo::loadProject(this, *project);
        return QString("%1 with %2, %3")
            .arg(bench_.types().join(' '), m("lumo.toolset.end.name")->getString(),
                 m("lumo.toolset.ref.name")->getString());
    }

private slots:
    void init() { bench_.clear(); }

    void savedAndOpened_losesNothing() {
        const QByteArray program =
            "[{'type':'moveCC','execute':true,'speed':199,'toolset':{'end':{'name':'','trans':[0,0,0.1]}},"
            "  'point':{'trans':[0.1,-0.25,1e-9],'rot':[3.141592653589793,0,-1.5]},'point1':{}},"
            " {'type':'close','execute':false,'note':'焊缝 \\u0022A\\u0022\\n\\tшов, 1/2 \\\\ 😀'},"
            " {'type':'delay','delaytime':'1500','of a later version':[null,{},[],[[1]],true]}]";
        for (const QByteArray& content : {program, QByteArray("[]")}) {
            m("lumo.program")->loadJson(this, json(content));
            m("lumo.toolset.end.trans.#2")->setValue(this, 0.12);
            QVERIFY(lumo::saveProject("a.json"));
            QCOMPARE(contentOf("a.json"), QJsonDocument(lumo::projectDocument().toArray()).toJson());
            QVERIFY(opened("a.json").endsWith(" with tool0, wobj0"));
            QCOMPARE(text(m("lumo.program")), text(json(content)));
            QCOMPARE(m("lumo.toolset.end.trans.#2")->getDouble(), 0.12);
        }
    }

    void content_data() {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("result");
        const QByteArray tool = "{'end':{'name':'T1'},'ref':{'name':'W1'}}";
        const char* const none = "0:0 the file holds no project";
        const std::pair<QByteArray, const char*> rows[] = {
            {"[{'type':'open'},{'type':'close'}," + tool + "]", "open close with T1, W1"},
            {"[" + tool + ",{'type':'close'}]", "close with T1, W1"},
            {"[{'type':'close'}]", "close with tool0, wobj0"},
            {"[]", " with tool0, wobj0"},
            {"[{'end':{'name':'T1'}}]", " with T1, wobj0"},
            {"[{'end':5,'ref':{'name':'W1'}}]", " with tool0, W1"},
            {"[{'ref':{'name':'W1'}}]", " with tool0, W1"},
            {"[{'type':'close','ref':{'name':'W1'}}]", "close with tool0, wobj0"},
            {"[{'type':'close'},{'type':'dance'}]", "close dance with tool0, wobj0"},
            {"[{'type':\n 'cl", "2:5 no JSON: expected the end of a string"},
            {"{'type':'close'}", none},
            {"[{'type':'close'},2]", none},
            {"[{'type':'dance'}]", none},
            {"[{'end':{}},{'end':{}}]", none},
            {"[{'name':'steel','power':60}]", none},
            {"[{'stationname':'L','type':'','filePath':'a.json'}]", none}};
        for (const auto& [file, result] : rows) {
            QTest::newRow(file) << test::quoted(file) << QString(result);
        }
    }

    /// What is none stays as it is, and under another name when a project is written over it.
    void content() {
        QFETCH(QByteArray, file);
        bench_.write("p.json", file);
        QTEST(opened("p.json"), "result");
        const bool isProject = bench_.problems.isEmpty();
        QVERIFY(lumo::saveProject("p.json"));
        QCOMPARE(contentOf("p.json.damaged"), isProject ? QByteArray("(no file)") : file);
        QVERIFY(opened("p.json").contains(" with "));
    }

    void settingsAndMissingFiles_areNoProjects() {
        QVERIFY(QDir().mkpath("sub"));
        bench_.write("lumo_param.json", "[]");
        bench_.write("sub/lumo_param.json", "[]");
        QVERIFY(QFile::link("lumo_param.json", "alias.json"));
        for (const QString& path : {QString("lumo_param.json"), QString("alias.json"),
                                    QDir::currentPath() + "/sub/../lumo_param.json"}) {
            QCOMPARE(opened(path), "0:0 the file holds settings, no project");
        }
        QCOMPARE(opened("sub/lumo_param.json"), " with tool0, wobj0");
        QCOMPARE(opened("missing.json"), "0:0 there is no such file");
        QVERIFY(lumo::isSettingsFile("lumo_port.json") && !lumo::isSettingsFile("missing.json"));
    }

    void failedSave_isReportedOnce_andLeavesTheOldFile() {
        QVERIFY(QDir().mkpath("folder.json/inside"));
        // Behind another ending the name is longer than file systems allow, behind a temporary file's it is
        // not.
        const QString unkeepable = QString(243, 'n') + ".json";
        bench_.write(unkeepable, "[{}]");
        for (const QString& path : {QString("folder.json"), QString("nowhere/p.json"), unkeepable}) {
            bench_.problems.clear();
            QVERIFY(!lumo::saveProject(path));
            QCOMPARE(bench_.problems.size(), 1);
            QCOMPARE(bench_.problems.first().first().toString(), path);
        }
        QCOMPARE(contentOf(unkeepable), QByteArray("[{}]"));
        QVERIFY(QDir("folder.json/inside").exists());
    }

    void name_thatWouldOverwriteOrHideAFile_isTaken() {
        for (const char* file : {"old.json", "notes.txt", "archive.tar.gz", "v1.2.json"}) {
            bench_.write(file, "");
        }
        QVERIFY(QDir().mkpath("box.json/deeper") && QDir().mkpath("folder"));
        QVERIFY(QFile::link("nowhere", "link.json"));
        const std::pair<NameFault, QStringList> names[] = {
            {NameFault::None, {"seam", "焊缝 1", "a.b", "1234567890123456789", "Old", "folder", "deeper"}},
            {NameFault::None, {"archive.tar"}},  // any ending counts, but only behind the first dot
            {NameFault::TooLong, {"12345678901234567890"}},
            {NameFault::Empty, {"", "  "}},
            {NameFault::Taken, {"old", "notes", "archive", "v1", "v1.2", "box", "link"}},
            {NameFault::Taken, {"lumo_param", "lumo_port", "LUMO_SignalsConfig"}},  // not written yet
            {NameFault::Taken, {"a/b", "/seam", ".", "..", ".seam", "a\nb"}}};
        for (const auto& [fault, named] : names) {
            for (const QString& name : named) {
                QVERIFY2(lumo::projectNameFault(name) == fault, qPrintable('"' + name + '"'));
            }
        }
        QCOMPARE(lumo::projectName("/home/welder.1/seam 2.v2.json"), "seam 2");
    }
};

LUMO_TEST(TestProjectFile)
#include "test_projectfile.moc"
