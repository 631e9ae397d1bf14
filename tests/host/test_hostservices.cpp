// Registries, loggers, themes, translations and navigation.

#include "gantu/bmodule.h"
#include "gantu/panel.h"
#include "host/nodesupport.h"
#include "kord/managerhelper.h"
#include "kord/thememanager.h"
#include "mendo/clock.h"
#include "mendo/creatormanager.h"
#include "mendo/log.h"
#include "mendo/modulemanager.h"
#include "pel/navo.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QVector3D>

using mendo::ModuleObject;

namespace {

class StoppedClock : public mendo::Clock {
public:
    QDateTime now() const override { return QDateTime(QDate(2031, 2, 3), QTime(4, 5, 6, 78)); }
    qint64 elapsedMs() const override { return elapsedMs_; }
    void pass(qint64 ms) { elapsedMs_ += ms; }

private:
    qint64 elapsedMs_ = 0;
};

}  // namespace

class TestHostServices : public QObject {
    Q_OBJECT
private slots:
    void registry_newestStands();
    void log_lineIsTaggedAndSpacedOnce();
    void log_fileOnlyWhereItsFolderIs();
    void log_isWrittenOnceItsFolderIsThere_data();
    void log_isWrittenOnceItsFolderIsThere();
    void theme_becomesASheet();
    void theme_reachesWindowsButExclusions();
    void pages_areOrdered();
    void subtree_isRegisteredOnce();
    void names_areJoined_data();
    void names_areJoined();
    void centerWidget_isForgottenWithTheWidget();
    void missingCatalogueAndLibrary_areRefused();
};

void TestHostServices::registry_newestStands() {
    mendo::CreatorManager manager;
    QObject parent;
    manager.regist(QStringLiteral("a"), [](QObject* owner) { return new gantu::BModule(owner); });
    manager.regist(QStringLiteral("v"), [] { return 11; });
    manager.regist(QStringLiteral("v"), [] { return 26; });
    QVERIFY(manager.create(QStringLiteral("a"), &parent)->parent() == &parent);
    QVERIFY(!manager.create(QStringLiteral("v"), &parent) && !manager.contains(QStringLiteral("x")));
    QCOMPARE(manager.value(QStringLiteral("v")), 26);
    QCOMPARE(manager.value(QStringLiteral("a"), -1), -1);
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QStringLiteral("unheard")));
    QCOMPARE(ver(QStringLiteral("unheard"), true), 0);
}

void TestHostServices::log_lineIsTaggedAndSpacedOnce() {
    QTemporaryDir folder;
    const StoppedClock clock;
    mendo::Clock::install(&clock);
    mendo::LogHub::instance()->setConsole(false);
    QStringList heard;
    QObject context;
    connect(mendo::LogHub::instance(), &mendo::LogHub::line, &context,
            [&](const QString& level, const QString& text) { heard << level << text; });
    mendo::QLog(QStringLiteral("\033[36m"), QStringLiteral("[I|%1]"), QString())
        << "angle" << QStringLiteral("a b") << 0.5 << QVector3D(1, 2, 3) << true;
    for (int i = 0; i < 2; ++i) {
        mendo::QFLog(QStringLiteral("\033[35m"), QStringLiteral("[S|%1]"), QString(),
                     folder.filePath(QStringLiteral("lumo")), QStringLiteral("log"))
            << "激光 %1 " << i;
    }
    mendo::LogHub::instance()->setConsole(true);
    mendo::Clock::install(nullptr);
    QCOMPARE(heard, (QStringList{"I", "angle a b 0.5 QVector3D(1, 2, 3) true", "S", "激光 %1  0", "S",
                                 "激光 %1  1"}));
    QFile file(folder.filePath(QStringLiteral("lumo.log")));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(file.readAll()),
             QStringLiteral("[S|02/03 04:05:06.078] 激光 %1  0\n[S|02/03 04:05:06.078] 激光 %1  1\n"));
}

void TestHostServices::log_fileOnlyWhereItsFolderIs() {
    QTemporaryDir folder;
    mendo::LogHub::instance()->setConsole(false);
    mendo::QFLog(QString(), QStringLiteral("[E|%1]"), QString(), folder.filePath(QStringLiteral("log/lumo")),
                 QStringLiteral("log"))
        << "lost";
    mendo::LogHub::instance()->setConsole(true);
    QVERIFY(!QFile::exists(folder.filePath(QStringLiteral("log"))));
}

void TestHostServices::log_isWrittenOnceItsFolderIsThere_data() {
    QTest::addColumn<int>("linesBefore");
    QTest::addColumn<int>("passedMs");
    QTest::newRow("at once") << 3 << 0;
    QTest::newRow("soon after many lines") << 1000 << 100;
}

/// Whoever listens misses no line meanwhile.
void TestHostServices::log_isWrittenOnceItsFolderIsThere() {
    QFETCH(int, linesBefore);
    QFETCH(int, passedMs);
    const QTemporaryDir folder;
    StoppedClock clock;
    mendo::Clock::install(&clock);
    mendo::LogHub::instance()->setConsole(false);
    const QString path = folder.filePath(QStringLiteral("later/lumo"));
    QSignalSpy heard(mendo::LogHub::instance(), &mendo::LogHub::line);
    const auto log = [&path](int number) {
        mendo::QFLog(QString(), QStringLiteral("[E|%1]"), QString(), path, QStringLiteral("log")) << number;
    };
    for (int number = 0; number < linesBefore; ++number) {
        log(number);
    }
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("later")));
    clock.pass(passedMs);
    log(-2);
    log(-1);
    mendo::LogHub::instance()->setConsole(true);
    mendo::Clock::install(nullptr);
    QCOMPARE(heard.size(), linesBefore + 2);
    QFile file(path + QStringLiteral(".log"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("[E|02/03 04:05:06.078] -2\n[E|02/03 04:05:06.078] -1\n"));
}

void TestHostServices::theme_becomesASheet() {
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("style.json"));
    QVERIFY(mendo::ModuleManager::writeToJson(
        file, json("{'QPushButton': {'color': '#333', 'border-width': 2}, 'QDialog': {}}"), true));
    QCOMPARE(kord::ThemeManager::genStyleSheet(file),
             QStringLiteral("QDialog { }\nQPushButton { border-width: 2; color: #333; }\n"));
    QCOMPARE(kord::ThemeManager::genStyleSheet(folder.filePath(QStringLiteral("none.json"))), QString());
}

void TestHostServices::theme_reachesWindowsButExclusions() {
    QWidget panel;
    auto* part = new QWidget(&panel);
    auto* dialog = new QWidget(part, Qt::Dialog);
    auto* excluded = new QWidget(&panel, Qt::Dialog);
    excluded->setObjectName(QStringLiteral("plain"));
    const QString sheet = QStringLiteral("QWidget { color: red; }");
    kord::ThemeManager::setRecursiveWidgetStyleSheet(&panel, sheet, {QStringLiteral("plain")});
    QCOMPARE(panel.styleSheet() + dialog->styleSheet(), sheet + sheet);
    QCOMPARE(part->styleSheet() + excluded->styleSheet(), QString());
}

void TestHostServices::pages_areOrdered() {
    ModuleObject* last = pel::navo::registerPage(this, QStringLiteral("激光焊接"),
                                                 QStringLiteral("robot.pack"), QString(), -1);
    ModuleObject* first =
        pel::navo::registerPage(this, QStringLiteral("A"), QStringLiteral("g"), QStringLiteral("i"), 0);
    last->set(this, QStringLiteral("nav"), QStringLiteral("key"), true);
    QVERIFY(m(QStringLiteral("pel.navo.pages.#0")) == first &&
            m(QStringLiteral("pel.navo.pages.#1")) == last);
    QCOMPARE(text(last),
             QStringLiteral("{'group':'robot.pack','icon':'','index':-1,'nav':'key','title':'激光焊接'}"));
}

void TestHostServices::subtree_isRegisteredOnce() {
    auto owner = std::make_unique<QObject>();
    ModuleObject* node = m()->regist(owner.get(), QStringLiteral("package"));
    QVERIFY(node == m()->regist(this, QStringLiteral("package")));
    owner.reset();
    QVERIFY(m(QStringLiteral("package")) == node);
    QCOMPARE(node->path(), QStringLiteral("package"));
    QVERIFY(kord::ManagerHelper::instance()->module()->mobj()->hasCmobj(QStringLiteral("language")));
}

void TestHostServices::names_areJoined_data() {
    QTest::addColumn<QStringList>("parts");
    QTest::addColumn<QString>("joined");
    QTest::newRow("three") << QStringList{"a", "b", "#1"} << "a.b.#1";
    QTest::newRow("no last") << QStringList{"register.values", "", ""} << "register.values";
    QTest::newRow("no first") << QStringList{"", "b", "c"} << "b.c";
    QTest::newRow("none") << QStringList{"", "", ""} << "";
}

void TestHostServices::names_areJoined() {
    QFETCH(QStringList, parts);
    QTEST(mName(parts[0], parts[1], parts[2]), "joined");
    QCOMPARE(mName(parts[0], parts[1]), mName(parts[0], parts[1], QString()));
}

void TestHostServices::centerWidget_isForgottenWithTheWidget() {
    auto widget = std::make_unique<QStackedWidget>();
    setInstantiatedCenterWidget(widget.get());
    QVERIFY(instantiatedCenterWidget() == widget.get());
    widget.reset();
    QVERIFY(!instantiatedCenterWidget());
}

void TestHostServices::missingCatalogueAndLibrary_areRefused() {
    QVERIFY(!translator()->installQMTranslator(QStringLiteral(":/lumo/language/lumo_cn.qm")));
    QString error;
    QVERIFY(!gantu::loadPackage(QStringLiteral("/no/such/library.so"), &error));
    QVERIFY(!error.isEmpty());
}

QTEST_MAIN(TestHostServices)
#include "test_hostservices.moc"
