#include "executor/lumoexecutor.h"
#include "gantu/bmodule.h"
#include "kord/managerhelper.h"
#include "kord/thememanager.h"
#include "mendo/creatormanager.h"
#include "module/globals.h"
#include "panel/lumowidget.h"
#include "support/suite.h"
#include "support/text.h"
#include "support/widgets.h"

#include <QDir>
#include <QPointer>
#include <QRegularExpression>
#include <QStackedWidget>
#include <QTranslator>

using test::text;

/// The package's entry, what its first page fills the tree with, and its messages.
class TestPackage : public QObject {
    Q_OBJECT

    QStringList logged_;

    static void setLanguage(const QVariant& language) {
        kord::ManagerHelper::instance()->module()->mobj()->set(nullptr, "language", language);
    }

private slots:
    void initTestCase() {
        mendo::LogHub::instance()->setConsole(false);
        kordservice();  // makes the nodes that packages rely on
        connect(mendo::LogHub::instance(), &mendo::LogHub::line, this,
                [this](const QString& level, const QString& line) {
                    logged_ << level + ' ' + line + (m("lumo")->isNull() ? ", no tree" : "");
                });
    }

    /// Each test begins like a process: no subtree, the panel in Chinese.
    void init() {
        m()->root()->remove(nullptr, "lumo");
        mendo::ModuleManager::purgeRemoved();
        executor = nullptr;
        setLanguage("cn");
        logged_.clear();
    }

    void languageOfThePanel_decidesOnTitleAndLabels() {
        const struct {
            QVariant language;
            const char *title, *gas, *station;
        } rows[] = {{"cn", "激光焊接", "给气", "工位 1"},
                    {"en", "Laser Welding", "Gas Enable", "Station 1"},
                    {"ru", "Лазерная сварка", "Подача газа", "Пост 1"},
                    {"xx", "激光焊接", "Подача газа", "工位 1"},
                    {QVariant(), "激光焊接", "Подача газа", "工位 1"}};
        for (const auto& row : rows) {
            init();
            setLanguage(row.language);
            const std::unique_ptr<gantu::BModule> module(bfactory().create("lumo", nullptr));
            const int pages = m("pel.navo.pages")->size();
            module->init();
            QCOMPARE(text(m("pel.navo.pages")->c(pages)),
                     QString("{'group':'robot.pack','icon':'','index':-1,'nav':'rova.robot.pack.lumo',"
                             "'title':'%1'}")
                         .arg(row.title));
            const LumoWidget page;
            qDeleteAll(qApp->findChildren<QTranslator*>());
            QCOMPARE(m("lumo.port.#6.tag")->getString(), row.gas);
            QCOMPARE(m("lumo.signalsConfig.#0.stationname")->getString(), row.station);
        }
    }

    void banner_goesToTheLogFileToo() {
        QVERIFY(QDir().mkdir("log"));
        const std::unique_ptr<gantu::BModule> module(bfactory().create("lumo", nullptr));
        lumo::logI() << "not for the file";
        QCOMPARE(logged_[0], "S lumo v26, no tree");
        const QString file = QString::fromUtf8(test::contentOf("log/lumo.log"));
        const QRegularExpression line(R"(^\[S\|\d\d/\d\d \d\d:\d\d:\d\d\.\d{3}\] lumo v26\n$)");
        QVERIFY2(line.match(file).hasMatch(), qPrintable(file));
    }

    /// What a run would use that nobody has set up: no laser, gas or wire by a wrong default.
    void firstPage_fillsTheTree_andItOutlivesIt() {
        auto first = std::make_unique<LumoWidget>();
        const std::pair<const char*, const char*> defaults[] = {
            {"lumo.execute",
             "{'dt':20,'line':-1,'state':'idle','trigger':{'once':null,'pause':null,'start':null}}"},
            {"lumo.current.startpoint", "{}"},
            {"lumo.toolset.end",
             "{'load':{'cog':[0,0,0],'inertia':[0,0,0],'mass':0},'name':'tool0',"
             "'rot':[0,0,0],'trans':[0,0,0]}"},
            {"lumo.toolset.ref", "{'name':'wobj0','rot':[0,0,0],'trans':[0,0,0]}"},
            {"lumo.allWeldBtnstatus", "{'handweldbtn':false,'weldbtn':true}"},
            {"lumo.default.program.setDO",
             "{'DO_reg':{'bias':0,'name':'','type':''},'DO_type':'IO','doName':'','value':''}"},
            {"lumo.param", "[]"},
            {"lumo.program", "[]"}};
        for (const auto& [path, content] : defaults) {
            QCOMPARE(text(m(path)), content);
        }
        QCOMPARE(text(m("lumo.default.default_toolset")), text(m("lumo.toolset")));
        QCOMPARE(text(m("lumo.current.program")), text(m("lumo.default.program")));
        QCOMPARE(m("lumo.signalsConfig")->size(), 4);
        QCOMPARE(m("lumo.signalsConfig.#3.time")->getInt(), 100);
        QCOMPARE(m("lumo.cur_param")->getInt(), -1);
        for (const ModuleObject* port : m("lumo.port")->cmobjs()) {
            QCOMPARE(port->c("enable")->getBool(), port->c("tag")->getString() == "激光器使能");
        }
        const QPointer<LumoExecutor> made = executor;
        m("lumo.count")->setValue(nullptr, 7);
        test::writeFile("lumo_param.json", "[{\"name\":\"late\"}]");
        first.reset();
        const LumoWidget second;
        QVERIFY(made && made == executor && made->parent() == m("lumo"));
        QCOMPARE(m("lumo.count")->getInt(), 7);
        QCOMPARE(text(m("lumo.param")), "[]");
        QVERIFY(QFile::remove("lumo_param.json"));
        QCOMPARE(logged_,
                 QStringList({"W LumoWidget::LumoWidget  ui->setupUi(this) begin once--------, no tree",
                              "W LumoWidget::~LumoWidget() ~~~~~~~~",
                              "W LumoWidget::LumoWidget  ui->setupUi(this) begin once--------"}));
    }

    /// Programs and settings files of one panel fit any other.
    void defaultsOfTheLanguages_differInLabelsOnly() {
        QStringList documents;
        for (const char* name : {"lumo", "lumo_en", "lumo_ru"}) {
            QJsonObject root =
                mendo::ModuleManager::readFromJson(QString(":/lumo/%1.json").arg(name)).toObject();
            QJsonObject defaults = root["default"].toObject();
            QJsonObject templates = defaults["program"].toObject();
            // The Russian ones never had more.
            QCOMPARE(text(templates["open"]) == "{}", QByteArray(name) == "lumo_ru");
            templates.remove("open");
            templates.remove("waitDI");
            defaults["program"] = templates;
            root["default"] = defaults;
            documents << text(root).replace(QRegularExpression("'tag':'[^']+'"), "'tag'");
        }
        QCOMPARE(documents[0].count("'tag'"), 15 + 19);
        QCOMPARE(documents[1], documents[0]);
        QCOMPARE(documents[2], documents[0]);
    }

    void theme_isUnderstoodAndHasRoomForAFinger() {
        static QStringList warnings;
        const auto before =
            qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
                if (type != QtDebugMsg && type != QtInfoMsg) {
                    warnings << text;
                }
            });
        QPushButton button("x");
        button.setStyleSheet(kord::ThemeManager::genStyleSheet(":/UI/style.json"));
        button.ensurePolished();
        const int height = button.sizeHint().height();
        qInstallMessageHandler(before);
        QCOMPARE(warnings, QStringList());
        QVERIFY2(height >= 40, qPrintable(QString::number(height)));
    }

    void alert_isModalToItsPageAloneAndNotShownTwice() {
        QStackedWidget center;
        auto* const current = new QWidget;
        center.addWidget(current);
        setInstantiatedCenterWidget(&center);
        showAlertDialog("Gas pressure is low");
        showAlertDialog("Gas pressure is low");
        QPointer<QMessageBox> box = test::shown<QMessageBox>();
        QCOMPARE(test::boxes(), QStringList("Gas pressure is low"));
        QVERIFY(box->windowTitle().isEmpty() && box->parentWidget() == current && box->buttons().size() == 1);
        QCOMPARE(box->windowModality(), Qt::WindowModal);
        showAlertDialog("Gas pressure is fine");
        QCOMPARE(test::boxes().size(), 2);
        box->buttons().first()->click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!box);
        showAlertDialog("Gas pressure is low");
        QCOMPARE(test::boxes().size(), 2);
        test::closeBoxes();
        setInstantiatedCenterWidget(nullptr);
    }
};

LUMO_TEST(TestPackage)
#include "test_package.moc"
