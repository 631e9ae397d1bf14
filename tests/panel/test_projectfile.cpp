#include "panel/projectfile.h"

#include "module/host.h"
#include "panel/lumowidget.h"
#include "panel/resumedata.h"

#include <QDir>
#include <QJsonDocument>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using lumo::NameFault;

Q_DECLARE_METATYPE(NameFault)

namespace {

QByteArray content(const QString& name) {
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

void write(const QString& name, const QByteArray& text) {
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(text), text.size());
}

QJsonArray parsed(const QByteArray& text) {
    return QJsonDocument::fromJson(text).array();
}

QStringList types() {
    QStringList result;
    for (const ModuleObject* statement : m("lumo.program")->cmobjs()) {
        result << statement->c("type")->getString();
    }
    return result;
}

}  // namespace

/// What project files hold, and which names they can have.
class TestProjectFile : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> folder_;

private slots:
    void initTestCase() {
        mendo::LogHub::instance()->setConsole(false);
        kordservice();
        QTemporaryDir empty;
        QVERIFY(QDir::setCurrent(empty.path()));
        LumoWidget page;  // fills the tree
    }

    void init() {
        folder_ = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir::setCurrent(folder_->path()));
        m("lumo.program")->loadJson(this, QJsonArray());
        m("lumo.toolset")->copyFrom(this, m("lumo.default.default_toolset"));
    }

    void savedOpenedSaved_isTheSameFile_data() {
        QTest::addColumn<QByteArray>("program");
        const auto row = [](const char* name, const QByteArray& statement) {
            QTest::newRow(name) << '[' + statement + ']';
        };
        const QByteArray point =
            R"({"trans":[0.1,-0.25,1e-9],"rot":[3.141592653589793,0,-1.5],"near":[0,1,2,3,4,5.5],"cfg":{"s":7}})";
        const QByteArray rest = R"(,"execute":true,"note":"")";
        const QByteArray tools =
            R"(,"toolset":{"end":{"name":"t","trans":[0,0,0.1]},"ref":{"name":"","trans":[0,0,0]}})";
        QByteArrayList all;
        const auto type = [&](const char* name, const QByteArray& fields) {
            all << R"({"type":"NAME")" + fields + rest + '}';
            all.last().replace("NAME", name);
            row(name, all.last());
        };
        type("moveJ", R"(,"speed":20,"zone":2,"point":)" + point);
        type("moveL", R"(,"speed":199,"zone":0,"point":)" + point + tools);
        type("moveC", R"(,"speed":5,"zone":5,"point":)" + point + R"(,"point1":)" + point + tools);
        type("moveCC", R"(,"speed":5,"zone":5,"point":)" + point + R"(,"point1":{})" + tools);
        type("open",
             R"(,"index":1,"laserPower":"50","laserDutyCycle":49.5,"wireEnable":false,"weldspeed":"20")");
        type("close", "");
        type("param", R"(,"index":0,"laserPower":"60","laserDutyCycle":"30","wireEnable":true)");
        type("setDO", R"(,"doName":"DO1_0","value":"true","DO_type":"IO",
                         "DO_reg":{"name":"","type":"","bias":0})");
        type("waitDI", R"(,"diName":"","value1":"false","DI_type":"register",
                          "DI_reg":{"name":"LUMO_DI","type":"bit","bias":5})");
        type("delay", R"(,"delaytime":"1500")");
        row("all of them", all.join(','));
        row("none", "");
        const QJsonObject typed{
            {"type", "close"}, {"note", "焊缝 \"A\"\n\tшов, 1/2 \\ 😀"}, {"execute", false}};
        row("what a person types", QJsonDocument(typed).toJson());
        row("fields of a later version", R"({"type":"close","more":[null,{},[],[[1]],true]})");
    }

    void savedOpenedSaved_isTheSameFile() {
        QFETCH(QByteArray, program);
        m("lumo.program")->loadJson(this, parsed(program));
        m("lumo.toolset.end.trans.#2")->setValue(this, 0.12);
        QVERIFY(lumo::saveProject("a.json"));
        QCOMPARE(content("a.json"), QJsonDocument(lumo::projectDocument().toArray()).toJson());

        m("lumo.program")->loadJson(this, parsed(R"([{"type":"delay"}])"));
        m("lumo.toolset")->copyFrom(this, m("lumo.default.default_toolset"));
        const auto opened = lumo::readProject("a.json");
        QVERIFY(opened);
        lumo::loadProject(this, *opened);
        QCOMPARE(m("lumo.program")->exportToJson(), QJsonValue(parsed(program)));
        QCOMPARE(m("lumo.toolset.end.trans.#2")->getDouble(), 0.12);
        QVERIFY(lumo::saveProject("b.json"));
        QCOMPARE(content("b.json"), content("a.json"));
    }

    void toolset_isTheFirstElementWithAnEnd_data() {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QStringList>("statements");
        QTest::addColumn<QString>("tool");
        const QByteArray open = R"({"type":"open"})";
        const QByteArray close = R"({"type":"close"})";
        const QByteArray tool = R"({"end":{"name":"T1"},"ref":{"name":"W1"}})";
        const auto row = [](const char* name, const QByteArrayList& elements, const QStringList& statements,
                            const char* toolName) {
            QTest::newRow(name) << '[' + elements.join(',') + ']' << statements << QString(toolName);
        };
        row("last", {open, close, tool}, {"open", "close"}, "T1");
        row("first", {tool, open, close}, {"open", "close"}, "T1");
        row("missing", {open, close}, {"open", "close"}, "tool0");
        row("alone", {tool}, {}, "T1");
        row("nothing at all", {}, {}, "tool0");
    }

    void toolset_isTheFirstElementWithAnEnd() {
        QFETCH(QByteArray, file);
        QFETCH(QStringList, statements);
        QFETCH(QString, tool);
        write("p.json", file);
        const auto project = lumo::readProject("p.json");
        QVERIFY(project);
        lumo::loadProject(this, *project);
        QCOMPARE(types(), statements);
        QCOMPARE(m("lumo.toolset.end.name")->getString(), tool);
    }

    void unreadable_isReportedOnce_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("line");
        QTest::newRow("missing") << "missing.json" << 0;
        QTest::newRow("cut off") << "cut.json" << 2;
        QTest::newRow("empty") << "empty.json" << 1;
        QTest::newRow("an object") << "object.json" << 0;
        QTest::newRow("numbers") << "numbers.json" << 0;
        QTest::newRow("no statement among them") << "dance.json" << 0;
        QTest::newRow("two tool sets") << "tools.json" << 0;
        QTest::newRow("a folder") << "folder.json" << 0;
    }

    void unreadable_isReportedOnce() {
        QFETCH(QString, name);
        QFETCH(int, line);
        write("cut.json", "[{\"type\":\n \"cl");
        write("empty.json", "");
        write("object.json", R"({"type":"close"})");
        write("numbers.json", R"([{"type":"close"},2])");
        write("dance.json", R"([{"type":"dance"}])");
        write("tools.json", R"([{"end":{}},{"end":{}}])");
        QVERIFY(QDir().mkdir("folder.json"));
        QSignalSpy reported(m(), &mendo::ModuleManager::fileProblem);
        QVERIFY(!lumo::readProject(name));
        QCOMPARE(reported.size(), 1);
        QCOMPARE(reported[0][0].toString(), name);
        QCOMPARE(reported[0][1].toInt(), line);
        QVERIFY(!reported[0][3].toString().isEmpty());
    }

    void saving_keepsWhatWasNoProject_data() {
        QTest::addColumn<QByteArray>("old");
        QTest::addColumn<bool>("kept");
        QTest::newRow("a project") << QByteArray(R"([{"type":"close"},{"end":{}}])") << false;
        QTest::newRow("a project without tool set") << QByteArray(R"([{"type":"close"}])") << false;
        QTest::newRow("a new project") << QByteArray("[]") << false;
        QTest::newRow("a tool set without tool") << QByteArray(R"([{"ref":{}}])") << false;
        QTest::newRow("damaged") << QByteArray("[{\"type\":") << true;
        QTest::newRow("parameter sets") << QByteArray(R"([{"name":"steel","power":60}])") << true;
        QTest::newRow("stations") << QByteArray(R"([{"stationname":"left","type":"","filePath":"a.json"}])")
                                  << true;
        QTest::newRow("an object") << QByteArray(R"({"type":"close"})") << true;
        QTest::newRow("numbers") << QByteArray("[1]") << true;
    }

    void saving_keepsWhatWasNoProject() {
        QFETCH(QByteArray, old);
        QFETCH(bool, kept);
        QSignalSpy reported(m(), &mendo::ModuleManager::fileProblem);
        for (const char* copy : {"p.json.damaged", "p.json.damaged.2"}) {
            write("p.json", old);
            QVERIFY(lumo::saveProject("p.json"));
            QVERIFY(lumo::projectFrom(parsed(content("p.json"))));
            QCOMPARE(content(copy), kept ? old : QByteArray("(no file)"));
        }
        QCOMPARE(QDir().entryList(QDir::Files).size(), kept ? 3 : 1);
        QCOMPARE(reported.size(), 0);
    }

    void failedSave_isReportedAndLeavesTheOldFile_data() {
        QTest::addColumn<QString>("path");
        QTest::newRow("a folder in the way") << "folder.json";
        QTest::newRow("no such folder") << "nowhere/p.json";
        // With another ending the name is longer than file systems allow; with that of a temporary
        // file it is not.
        QTest::newRow("the old one cannot be kept") << QString(243, 'n') + ".json";
    }

    void failedSave_isReportedAndLeavesTheOldFile() {
        QFETCH(QString, path);
        QVERIFY(QDir().mkpath("folder.json/inside"));
        const QByteArray params = R"([{"name":"steel"}])";
        const bool isFile = path.startsWith('n') && !path.contains('/');
        if (isFile) {
            write(path, params);
        }
        QSignalSpy reported(m(), &mendo::ModuleManager::fileProblem);
        QVERIFY(!lumo::saveProject(path));
        QCOMPARE(reported.size(), 1);
        QCOMPARE(reported[0][0].toString(), path);
        QCOMPARE(content(path), isFile ? params : QByteArray("(no file)"));
        QVERIFY(QDir("folder.json/inside").exists());
    }

    void names_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<NameFault>("fault");
        const auto row = [](const QString& name, NameFault fault) {
            QTest::newRow(qPrintable('\'' + name + '\'')) << name << fault;
        };
        row("seam", NameFault::None);
        row("焊缝 1", NameFault::None);
        row("a.b", NameFault::None);
        row("1234567890123456789", NameFault::None);
        row("12345678901234567890", NameFault::TooLong);
        row("", NameFault::Empty);
        row("  ", NameFault::Empty);
        row("old", NameFault::Taken);         // old.json
        row("notes", NameFault::Taken);       // notes.txt: any ending counts
        row("archive", NameFault::Taken);     // archive.tar.gz
        row("archive.tar", NameFault::None);  // but only up to the first dot
        row("v1.2", NameFault::Taken);        // v1.2.json would be overwritten
        row("v1", NameFault::Taken);          // v1.2.json
        row("Old", NameFault::None);
        row("folder", NameFault::None);       // a folder without the ending
        row("box", NameFault::Taken);         // the folder box.json
        row("lumo_param", NameFault::Taken);  // settings, though not written yet
        row("lumo_port", NameFault::Taken);
        row("LUMO_SignalsConfig", NameFault::Taken);
        row("a/b", NameFault::Taken);
        row("/seam", NameFault::Taken);
        row(".", NameFault::Taken);
        row("..", NameFault::Taken);
        row(".seam", NameFault::Taken);  // no folder would show it
        row("a\nb", NameFault::Taken);
    }

    void names() {
        QFETCH(QString, name);
        QFETCH(NameFault, fault);
        QCOMPARE(lumo::projectNameFault(name, {"old.json", "notes.txt", "archive.tar.gz", "v1.2.json"},
                                        {"folder", "box.json"}),
                 fault);
    }

    void names_areLookedUpInTheWorkingDirectory() {
        write("old.txt", "");
        QVERIFY(QDir().mkpath("box.json/deeper"));
        QVERIFY(QDir().mkpath("folder"));
        QVERIFY(QFile::link("nowhere", "link.json"));
        QCOMPARE(lumo::projectNameFault("old"), NameFault::Taken);
        QCOMPARE(lumo::projectNameFault("box"), NameFault::Taken);
        QCOMPARE(lumo::projectNameFault("link"), NameFault::Taken);
        QCOMPARE(lumo::projectNameFault("folder"), NameFault::None);
        QCOMPARE(lumo::projectNameFault("deeper"), NameFault::None);
    }

    void shownName_data() {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("name");
        QTest::newRow("relative") << "seam.json"
                                  << "seam";
        QTest::newRow("whole path") << "/home/welder.1/seam 2.json"
                                    << "seam 2";
        QTest::newRow("two dots") << "/a/seam.v2.json"
                                  << "seam";
        QTest::newRow("no ending") << "/a/seam"
                                   << "seam";
        QTest::newRow("none") << ""
                              << "";
    }

    void shownName() {
        QFETCH(QString, path);
        QTEST(lumo::projectName(path), "name");
    }

    void settingsFiles_areKnownByTheirPlace() {
        write("lumo_param.json", "{}");
        QVERIFY(QDir().mkdir("sub"));
        write("sub/lumo_param.json", "{}");
        QVERIFY(QFile::link("lumo_param.json", "alias.json"));
        QVERIFY(lumo::isSettingsFile("lumo_param.json"));
        QVERIFY(lumo::isSettingsFile(QDir::currentPath() + "/sub/../lumo_port.json"));
        QVERIFY(lumo::isSettingsFile("alias.json"));
        QVERIFY(!lumo::isSettingsFile("sub/lumo_param.json"));
        QVERIFY(!lumo::isSettingsFile("missing.json"));
    }

    void resumeData_areForgotten() {
        m("lumo.current.line")->setValue(this, 7);
        m("lumo.current.programtype")->setValue(this, "moveL");
        m("lumo.current.programmovetype")->setValue(this, "moveL");
        m("lumo.current.openmiddlecolse")->setValue(this, true);
        m("lumo.current.startpoint")->set(this, "trans.#0", 1.0);
        m("lumo.current.pausepoint")->set(this, "trans.#0", 1.0);
        lumo::resetResumeData(this);
        QCOMPARE(m("lumo.current.line")->getInt(-1), 0);
        QCOMPARE(m("lumo.current.programtype")->value(), QVariant(0));
        QCOMPARE(m("lumo.current.programmovetype")->value(), QVariant(0));
        QCOMPARE(m("lumo.current.openmiddlecolse")->getBool(true), false);
        QCOMPARE(m("lumo.current.startpoint")->size(), 0);
        QCOMPARE(m("lumo.current.pausepoint")->size(), 0);
    }
};

QTEST_MAIN(TestProjectFile)
#include "test_projectfile.moc"
