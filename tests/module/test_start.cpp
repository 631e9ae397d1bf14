#include "app/fileproblem.h"
#include "executor/lumoexecutor.h"
#include "files/settingsfile.h"
#include "gantu/bmodule.h"
#include "kord/managerhelper.h"
#include "mendo/creatormanager.h"
#include "module/globals.h"
#include "panel/lumowidget.h"
#include "program/finding.h"
#include "program/motionerror.h"
#include "support/ports.h"
#include "support/suite.h"
#include "support/text.h"

#include <QDir>
#include <QPointer>
#include <QRegularExpression>
#include <QTranslator>

#include <sys/stat.h>

using lumo::Settings;
using test::contentOf;
using test::quoted;
using test::text;

Q_DECLARE_METATYPE(Settings)

/// The start of the package: the panel's language, and settings files that are damaged or edited by hand.
class TestStart : public QObject {
    Q_OBJECT

    QStringList reports_;  // reports as "LINE:COLUMN reason"
    QString file_ = "lumo_port.json";

    /// As in a new process: no subtree, no files.
    void begin(const QVariant& language) {
        for (const QString& name : QDir().entryList(QDir::Files | QDir::System)) {
            QFile::remove(name);
        }
        m()->root()->remove(nullptr, "lumo");
        mendo::ModuleManager::purgeRemoved();
        executor = nullptr;
        kord::ManagerHelper::instance()->module()->mobj()->set(nullptr, "language", language);
        reports_.clear();
    }

    /// The port file, with one row per line from the second line on.
    static QByteArray ports(const QByteArrayList& rows) { return quoted("[\n" + rows.join(",\n") + "\n]\n"); }

    /// A summary of a list: the laser's port and the number of ports in use; powers; stations.
    static QString inTree(Settings settings) {
        QStringList values;
        const char* const lists[] = {"lumo.port", "lumo.param", "lumo.signalsConfig"};
        for (ModuleObject* record : m(lists[int(settings)])->cmobjs()) {
            values << record->c("power")->getString() + record->c("stationname")->getString() +
                          record->c("time")->getString() + record->r("DI_reg.name")->getString() +
                          (record->c("enable")->getBool() ? "in use" : "");
        }
        const QString laser = m("lumo.port.#9.name")->getString();
        return settings == Settings::Ports ? QString("%1 %2").arg(laser).arg(values.count("in use"))
                                           : values.join(',');
    }

private slots:
    /// Every place of an argument is there in every language.
    void wordsOfFindings_areTranslated() {
        const auto places = [](const QString& text) {
            QString found;
            for (int number = 1; number < 10; ++number) {
                found += QString::number(text.count(QString("%%1").arg(number)));
            }
            return found;
        };
        for (const QString language : {"cn", "ru"}) {
            QTranslator catalogue;
            QVERIFY(catalogue.load(QString(":/lumo/language/lumo_%1.qm").arg(language)));
            for (const char* const words : prog::findingWords()) {
                QVERIFY2(places(catalogue.translate("Finding", words)) == places(words), words);
                QVERIFY2(!catalogue.translate("Finding", words).isEmpty(), words);
            }
            for (const char* const words : prog::motionErrorWords()) {
                QVERIFY2(!catalogue.translate("MotionError", words).isEmpty(), words);
            }
        }
    }

    void initTestCase() {
        mendo::LogHub::instance()->setConsole(false);
        kordservice();  // creates the nodes that packages need
        connect(m(), &mendo::ModuleManager::fileProblem, this, [this](const mendo::FileProblem& problem) {
            QCOMPARE(problem.file, file_);
            const QString told = app::reasonText(problem);  // operators may read no English
            QVERIFY2(!told.contains(QRegularExpression("[a-z] [a-z]")), qPrintable(told));
            const auto& [line, column] = problem.place;
            reports_ << QString("%1:%2 %3").arg(line).arg(column).arg(problem.text());
        });
    }

    void init() { begin("cn"); }

    /// Only the labels differ between languages.
    void language_selectsTitleAndLabels() {
        const QStringList rows[] = {{"cn", "激光焊接", "给气", "工位 1"},
                                    {"en", "Laser Welding", "Gas Enable", "Station 1"},
                                    {"ru", "Лазерная сварка", "Подача газа", "Пост 1"},
                                    {"", "激光焊接", "Подача газа", "工位 1"}};
        QString same;
        for (const QStringList& row : rows) {
            begin(row[0].isEmpty() ? QVariant() : row[0]);
            const std::unique_ptr<gantu::BModule> module(bfactory().create("lumo", nullptr));
            const int pages = m("pel.navo.pages")->size();
            module->init();
            const LumoWidget page;
            qDeleteAll(qApp->findChildren<QTranslator*>());
            QCOMPARE(
                text(m("pel.navo.pages")->c(pages)).replace(row[1], "TITLE"),
                "{'group':'robot.pack','icon':'','index':-1,'nav':'rova.robot.pack.lumo','title':'TITLE'}");
            QCOMPARE(m("lumo.port.#6.tag")->getString(), row[2]);
            QCOMPARE(m("lumo.signalsConfig.#0.stationname")->getString(), row[3]);
            const QString labelled = text(m("lumo.port")) + text(m("lumo.default.param"));
            const QString unlabelled = QString(labelled).remove(QRegularExpression("'tag':'[^']+'"));
            same = same.isEmpty() ? unlabelled : same;
            QCOMPARE(unlabelled, same);
        }
    }

    /// The defaults that a run uses before anything is set up.
    void firstPage_fillsTheTree_secondPageKeepsIt() {
        auto first = std::make_unique<LumoWidget>();
        QVERIFY(reports_.isEmpty());
        QCOMPARE(text(m("lumo.default.default_toolset")), text(m("lumo.toolset")));
        QCOMPARE(text(m("lumo.current.program")), text(m("lumo.default.program")));
        QCOMPARE(text(m("lumo.program")) + text(m("lumo.param")), "[][]");
        QVERIFY(m("lumo.signalsConfig")->size() == 4 && m("lumo.signalsConfig.#3.time")->getInt() == 100);
        QVERIFY(m("lumo.port.#9.tag")->getString() == "激光器使能" && inTree(Settings::Ports) == "DO2_3 1");
        const QPointer<LumoExecutor> made = executor;
        m("lumo.count")->setValue(nullptr, 7);
        test::writeFile("lumo_param.json", "[{}]");
        first.reset();
        const LumoWidget second;
        QVERIFY(made && made == executor && made->parent() == m("lumo"));
        QVERIFY(m("lumo.count")->getInt() == 7 && m("lumo.param")->size() == 0);
    }

    void settingsFile_isReadOrReportedAndKept_data() {
        QTest::addColumn<Settings>("settings");
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("tree");
        QTest::addColumn<QString>("report");
        const auto rowsOf = [](Settings settings) {
            return [settings](const QByteArray& file, const QString& tree,
                              const QString& report = QString()) {
                QTest::newRow(qPrintable(tree + ", " + report)) << settings << quoted(file) << tree << report;
            };
        };
        const auto port = rowsOf(Settings::Ports);
        const auto set = rowsOf(Settings::Params);
        const auto station = rowsOf(Settings::Stations);
        const auto misfit = [port](const QByteArray& file, const QString& report) {
            port(file, "DO2_3 0", report + "; no port is in use");
        };
        QByteArrayList all;
        for (const QByteArray name : test::portNames) {
            all << "{'type': '" + name.mid(5, 2) + "', 'name': '" + name + "', 'enable': true}";
        }
        const QByteArrayList lost = all.mid(0, 4) + all.mid(5);
        const auto but = [all](const QByteArray& laser) {
            return ports(all.mid(0, 9) + QByteArrayList{laser} + all.mid(10));
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
        // Brackets and quotes inside texts.
        set("[{'x':[[1,{'a':[2]}],'\\\\','\\',']},\r\n {'name':'}],[','power':{}}]", ",",
            "2:2 'power' is no number");
        set("[{'name':'A'},", "", "1:15 no JSON: expected a value");
        set("{'name':'steel'}", "", "1:1 the file holds no list of records");
        set("{}", "");
        station("[{'time':'250','DI_reg':{'bias':'3','name':'R'}},{'stationname':'L','time':''}]", "250R,L");
        station("[{'stationname':'L','time':'soon'}]", "L", "1:2 'time' is no number");
        station("[{'stationname':'L','DI2_reg':'R'}]", "L", "1:2 'DI2_reg' is no object");
        station("[{'DI_reg':{'name':'R','bias':[]}}]", "R", "1:2 'bias' is no number");
        station("{'type':'moveL'}", "工位 1100,工位 2100,工位 3100,工位 4100",
                "1:1 the file holds no list of records");
    }

    /// No record is lost, because programs refer to positions. Saving keeps a damaged file once.
    void settingsFile_isReadOrReportedAndKept() {
        QFETCH(Settings, settings);
        QFETCH(QByteArray, file);
        QFETCH(QString, tree);
        file_ = lumo::settingsFile(settings);
        test::writeFile(file_, file);
        const LumoWidget page;
        QCOMPARE(inTree(settings), tree);
        QTEST(reports_.join('|'), "report");
        QCOMPARE(m("lumo.port.#9.tag")->getString(), "激光器使能");
        QVERIFY(lumo::saveSettings(settings) && lumo::saveSettings(settings));
        QCOMPARE(contentOf(file_ + ".damaged"), reports_.isEmpty() ? QByteArray("(no file)") : file);
        QVERIFY(!QFile::exists(file_ + ".damaged.2"));
        reports_.clear();
        lumo::loadSettings(this, settings);
        QCOMPARE(inTree(settings), tree);
        QVERIFY(reports_.isEmpty());
    }

    /// Reading does not wait for the other end of a pipe.
    void unreadableFile_isKeptBySaving_evenIfReadableNow() {
        file_ = "lumo_port.json";
        QCOMPARE(::mkfifo("lumo_port.json", 0600), 0);
        const LumoWidget page;
        QCOMPARE(reports_, QStringList("0:0 this is no plain file"));
        QVERIFY(QFile::rename(file_, "pipe"));
        test::writeFile(file_, "{}");
        QVERIFY(lumo::saveSettings(Settings::Ports));
        QCOMPARE(contentOf(file_ + ".damaged"), QByteArray("{}"));
        test::writeFile("shared.json", "[7, {}]");  // a damaged one behind a link
        QVERIFY(QFile::remove(file_) && QFile::link("shared.json", file_));
        QVERIFY(lumo::saveSettings(Settings::Ports));
        QCOMPARE(contentOf(file_ + ".damaged.2"), QByteArray("[7, {}]"));
        QVERIFY(QFileInfo(file_).isSymLink() && contentOf("shared.json") == contentOf(file_));
        QVERIFY(QFile::remove(file_) && QFile::rename("pipe", file_));
        QVERIFY(lumo::saveSettings(Settings::Ports));
        QVERIFY(QFileInfo(file_).isFile() && QFileInfo::exists(file_ + ".damaged.3"));
    }
};

LUMO_TEST(TestStart)
#include "test_start.moc"
