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

    /// Like a process: no subtree.
    void begin(const QVariant& language) {
        m()->root()->remove(nullptr, "lumo");
        mendo::ModuleManager::purgeRemoved();
        executor = nullptr;
        kord::ManagerHelper::instance()->module()->mobj()->set(nullptr, "language", language);
        logged_.clear();
    }

private slots:
    void initTestCase() {
        mendo::LogHub::instance()->setConsole(false);
        kordservice();  // makes the nodes that packages rely on
        connect(mendo::LogHub::instance(), &mendo::LogHub::line, this,
                [this](const QString& level, const QString& line) {
                    logged_ << (m("lumo")->isNull() ? "no tree: " : "") + level + ' ' + line;
                });
    }

    void init() { begin("cn"); }

    void languageOfThePanel_decidesOnTitleAndLabels() {
        const QStringList rows[] = {{"cn", "激光焊接", "给气", "工位 1"},
                                    {"en", "Laser Welding", "Gas Enable", "Station 1"},
                                    {"ru", "Лазерная сварка", "Подача газа", "Пост 1"},
                                    {"", "激光焊接", "Подача газа", "工位 1"}};
        QVERIFY(QDir().mkdir("log"));
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
        }
        const QString log = QString::fromUtf8(test::contentOf("log/lumo.log"));
        const QRegularExpression banner(R"(^\[S\|\d\d/\d\d \d\d:\d\d:\d\d\.\d{3}\] lumo v26\n)");
        QVERIFY2(banner.match(log).hasMatch(), qPrintable(log));
    }

    /// What a run would use that nobody has set up: no laser, gas or wire by a wrong default.
    void firstPage_fillsTheTree_whichOutlivesIt() {
        auto first = std::make_unique<LumoWidget>();
        QCOMPARE(text(m("lumo.execute")),
                 "{'dt':20,'line':-1,'state':'idle','trigger':{'once':null,'pause':null,'start':null}}");
        QCOMPARE(text(m("lumo.toolset")),
                 "{'end':{'load':{'cog':[0,0,0],'inertia':[0,0,0],'mass':0},'name':'tool0','rot':[0,0,0],"
                 "'trans':[0,0,0]},'ref':{'name':'wobj0','rot':[0,0,0],'trans':[0,0,0]}}");
        QCOMPARE(text(m("lumo.default.default_toolset")), text(m("lumo.toolset")));
        QCOMPARE(text(m("lumo.current.program")), text(m("lumo.default.program")));
        QCOMPARE(text(m("lumo.allWeldBtnstatus")), "{'handweldbtn':false,'weldbtn':true}");
        QCOMPARE(text(m("lumo.program")) + text(m("lumo.param")), "[][]");
        QVERIFY(m("lumo.signalsConfig")->size() == 4 && m("lumo.signalsConfig.#3.time")->getInt() == 100);
        QCOMPARE(m("lumo.cur_param")->getInt(), -1);
        for (const ModuleObject* port : m("lumo.port")->cmobjs()) {
            QCOMPARE(port->c("enable")->getBool(), port->c("tag")->getString() == "激光器使能");
        }
        const QPointer<LumoExecutor> made = executor;
        m("lumo.count")->setValue(nullptr, 7);
        test::writeFile("lumo_param.json", "[{}]");
        first.reset();
        const LumoWidget second;
        QVERIFY(QFile::remove("lumo_param.json"));
        QVERIFY(made && made == executor && made->parent() == m("lumo"));
        QVERIFY(m("lumo.count")->getInt() == 7 && m("lumo.param")->size() == 0);
        QCOMPARE(logged_.mid(0, 2),
                 QStringList({"no tree: W LumoWidget::LumoWidget  ui->setupUi(this) begin once--------",
                              "W LumoWidget::~LumoWidget() ~~~~~~~~"}));
    }

    /// Programs and settings files of one panel fit any other.
    void defaultsOfTheLanguages_differInLabelsOnly() {
        QStringList documents;
        for (const char* file : {":/lumo/lumo.json", ":/lumo/lumo_en.json", ":/lumo/lumo_ru.json"}) {
            documents << text(mendo::ModuleManager::readFromJson(file));
            QCOMPARE(documents.last().count("'tag':'"), 15 + 19);
            documents.last().remove(QRegularExpression("'tag':'[^']+'"));
        }
        QCOMPARE(documents[1], documents[0]);
        // The Russian ones never had more in two templates.
        const QRegularExpression templates("'(open|waitDI)':(\\{[^{}]*(\\{[^{}]*\\}[^{}]*)?\\})");
        QCOMPARE(documents[2].remove(templates), documents[0].remove(templates));
    }

    void theme_isUnderstood() {
        static QStringList warnings;
        const auto before = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext&, const QString& warning) { warnings << warning; });
        QPushButton button;
        button.setStyleSheet(kord::ThemeManager::genStyleSheet(":/UI/style.json"));
        button.ensurePolished();
        qInstallMessageHandler(before);
        QCOMPARE(warnings, QStringList());
    }

    void alert_isModalToItsPageAloneAndNotShownTwice() {
        QStackedWidget center;
        auto* const current = new QWidget(&center);
        center.addWidget(current);
        setInstantiatedCenterWidget(&center);
        showAlertDialog("Gas pressure is low");
        showAlertDialog("Gas pressure is low");
        const QPointer<QMessageBox> box = test::shown<QMessageBox>();
        QCOMPARE(test::boxes(), QStringList("Gas pressure is low"));
        QVERIFY(box->windowTitle().isEmpty() && box->parentWidget() == current);
        QVERIFY(box->windowModality() == Qt::WindowModal && box->buttons().size() == 1);
        showAlertDialog("Gas pressure is fine");
        box->buttons().first()->click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!box);
        showAlertDialog("Gas pressure is low");
        QCOMPARE(test::boxes(), QStringList({"Gas pressure is fine", "Gas pressure is low"}));
        setInstantiatedCenterWidget(nullptr);
    }
};

LUMO_TEST(TestPackage)
#include "test_package.moc"
