#include "app/fileproblem.h"
#include "gantu/bmodule.h"
#include "kord/managerhelper.h"
#include "module/globals.h"
#include "module/jsonplace.h"
#include "module/settingsfile.h"
#include "panel/lumowidget.h"
#include "support/ports.h"
#include "support/suite.h"
#include "support/text.h"

#include <QDir>
#include <QRegularExpression>

#include <sys/stat.h>

using lumo::Settings;
using test::contentOf;
using test::quoted;

Q_DECLARE_METATYPE(Settings)

namespace {

/// The file of the ports, each row in a line of its own from the second on, with one of them another.
QByteArrayList portLines(int row = -1, const QByteArray& line = QByteArray()) {
    QByteArrayList lines;
    for (int port = 0; port < 19; ++port) {
        const QByteArray name = test::kPortNames[port];
        lines << "{'type': '" + name.mid(5, 2) + "', 'name': '" + name + "', 'enable': true}";
    }
    if (row >= 0) {
        lines[row] = line;
    }
    return lines;
}

QByteArray list(const QByteArrayList& lines) {
    return quoted("[\n" + lines.join(",\n") + "\n]\n");
}

}  // namespace

/// Settings files as people, other versions and failing disks leave them: what the package makes of them at
/// the start, what it tells, and what the next save keeps.
class TestSettings : public QObject {
    Q_OBJECT

    QStringList reports_;  // "LINE:COLUMN reason"
    QString file_;         // the one that is reported

    /// Not in English, but for the words of JSON: whoever reads it may not know any.
    static bool isInPanelLanguage(const QString& reason) {
        static const QRegularExpression english("\\b(?!DI|DO|AO|UTF|true|false)[A-Za-z]{2,}\\b");
        return !app::localReason(reason).remove(QRegularExpression("'[^']*'")).contains(english);
    }

    /// What runs use of a list: the laser's port and how many ports are in use, or a field of each record.
    static QString inTree(Settings settings, const QString& field) {
        static const char* const paths[] = {"lumo.port", "lumo.param", "lumo.signalsConfig"};
        QStringList values;
        int used = 0;
        for (const ModuleObject* record : m(paths[int(settings)])->cmobjs()) {
            values << record->r(field)->getString();
            used += record->c("enable")->getBool() ? 1 : 0;
        }
        return settings == Settings::Ports ? QString("%1 %2").arg(values.value(9)).arg(used)
                                           : values.join(' ');
    }

private slots:
    void initTestCase() {
        mendo::LogHub::instance()->setConsole(false);
        kordservice();
        kord::ManagerHelper::instance()->module()->mobj()->set(nullptr, "language", "en");
        connect(m(), &mendo::ModuleManager::fileProblem, this,
                [this](const QString& name, int line, int column, const QString& reason) {
                    QCOMPARE(name, file_);
                    QVERIFY2(isInPanelLanguage(reason), qPrintable(app::localReason(reason)));
                    reports_ << QString("%1:%2 %3").arg(line).arg(column).arg(reason);
                });
    }

    void init() {
        for (const QString& name : QDir().entryList(QDir::Files | QDir::System | QDir::NoDotAndDotDot)) {
            QFile::remove(name);
        }
        m()->root()->remove(nullptr, "lumo");
        mendo::ModuleManager::purgeRemoved();
        executor = nullptr;
        reports_.clear();
        file_ = "lumo_port.json";
    }

    void file_data() {
        QTest::addColumn<Settings>("settings");
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("tree");
        QTest::addColumn<QString>("report");
        const auto ports = [](const char* name, const QByteArray& file, const char* tree,
                              const char* report) {
            QTest::newRow(name) << Settings::Ports << quoted(file) << "name" << QString(tree)
                                << QString(report);
        };
        const auto misfit = [ports](const char* name, const QByteArray& file, const QByteArray& report) {
            ports(name, file, "DO2_3 0", report + "; no port is in use");
        };
        const QByteArray sound = list(portLines());
        ports("sound", sound, "LUMO_DO.#3 19", "");
        ports("with a byte-order mark", "\xEF\xBB\xBF" + sound, "LUMO_DO.#3 19", "");
        ports("no rows", "{}", "DO2_3 1", "");
        const auto oneRow = [](const QByteArray& line) { return list(portLines(9, line)); };
        ports("of another language",
              oneRow("{'type':'DO','name':'LUMO_DO.#3','tag':'激光器使能','enable':1}"), "LUMO_DO.#3 19", "");
        ports("no use", oneRow("{'type':'DO','name':'LUMO_DO.#3'}"), "LUMO_DO.#3 19", "");
        ports("no name", oneRow("{'type':'DO','name':null,'enable':false}"), "DO2_3 18", "");
        ports("not assigned", oneRow("{'type':'DO','name':'','enable':false}"), " 18", "");
        ports("no bytes", "", "DO2_3 1", "1:1 no JSON: expected a value");
        ports("cut off", sound.left(sound.indexOf("LUMO_DO.#3")), "DO2_3 1",
              "11:25 no JSON: expected the end of a string");
        ports("of another encoding", oneRow("{'name': '\xEB\xE0\xE7\xE5\xF0'}"), "DO2_3 1",
              "11:11 no JSON: invalid UTF8 string");
        ports("a name that is none", oneRow("  {'type':'DO','name':{'bit':3},'enable':true}"), "DO2_3 19",
              "11:3 'name' is no text");
        ports("a use that is none", oneRow("{'type':'DO','name':'LUMO_DO.#3','enable':'maybe'}"),
              "LUMO_DO.#3 19", "11:1 'enable' is neither true nor false");
        misfit("an empty list", " []", "1:2 there are 0 rows for 19 ports");
        misfit("no list", "\n {'name': 'LUMO_DO.#3'}", "2:2 the file holds no list of records");
        misfit("a short list", list(portLines().mid(0, 18)), "19:1 there are 18 rows for 19 ports");
        misfit("a long list", list(portLines() << portLines().last()), "21:1 there are 20 rows for 19 ports");
        QByteArrayList moved = portLines();
        moved.removeAt(4);
        misfit("a row lost", list(moved), "7:1 there are 18 rows for 19 ports");
        misfit("a row lost, one more at the end", list(moved << moved.last()), "7:1 'type' is not DI");
        misfit("a row that is none", oneRow("9"), "11:1 this is no record");
        misfit("a row without a kind", oneRow("{'name':'LUMO_DO.#3','enable':true}"),
               "11:1 'type' is missing");

        const struct {
            Settings settings;
            const char *file, *field, *tree, *report;
        } rows[] = {
            {Settings::Params, "[{'name':'A','power':'60.5'},{'name':7,'power':40}]", "power", "60.5 40", ""},
            {Settings::Params, "[{'name':'A','power':1},\n{'power':'much'}]", "power", "1 ",
             "2:1 'power' is no number"},
            {Settings::Params, "[{'power':60}, 7, {'power':40}]", "power", "60 0 40",
             "1:16 this is no record"},
            {Settings::Params, "[{'name':[]}, 7, {'speed':false, 'ratio':{}}, {'power':2}]", "power", " 0  2",
             "1:2 'name' is no text; faults in 2 more records"},
            {Settings::Params, "[{'name':'A'},", "power", "", "1:15 no JSON: expected a value"},
            {Settings::Params, "{'name':'steel'}", "power", "", "1:1 the file holds no list of records"},
            {Settings::Params, "{}", "power", "", ""},
            {Settings::Stations, "[{'time':'250','DI_reg':{'bias':'3'}}]", "time", "250", ""},
            {Settings::Stations, "[{'stationname':'L','time':''},{'stationname':'R'}]", "stationname", "L R",
             ""},
            {Settings::Stations, "[{'time':'soon'}]", "time", "", "1:2 'time' is no number"},
            {Settings::Stations, "[{'DI2_reg':'LUMO_DI'}]", "time", "", "1:2 'DI2_reg' is no object"},
            {Settings::Stations, "[{'DI_reg':{'name':'LUMO_DI','bias':[]}}]", "DI_reg.name", "LUMO_DI",
             "1:2 'bias' is no number"},
            {Settings::Stations, "{}", "time", "", ""},
            {Settings::Stations, "{'type':'moveL'}", "time", "100 100 100 100",
             "1:1 the file holds no list of records"}};
        for (const auto& row : rows) {
            QTest::newRow(row.file) << row.settings << quoted(row.file) << QString(row.field)
                                    << QString(row.tree) << QString(row.report);
        }
    }

    /// No record is lost, for programs refer to their positions; what is not known to be wired is not in use;
    /// and what was damaged is kept once, by the first save over it.
    void file() {
        QFETCH(Settings, settings);
        QFETCH(QByteArray, file);
        QFETCH(QString, field);
        QFETCH(QString, tree);
        QFETCH(QString, report);
        file_ = lumo::settingsFile(settings);
        test::writeFile(file_, file);
        const LumoWidget page;
        QCOMPARE(inTree(settings, field), tree);
        QCOMPARE(reports_.join('|'), report);
        QCOMPARE(m("lumo.port.#9.tag")->getString(), "Laser Enable");
        QVERIFY(lumo::saveSettings(settings));
        QVERIFY(lumo::saveSettings(settings));
        QCOMPARE(contentOf(file_ + ".damaged"), report.isEmpty() ? QByteArray("(no file)") : file);
        QVERIFY(!QFile::exists(file_ + ".damaged.2"));
        reports_.clear();
        lumo::loadSettings(this, settings);
        QCOMPARE(reports_, QStringList());
        QCOMPARE(inTree(settings, field), tree);
    }

    void missingFiles_areNoProblem() {
        const LumoWidget page;
        QVERIFY(reports_.isEmpty() && QDir().isEmpty());
    }

    void damagedFileBehindALink_isKeptBesideAnOlderOne() {
        test::writeFile("lumo_port.json.damaged", "an older one");
        test::writeFile("shared.json", "[7, {}]");
        QVERIFY(QFile::link("shared.json", file_));
        const LumoWidget page;
        QVERIFY(lumo::saveSettings(Settings::Ports));
        QCOMPARE(contentOf("lumo_port.json.damaged"), QByteArray("an older one"));
        QCOMPARE(contentOf("lumo_port.json.damaged.2"), QByteArray("[7, {}]"));
        QCOMPARE(contentOf("shared.json"), contentOf(file_));
        QVERIFY(QFileInfo(file_).isSymLink());
    }

    /// Without waiting for a pipe's other end; and as with a disk that failed for a while, what could not be
    /// read is not to be lost.
    void whatCouldNotBeRead_isKept() {
        const QByteArray sound = list(portLines());
        for (const bool isSoundNow : {false, true}) {
            init();
            QCOMPARE(::mkfifo(file_.toLatin1(), 0600), 0);
            const LumoWidget page;
            QCOMPARE(reports_, QStringList("0:0 this is no plain file"));
            if (isSoundNow) {
                QVERIFY(QFile::remove(file_));
                test::writeFile(file_, sound);
            }
            QVERIFY(lumo::saveSettings(Settings::Ports));
            QVERIFY(QFileInfo(file_).isFile() && QFileInfo::exists(file_ + ".damaged"));
            QVERIFY(!isSoundNow || contentOf(file_ + ".damaged") == sound);
        }
    }

    void faultyRecord_isFoundInItsFile() {
        const struct {
            QByteArray text;
            int position;
            const char* place;
        } rows[] = {{"[ 1, 2]", 0, "1:3"},
                    {"[1,\n  2]", 1, "2:3"},
                    {"[[1,{'a':[2,3]}],{'b':4,'c':5},6]", 2, "1:32"},
                    {"['],[','\\'],',3]", 2, "1:15"},
                    {"['\\\\',2]", 1, "1:7"},
                    {"['激光😀', 2]", 1, "1:9"},
                    {"[1,\r\n2]", 1, "2:1"},
                    {"\xEF\xBB\xBF[1]", 0, "1:2"},
                    {"[1]", 1, "0:0"},
                    {"[ ]", 0, "0:0"}};
        for (const auto& row : rows) {
            const lumo::TextPlace place = lumo::elementPlace(quoted(row.text), row.position);
            QCOMPARE(row.text + QString(" %1:%2").arg(place.line).arg(place.column),
                     row.text + ' ' + row.place);
        }
    }
};

LUMO_TEST(TestSettings)
#include "test_settings.moc"
