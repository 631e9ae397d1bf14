#include "app/fileproblem.h"
#include "gantu/bmodule.h"
#include "kord/managerhelper.h"
#include "module/globals.h"
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

/// Settings files as people, other versions and failing disks leave them: what the package makes of them at
/// the start, what it tells, and what the next save keeps.
class TestSettings : public QObject {
    Q_OBJECT

    QStringList reports_;  // "LINE:COLUMN reason"
    QString file_;         // the one that is reported

    /// The file of the ports, each row in a line of its own from the second on.
    static QByteArray ports(const QByteArrayList& rows) { return quoted("[\n" + rows.join(",\n") + "\n]\n"); }

    /// What runs use of a list: the laser's port and how many ports are in use; powers; stations.
    static QString inTree(Settings settings) {
        int used = 0;
        for (const ModuleObject* port : m("lumo.port")->cmobjs()) {
            used += port->c("enable")->getBool() ? 1 : 0;
        }
        if (settings == Settings::Ports) {
            return m("lumo.port.#9.name")->getString() + ' ' + QString::number(used);
        }
        QStringList values;
        for (ModuleObject* record :
             m(settings == Settings::Params ? "lumo.param" : "lumo.signalsConfig")->cmobjs()) {
            values << record->c("power")->getString() + record->c("stationname")->getString() +
                          record->c("time")->getString() + record->r("DI_reg.name")->getString();
        }
        return values.join(',');
    }

private slots:
    void initTestCase() {
        mendo::LogHub::instance()->setConsole(false);
        kordservice();
        kord::ManagerHelper::instance()->module()->mobj()->set(nullptr, "language", "en");
        connect(m(), &mendo::ModuleManager::fileProblem, this,
                [this](const QString& name, int line, int column, const QString& reason) {
                    QCOMPARE(name, file_);
                    const QString told = app::localReason(reason);  // whoever reads it may know no English
                    QVERIFY2(!told.contains(QRegularExpression("[a-z] [a-z]")), qPrintable(told));
                    reports_ << QString("%1:%2 %3").arg(line).arg(column).arg(reason);
                });
    }

    void init() {
        for (const QString& name : QDir().entryList(QDir::Files | QDir::System)) {
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
        QTest::addColumn<QString>("tree");
        QTest::addColumn<QString>("report");
        QByteArrayList all;
        for (const QByteArray name : test::kPortNames) {
            all << "{'type': '" + name.mid(5, 2) + "', 'name': '" + name + "', 'enable': true}";
        }
        const auto but = [all](const QByteArray& laser) {
            return ports(all.mid(0, 9) + QByteArrayList(laser) + all.mid(10));
        };
        const QByteArrayList lost = all.mid(0, 4) + all.mid(5);
        const auto rowsOf = [](Settings settings) {
            return
                [settings](const QByteArray& file, const QString& tree, const QString& report = QString()) {
                    QTest::newRow(qPrintable(report + ' ' + file.left(40)))
                        << settings << quoted(file) << tree << report;
                };
        };
        const auto port = rowsOf(Settings::Ports), set = rowsOf(Settings::Params),
                   station = rowsOf(Settings::Stations);
        const auto misfit = [port](const QByteArray& file, const QString& report) {
            port(file, "DO2_3 0", report + "; no port is in use");
        };
        port(ports(all), "LUMO_DO.#3 19");
        port("\xEF\xBB\xBF" + ports(all), "LUMO_DO.#3 19");
        port("{}", "DO2_3 1");
        port(but("{'type':'DO','name':'LUMO_DO.#3','tag':'使能','enable':1}"), "LUMO_DO.#3 19");
        port(but("{'type':'DO','name':'LUMO_DO.#3'}"), "LUMO_DO.#3 19");
        port(but("{'type':'DO','name':null,'enable':false}"), "DO2_3 18");
        port(but("{'type':'DO','name':'','enable':false}"), " 18");
        port("", "DO2_3 1", "1:1 no JSON: expected a value");
        port(but("{'name': '\xEB\xE0'}"), "DO2_3 1", "11:11 no JSON: invalid UTF8 string");
        port(but("  {'type':'DO','name':{},'enable':true}"), "DO2_3 19", "11:3 'name' is no text");
        port(but("{'type':'DO','enable':'maybe'}"), "DO2_3 19", "11:1 'enable' is neither true nor false");
        misfit(" []", "1:2 there are 0 rows for 19 ports");
        misfit("\n {'name':'A'}", "2:2 the file holds no list of records");
        misfit(ports(all.mid(0, 18)), "19:1 there are 18 rows for 19 ports");
        misfit(ports(all + all.mid(18)), "21:1 there are 20 rows for 19 ports");
        misfit(ports(lost), "7:1 there are 18 rows for 19 ports");
        misfit(ports(lost + all.mid(18)), "7:1 'type' is not DI");
        misfit(but("9"), "11:1 this is no record");
        misfit(but("{'name':'LUMO_DO.#3'}"), "11:1 'type' is missing");
        set("[{'name':'A','power':'60.5'},{'name':7,'power':40}]", "60.5,40");
        set("[{'name':'A','power':1},\n{'power':'much'}]", "1,", "2:1 'power' is no number");
        set("[{'power':60}, 7, {'power':40}]", "60,0,40", "1:16 this is no record");
        set("[{'name':[]}, 7, {'speed':{}}]", ",0,", "1:2 'name' is no text; faults in 2 more records");
        set("\xEF\xBB\xBF[{'name':'激光😀],[','x':[[1,{'a':[2,3]}],'\\\\','\\',']},\r\n {'name':'}', "
            "'power':{}}, 7]",
            ",,0", "2:2 'power' is no number; faults in 1 more records");
        set("[{'name':'A'},", "", "1:15 no JSON: expected a value");
        set("{'name':'steel'}", "", "1:1 the file holds no list of records");
        set("{}", "");
        station("[{'time':'250','DI_reg':{'bias':'3','name':'R'}},{'stationname':'L','time':''}]", "250R,L");
        station("[{'stationname':'L','time':'soon'}]", "L", "1:2 'time' is no number");
        station("[{'stationname':'L','DI2_reg':'R'}]", "L", "1:2 'DI2_reg' is no object");
        station("[{'DI_reg':{'name':'R','bias':[]}}]", "R", "1:2 'bias' is no number");
        station("{}", "");
        station("{'type':'moveL'}", "工位 1100,工位 2100,工位 3100,工位 4100",
                "1:1 the file holds no list of records");
    }

    /// No record is lost, for programs refer to their positions; what is not known to be wired is not in use;
    /// and what was damaged is kept once, by the first save over it.
    void file() {
        QFETCH(Settings, settings);
        QFETCH(QByteArray, file);
        QFETCH(QString, tree);
        file_ = lumo::settingsFile(settings);
        test::writeFile(file_, file);
        const LumoWidget page;
        QCOMPARE(inTree(settings), tree);
        QTEST(reports_.join('|'), "report");
        QCOMPARE(m("lumo.port.#9.tag")->getString(), "Laser Enable");
        QVERIFY(lumo::saveSettings(settings) && lumo::saveSettings(settings));
        QCOMPARE(contentOf(file_ + ".damaged"), reports_.isEmpty() ? QByteArray("(no file)") : file);
        QVERIFY(!QFile::exists(file_ + ".damaged.2"));
        reports_.clear();
        lumo::loadSettings(this, settings);
        QCOMPARE(inTree(settings), tree);
        QVERIFY(reports_.isEmpty());
    }

    /// Without waiting for a pipe's other end. A disk may have failed for a while and be sound again.
    void fileThatCouldNotBeRead_isKeptThoughItReadsOnSave() {
        for (const QByteArray& now : {QByteArray(), QByteArray("{}")}) {
            init();
            QCOMPARE(::mkfifo("lumo_port.json", 0600), 0);
            const LumoWidget page;
            QCOMPARE(reports_, QStringList("0:0 this is no plain file"));
            if (!now.isEmpty()) {
                QVERIFY(QFile::remove(file_));
                test::writeFile(file_, now);
            }
            QVERIFY(lumo::saveSettings(Settings::Ports));
            QVERIFY(QFileInfo(file_).isFile() && QFileInfo::exists(file_ + ".damaged"));
        }
    }

    void damagedFileBehindALink_isKeptBesideAnOlderOne() {
        const LumoWidget page;
        QVERIFY(reports_.isEmpty() && QDir().isEmpty());  // missing files are no problem
        test::writeFile("lumo_port.json.damaged", "an older one");
        test::writeFile("shared.json", "[7, {}]");
        QVERIFY(QFile::link("shared.json", file_));
        QVERIFY(lumo::saveSettings(Settings::Ports));
        QCOMPARE(contentOf("lumo_port.json.damaged"), QByteArray("an older one"));
        QCOMPARE(contentOf("lumo_port.json.damaged.2"), QByteArray("[7, {}]"));
        QCOMPARE(contentOf("shared.json"), contentOf(file_));
        QVERIFY(QFileInfo(file_).isSymLink());
    }
};

LUMO_TEST(TestSettings)
#include "test_settings.moc"
