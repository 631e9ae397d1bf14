// Settings files as people, other versions and failing disks leave them: what the package makes of them
// at the start, what it tells, and what the next save keeps.

#include "app/fileproblem.h"
#include "gantu/bmodule.h"
#include "kord/managerhelper.h"
#include "module/globals.h"
#include "module/host.h"
#include "module/jsonplace.h"
#include "module/settingsfile.h"
#include "panel/lumowidget.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <memory>

using lumo::Settings;

Q_DECLARE_METATYPE(Settings)

namespace {

/// JSON with single quotes, which read better here.
QByteArray json(QByteArray text) {
    return text.replace('\'', '"');
}

QByteArray portLine(const QByteArray& kind, const QByteArray& name, const QByteArray& rest) {
    return "{'type': '" + kind + "', 'name': '" + name + "'" + rest + "}";
}

/// The file of the ports, each row in a line of its own from the second on.
QByteArrayList portLines() {
    QByteArrayList lines;
    const struct {
        const char* kind;
        const char* name;
        int count;
    } groups[] = {{"DI", "LUMO_DI.#", 6}, {"DO", "LUMO_DO.#", 9}, {"AO", "LUMO_AO_", 4}};
    for (const auto& group : groups) {
        for (int i = 0; i < group.count; ++i) {
            lines << portLine(group.kind, group.name + QByteArray::number(i), ", 'enable': true");
        }
    }
    return lines;
}

QByteArray list(const QByteArrayList& lines) {
    return "[\n" + lines.join(",\n") + "\n]\n";
}

QByteArray portsBut(int row, const QByteArray& line) {
    QByteArrayList lines = portLines();
    lines[row] = line;
    return list(lines);
}

void write(const QString& name, const QByteArray& bytes) {
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

QByteArray bytes(const QString& name) {
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

QStringList texts(const QString& path, const QString& field) {
    QStringList result;
    for (const ModuleObject* record : m(path)->cmobjs()) {
        result << record->c(field)->getString();
    }
    return result;
}

}  // namespace

class TestSettings : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> folder_;
    QStringList reports_;  // "line:column reason", of the file expected
    QString file_;

    /// The package as it starts in a folder with that file.
    void start(Settings settings, const QByteArray& content) {
        file_ = lumo::settingsFile(settings);
        write(file_, content);
        LumoWidget page;
    }

    /// Not in English, but for the words of JSON: whoever reads it may not know any.
    static bool isInPanelLanguage(const QString& reason) {
        static const QRegularExpression english(
            QStringLiteral("\\b(?!DI|DO|AO|UTF|true|false)[A-Za-z]{2,}\\b"));
        QString text = app::localReason(reason);
        return !text.remove(QRegularExpression(QStringLiteral("'[^']*'"))).contains(english);
    }

    /// The next save, and whether it kept the file that was there.
    void save(Settings settings, const QByteArray& before, bool isKept) {
        reports_.clear();
        QVERIFY(lumo::saveSettings(settings));
        QCOMPARE(bytes(file_ + ".damaged"), isKept ? before : QByteArray("(no file)"));
        QVERIFY(lumo::saveSettings(settings));
        QVERIFY(!QFile::exists(file_ + ".damaged.2"));
        lumo::loadSettings(this, settings);
        QCOMPARE(reports_, QStringList());
    }

private slots:
    void initTestCase() {
        mendo::LogHub::instance()->setConsole(false);
        kordservice();
        connect(m(), &mendo::ModuleManager::fileProblem, this,
                [this](const QString& name, int line, int column, const QString& reason) {
                    QCOMPARE(name, file_);
                    QVERIFY2(isInPanelLanguage(reason), qPrintable(app::localReason(reason)));
                    reports_ << QStringLiteral("%1:%2 %3").arg(line).arg(column).arg(reason);
                });
    }

    void init() {
        folder_ = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir::setCurrent(folder_->path()));
        kord::ManagerHelper::instance()->module()->mobj()->set(nullptr, "language", "en");
        reports_.clear();
    }

    void cleanup() {
        m()->root()->remove(nullptr, "lumo");
        mendo::ModuleManager::purgeRemoved();
        executor = nullptr;
    }

    void ports_data() {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("report");
        QTest::addColumn<QString>("laser");  // assignment of the port that is in use by default
        QTest::addColumn<int>("used");       // ports in use
        const QString own = "DO2_3";
        const QString given = "LUMO_DO.#3";
        const auto row = [](const char* name, const QByteArray& file, const QString& report,
                            const QString& laser,
                            int used) { QTest::newRow(name) << json(file) << report << laser << used; };
        const auto misfit = [&row, own](const char* name, const QByteArray& file, const QString& report) {
            row(name, file, report + "; no port is in use", own, 0);
        };
        const QByteArray sound = list(portLines());
        row("sound", sound, "", given, 19);
        row("with a byte-order mark", "\xEF\xBB\xBF" + sound, "", given, 19);
        row("no rows", "{}", "", own, 1);
        row("of another language",
            portsBut(9, portLine("DO", "LUMO_DO.#3", ",'tag':'激光器使能','enable':1")), "", given, 19);
        row("no use", portsBut(9, portLine("DO", "LUMO_DO.#3", "")), "", given, 19);
        row("no name", portsBut(9, "{'type':'DO','name':null,'enable':false}"), "", own, 18);
        row("not assigned", portsBut(9, portLine("DO", "", ",'enable':false")), "", "", 18);
        row("no bytes", "", "1:1 no JSON: expected a value", own, 1);
        row("cut off", sound.left(sound.indexOf("LUMO_DO.#3")), "11:25 no JSON: expected the end of a string",
            own, 1);
        row("zeros", QByteArray(100, '\0'), "1:1 no JSON: expected a value", own, 1);
        row("of another encoding", portsBut(9, "{'name': '\xEB\xE0\xE7\xE5\xF0'}"),
            "11:11 no JSON: invalid UTF8 string", own, 1);
        row("a name that is none", portsBut(9, "  {'type':'DO','name':{'bit':3},'enable':true}"),
            "11:3 'name' is no text", own, 19);
        row("a use that is none", portsBut(9, portLine("DO", "LUMO_DO.#3", ",'enable':'maybe'")),
            "11:1 'enable' is neither true nor false", given, 19);
        misfit("an empty list", " []", "1:2 there are 0 rows for 19 ports");
        misfit("one record, no list", "\n {'name': 'LUMO_DO.#3'}", "2:2 the file holds no list of records");
        misfit("a short list", list(portLines().mid(0, 18)), "19:1 there are 18 rows for 19 ports");
        misfit("a long list", list(portLines() << portLines().last()), "21:1 there are 20 rows for 19 ports");
        QByteArrayList moved = portLines();
        moved.removeAt(4);
        misfit("a row lost", list(moved), "7:1 there are 18 rows for 19 ports");
        moved.append(portLine("AO", "LUMO_AO_4", ""));
        misfit("a row lost, one more at the end", list(moved), "7:1 'type' is not DI");
        misfit("a row that is none", portsBut(9, "9"), "11:1 this is no record");
        misfit("a row without a kind", portsBut(9, "{'name':'LUMO_DO.#3','enable':true}"),
               "11:1 'type' is missing");
        misfit("two rows of no kind", portsBut(9, "{'type':7}").replace("'AO'", "null"),
               "11:1 'type' is not DO");
    }

    /// No row is lost, labels are in the panel's language, and what is not known to be wired is not in use.
    void ports() {
        QFETCH(QByteArray, file);
        QFETCH(QString, report);
        start(Settings::Ports, file);
        QCOMPARE(reports_.join('|'), report);
        const QStringList tags = texts("lumo.port", "tag");
        QCOMPARE(tags.size(), 19);
        QCOMPARE(tags[9], QString("Laser Enable"));
        QCOMPARE(texts("lumo.port", "type"),
                 QString("DI DI DI DI DI DI DO DO DO DO DO DO DO DO DO AO AO AO AO").split(' '));
        const auto use = [] { return texts("lumo.port", "enable"); };
        QTEST(m("lumo.port.#9.name")->getString(), "laser");
        QTEST(use().count("true") + use().count("1"), "used");
        const QStringList used = use();
        save(Settings::Ports, file, !report.isEmpty());
        QTEST(m("lumo.port.#9.name")->getString(), "laser");
        QCOMPARE(use(), used);
    }

    void lists_data() {
        QTest::addColumn<Settings>("settings");
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QStringList>("reports");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QStringList>("values");  // of that field, by record
        const auto row = [](const char* name, Settings settings, const char* file, const QString& report,
                            const char* field, const QStringList& values) {
            QTest::newRow(name) << settings << json(file)
                                << (report.isEmpty() ? QStringList() : QStringList{report}) << QString(field)
                                << values;
        };
        const Settings params = Settings::Params;
        row("numbers as texts", params, "[{'name':'A','power':'60.5'},{'name':7,'power':40}]", "", "power",
            {"60.5", "40"});
        row("a number that is none", params, "[{'name':'A','power':1},\n{'name':'B','power':'much'}]",
            "2:1 'power' is no number", "power", {"1", ""});
        row("a set that is none", params, "[{'name':'A','power':60}, 7, {'name':'B','power':40}]",
            "1:27 this is no record", "power", {"60", "0", "40"});
        row("several faults", params, "[{'name':[]}, 7, {'speed':false, 'ratio':{}}, {'power':2}]",
            "1:2 'name' is no text; faults in 2 more records", "power", {"", "0", "", "2"});
        row("cut off", params, "[{'name':'A','power':60},", "1:26 no JSON: expected a value", "power", {});
        const Settings stations = Settings::Stations;
        row("station", stations, "[{'stationname':'L','time':'250','DI_reg':{'bias':'3'}}]", "", "time",
            {"250"});
        row("no time", stations, "[{'stationname':'L','time':''},{'stationname':'R'}]", "", "stationname",
            {"L", "R"});
        row("a time that is none", stations, "[{'stationname':'L','time':'soon'}]", "1:2 'time' is no number",
            "time", {""});
        row("a register that is none", stations, "[{'stationname':'L','DI2_reg':'LUMO_DI'}]",
            "1:2 'DI2_reg' is no object", "stationname", {"L"});
        row("a bit that is none", stations, "[{'stationname':'L','DI_reg':{'name':'LUMO_DI','bias':[]}}]",
            "1:2 'bias' is no number", "DI_reg.name", {"LUMO_DI"});
        row("a project, no stations", stations, "{'type':'moveL'}", "1:1 the file holds no list of records",
            "stationname", {"工位 1", "工位 2", "工位 3", "工位 4"});
    }

    /// Records keep their positions, by which programs refer to them.
    void lists() {
        QFETCH(Settings, settings);
        QFETCH(QByteArray, file);
        QFETCH(QString, field);
        start(settings, file);
        QTEST(reports_, "reports");
        const QString path = settings == Settings::Params ? "lumo.param" : "lumo.signalsConfig";
        QStringList values;
        for (const ModuleObject* record : m(path)->cmobjs()) {
            values << record->r(field)->getString();
        }
        QTEST(values, "values");
        save(settings, file, !reports_.isEmpty());
    }

    void missingFiles_areNoProblem() {
        LumoWidget page;
        QCOMPARE(reports_, QStringList());
        QVERIFY(QDir().isEmpty());
    }

    void everyDamagedFile_isKept() {
        write("lumo_port.json.damaged", "an older one");
        start(Settings::Ports, "[7, {}]");
        QVERIFY(lumo::saveSettings(Settings::Ports));
        QCOMPARE(bytes("lumo_port.json.damaged"), QByteArray("an older one"));
        QCOMPARE(bytes("lumo_port.json.damaged.2"), QByteArray("[7, {}]"));
    }

    /// Without waiting for a pipe's other end, at the start and when it is written over.
    void pipe_isToldAndKept() {
        file_ = "lumo_port.json";
        QCOMPARE(::mkfifo(file_.toLatin1(), 0600), 0);
        LumoWidget page;
        QCOMPARE(reports_, QStringList{"0:0 this is no plain file"});
        QVERIFY(lumo::saveSettings(Settings::Ports));
        QVERIFY(QFileInfo(file_).isFile());
        QVERIFY(QFileInfo::exists(file_ + ".damaged"));
    }

    /// A disk or a share that failed for a while: what could not be read is not to be lost.
    void soundFileThatCouldNotBeRead_isKept() {
        const QByteArray sound = list(portLines());
        file_ = "lumo_port.json";
        QCOMPARE(::mkfifo(file_.toLatin1(), 0600), 0);
        LumoWidget page;
        QCOMPARE(reports_.size(), 1);
        QVERIFY(QFile::remove("lumo_port.json"));
        write(file_, json(sound));
        reports_.clear();
        save(Settings::Ports, json(sound), true);
    }

    void damagedFileBehindALink_isKept() {
        write("shared.json", "[7, {}]");
        QVERIFY(QFile::link("shared.json", "lumo_port.json"));
        LumoWidget page;
        QVERIFY(lumo::saveSettings(Settings::Ports));
        QCOMPARE(bytes("lumo_port.json.damaged"), QByteArray("[7, {}]"));
        QCOMPARE(bytes("shared.json"), bytes("lumo_port.json"));
        QVERIFY(QFileInfo("lumo_port.json").isSymLink());
    }

    void elementPlace_data() {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("place");
        const auto row = [](const char* name, const QByteArray& text, int position, const char* place) {
            QTest::newRow(name) << json(text) << position << QString(place);
        };
        row("first", "[ 1, 2]", 0, "1:3");
        row("second", "[1,\n  2]", 1, "2:3");
        row("behind nested ones", "[[1,{'a':[2,3]}],{'b':4,'c':5},6]", 2, "1:32");
        row("behind brackets in texts", "['],[','\\'],',3]", 2, "1:15");
        row("behind a backslash", "['\\\\',2]", 1, "1:7");
        row("wide characters are one each", "['激光😀', 2]", 1, "1:9");
        row("Windows lines", "[1,\r\n2]", 1, "2:1");
        row("byte-order mark", "\xEF\xBB\xBF[1]", 0, "1:2");
        row("none there", "[1]", 1, "0:0");
        row("no elements", "[ ]", 0, "0:0");
    }

    void elementPlace() {
        QFETCH(QByteArray, text);
        QFETCH(int, position);
        const lumo::TextPlace place = lumo::elementPlace(text, position);
        QTEST(QStringLiteral("%1:%2").arg(place.line).arg(place.column), "place");
    }
};

QTEST_MAIN(TestSettings)
#include "test_settings.moc"
