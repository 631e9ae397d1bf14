// The first panel fills the tree from the defaults and the settings files; a later one finds it so.

#include "executor/lumoexecutor.h"
#include "gantu/bmodule.h"
#include "kord/managerhelper.h"
#include "module/globals.h"
#include "module/host.h"
#include "panel/lumowidget.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTranslator>

#include <memory>

namespace {

QString compact(const ModuleObject* node) {
    const QJsonValue value = node->exportToJson();
    if (!value.isArray() && !value.isObject()) {
        return value.isNull() ? QStringLiteral("null") : value.toVariant().toString();
    }
    const QJsonDocument document =
        value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    return QString::fromUtf8(document.toJson(QJsonDocument::Compact)).replace('"', '\'');
}

void write(const QString& name, QString content) {
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content.replace('\'', '"').toUtf8());
}

QStringList stationNames() {
    QStringList names;
    for (const ModuleObject* station : m("lumo.signalsConfig")->cmobjs()) {
        names << station->c("stationname")->getString();
    }
    return names;
}

}  // namespace

class TestLoad : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void defaults_data();
    void defaults();
    void language_choosesTheDocument_data();
    void language_choosesTheDocument();
    void tree_isCompletedAfterTheFiles();
    void stations_areNamedInTheLanguage();
    void lists_areReplacedOrKept_data();
    void lists_areReplacedOrKept();
    void settings_areReadFromTheWorkingDirectoryOnly();
    void constructor_logsBeforeItLoads();
    void secondPanel_readsNothing();
    void subtree_outlivesThePanel();

private:
    std::unique_ptr<QTemporaryDir> folder_;
};

void TestLoad::initTestCase() {
    mendo::LogHub::instance()->setConsole(false);
    kordservice();  // makes the nodes that packages rely on
}

// Each test begins like a process: no subtree, an empty working directory, the panel in Chinese.
void TestLoad::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir::setCurrent(folder_->path()));
    kord::ManagerHelper::instance()->module()->mobj()->set(nullptr, "language", "cn");
    QVERIFY(m("lumo")->isNull());
}

void TestLoad::cleanup() {
    m()->root()->remove(nullptr, "lumo");
    mendo::ModuleManager::purgeRemoved();
    executor = nullptr;
}

void TestLoad::defaults_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("content");
    const auto row = [](const char* path, const char* content) {
        QTest::newRow(path) << QString(path) << QString(content);
    };
    row("lumo.default.param.#0", "{'name':'power','range':[0,100],'tag':'激光功率(%)','value':50}");
    row("lumo.default.param.#8", "{'name':'open_interval','range':[0,5000],'tag':'出光间隔(ms)','value':0}");
    row("lumo.default.param.#14",
        "{'name':'give_wire_time','range':[0,5000],'tag':'补丝时间(ms)','value':200}");
    row("lumo.default.program.moveJ", "{'point':{},'speed':20,'zone':2}");
    row("lumo.default.program.moveCC",
        "{'point':{},'point1':{},'speed':20,'toolset':{'end':{'name':'','trans':[0,0,0]},"
        "'ref':{'name':'','trans':[0,0,0]}},'zone':2}");
    row("lumo.default.program.open",
        "{'index':0,'laserDutyCycle':50,'laserPower':50,'weldspeed':20,'wireEnable':false}");
    row("lumo.default.program.close", "{}");
    row("lumo.default.program.param", "{'index':0,'laserDutyCycle':50,'laserPower':50,'wireEnable':false}");
    row("lumo.default.program.setDO",
        "{'DO_reg':{'bias':0,'name':'','type':''},'DO_type':'IO','doName':'','value':''}");
    row("lumo.default.program.waitDI",
        "{'DI_reg':{'bias':0,'name':'','type':''},'DI_type':'IO','diName':'','value1':''}");
    row("lumo.default.program.delay", "{'delaytime':0}");
    row("lumo.default.signalsConfig.DO2_reg", "{'bias':0,'name':'','type':''}");
    row("lumo.default.signalsConfig.DI2_type", "IO");
    row("lumo.port.#9", "{'enable':true,'name':'DO2_3','tag':'激光器使能','type':'DO'}");
    row("lumo.port.#14", "{'enable':false,'name':'DO2_8','tag':'抽丝信号','type':'DO'}");
    row("lumo.port.#18", "{'enable':false,'name':'LUMO_AO_3','tag':'激光占空比','type':'AO'}");
    row("lumo.param", "[]");
    row("lumo.program", "[]");
    row("lumo.cur_param", "-1");
    row("lumo.allWeldBtnstatus", "{'handweldbtn':false,'weldbtn':true}");
    row("lumo.current.line", "0");
    row("lumo.current.openmiddlecolse", "false");
    row("lumo.current.startpoint", "{}");
    row("lumo.current.programtype", "null");
    row("lumo.toolset.end",
        "{'load':{'cog':[0,0,0],'inertia':[0,0,0],'mass':0},'name':'tool0','rot':[0,0,0],'trans':[0,0,0]}");
    row("lumo.toolset.ref", "{'name':'wobj0','rot':[0,0,0],'trans':[0,0,0]}");
    row("lumo.execute",
        "{'dt':20,'line':-1,'state':'idle','trigger':{'once':null,'pause':null,'start':null}}");
    row("lumo.keypad.center", "{'clicked':false,'pressing':false}");
    row("lumo.keypad.delete", "{'clicked':false,'pressing':false}");
    row("lumo.dialog", "{'program':null,'statement':null}");
    row("lumo.count", "0");
    row("lumo.processTime", "0");
}

void TestLoad::defaults() {
    QFETCH(QString, path);
    QFETCH(QString, content);
    LumoWidget panel;
    QVERIFY(!m(path)->isNull());
    QCOMPARE(compact(m(path)), content);
    QVERIFY(m("lumo.signalbind_program")->isNull());
}

void TestLoad::language_choosesTheDocument_data() {
    QTest::addColumn<QVariant>("language");
    QTest::addColumn<QString>("tag");
    QTest::newRow("Chinese") << QVariant("cn") << "给气";
    QTest::newRow("English") << QVariant("en") << "Gas Enable";
    QTest::newRow("Russian") << QVariant("ru") << "Подача газа";
    QTest::newRow("unknown") << QVariant("de") << "Подача газа";
    QTest::newRow("empty") << QVariant("") << "Подача газа";
    QTest::newRow("none") << QVariant() << "Подача газа";
}

void TestLoad::language_choosesTheDocument() {
    QFETCH(QVariant, language);
    QFETCH(QString, tag);
    kord::ManagerHelper::instance()->module()->mobj()->set(nullptr, "language", language);
    LumoWidget panel;
    QCOMPARE(m("lumo.port.#6.tag")->getString(), tag);
}

void TestLoad::tree_isCompletedAfterTheFiles() {
    LumoWidget panel;
    QCOMPARE(stationNames(), QStringList({"工位 1", "工位 2", "工位 3", "工位 4"}));
    QCOMPARE(m("lumo.signalsConfig.#3.time")->getInt(), 100);
    QCOMPARE(m("lumo.signalsConfig.#3.DO_type")->getString(), "IO");
    const ModuleObject* defaults = m("lumo.default");
    QCOMPARE(defaults->c(defaults->size() - 1)->name(), "default_toolset");
    QCOMPARE(compact(m("lumo.default.default_toolset")), compact(m("lumo.toolset")));
    QCOMPARE(compact(m("lumo.current.program")), compact(m("lumo.default.program")));
    QVERIFY(executor);
    QCOMPARE(executor->parent(), m("lumo"));
}

void TestLoad::stations_areNamedInTheLanguage() {
    QVERIFY(translator()->installQMTranslator(":/lumo/language/lumo_en.qm"));
    LumoWidget panel;
    qDeleteAll(qApp->findChildren<QTranslator*>());
    QCOMPARE(stationNames(), QStringList({"Station 1", "Station 2", "Station 3", "Station 4"}));
}

void TestLoad::lists_areReplacedOrKept_data() {
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("content");
    QTest::addColumn<QString>("params");
    QTest::addColumn<QStringList>("stations");
    QTest::addColumn<int>("problems");
    const QStringList four{"工位 1", "工位 2", "工位 3", "工位 4"};
    const auto row = [](const char* name, const char* file, const char* content, const char* params,
                        const QStringList& stations, int problems) {
        QTest::newRow(name) << file << content << params << stations << problems;
    };
    row("parameter sets", "lumo_param.json", "[{'name':'steel 2 mm','power':60}]",
        "[{'name':'steel 2 mm','power':60}]", four, 0);
    row("no parameter sets", "lumo_param.json", "{}", "[]", four, 0);
    row("parameter sets damaged", "lumo_param.json", "[{'name':", "[]", four, 1);
    row("parameter sets are no list", "lumo_param.json", "{'name':'steel'}", "[]", four, 1);
    row("stations", "lumo_signalsConfig.json", "[{'stationname':'left'},{'stationname':'right'}]", "[]",
        {"left", "right"}, 0);
    row("no stations", "lumo_signalsConfig.json", "{}", "[]", {}, 0);
    row("stations damaged", "lumo_signalsConfig.json", "[{'stationname':'left'}", "[]", four, 1);
    row("file empty", "lumo_signalsConfig.json", "", "[]", four, 1);
}

void TestLoad::lists_areReplacedOrKept() {
    QFETCH(QString, file);
    QFETCH(QString, content);
    QFETCH(QString, params);
    QFETCH(QStringList, stations);
    QFETCH(int, problems);
    write(file, content);
    QSignalSpy reported(m(), &mendo::ModuleManager::fileProblem);
    LumoWidget panel;
    QCOMPARE(compact(m("lumo.param")), params);
    QVERIFY(m("lumo.param")->isList());
    QVERIFY(m("lumo.signalsConfig")->isList());
    QCOMPARE(stationNames(), stations);
    QCOMPARE(reported.size(), problems);
}

void TestLoad::settings_areReadFromTheWorkingDirectoryOnly() {
    write("lumo_param.json", "[{'name':'here'}]");
    QVERIFY(QDir().mkdir("elsewhere"));
    QVERIFY(QDir::setCurrent(folder_->filePath("elsewhere")));
    LumoWidget panel;
    QCOMPARE(m("lumo.param")->size(), 0);
    QVERIFY(QDir(folder_->filePath("elsewhere")).isEmpty());
}

void TestLoad::constructor_logsBeforeItLoads() {
    QStringList lines;
    bool treeThere = true;
    connect(mendo::LogHub::instance(), &mendo::LogHub::line, this,
            [&](const QString& level, const QString& text) {
                treeThere = !m("lumo")->isNull();
                lines << level + ' ' + text;
            });
    auto panel = std::make_unique<LumoWidget>();
    QCOMPARE(lines, QStringList{"W LumoWidget::LumoWidget  ui->setupUi(this) begin once--------"});
    QVERIFY(!treeThere);
    panel.reset();
    disconnect(mendo::LogHub::instance(), nullptr, this, nullptr);
    QCOMPARE(lines.value(1), "W LumoWidget::~LumoWidget() ~~~~~~~~");
}

void TestLoad::secondPanel_readsNothing() {
    LumoWidget first;
    const LumoExecutor* made = executor;
    m("lumo.count")->setValue(nullptr, 7);
    write("lumo_param.json", "[{'name':'late'}]");
    const LumoWidget second;
    QCOMPARE(m("lumo.count")->getInt(), 7);
    QCOMPARE(m("lumo.param")->size(), 0);
    QCOMPARE(m("lumo.signalsConfig")->size(), 4);
    QCOMPARE(executor, made);
}

void TestLoad::subtree_outlivesThePanel() {
    auto panel = std::make_unique<LumoWidget>();
    const QPointer<LumoExecutor> made = executor;
    panel.reset();
    QVERIFY(made);
    QVERIFY(!m("lumo.execute.trigger.start")->isNull());
}

QTEST_MAIN(TestLoad)
#include "test_load.moc"
