// The shared library as a host loads it: by file, then by registry keys and exported names.

#include "gantu/bmodule.h"
#include "gantu/panel.h"
#include "kord/kordservice.h"
#include "mendo/creatormanager.h"
#include "mendo/log.h"
#include "mendo/modulemanager.h"

#include <QDir>
#include <QFile>
#include <QLibrary>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>

#include <memory>

class TestLibrary : public QObject {
    Q_OBJECT
private slots:
    void load_registersThePackage();
    void host_findsThePageByItsKey();
    void globals_areResolvableByName();
    void internals_areHidden();

private:
    QLibrary library_{QStringLiteral(LUMO_LIBRARY)};
    QTemporaryDir folder_;
};

void TestLibrary::load_registersThePackage() {
    mendo::LogHub::instance()->setConsole(false);
    kordservice();  // makes the nodes that packages rely on
    QVERIFY(QDir::setCurrent(folder_.path()));
    QVERIFY(!bfactory().contains("lumo"));
    QVERIFY(!QFile::exists(":/lumo/lumo.json"));
    QString error;
    QVERIFY2(gantu::loadPackage(LUMO_LIBRARY, &error), qPrintable(error));
    QVERIFY(bfactory().contains("lumo"));
    QVERIFY(bfactory().contains("rova.robot.pack.lumo"));
    QCOMPARE(mendo::pluginManager().value("lumo", -1), 11);
    QCOMPARE(ver("lumo", true), 26);
    QVERIFY(QFile::exists(":/lumo/lumo.json"));
    QVERIFY(QFile::exists(":/lumo/language/lumo_ru.qm"));
}

void TestLibrary::host_findsThePageByItsKey() {
    QObject panel;
    bfactory().create("lumo", &panel)->init();
    const QString key = m("pel.navo.pages.#0.nav")->getString();
    const std::unique_ptr<gantu::BModule> page(bfactory().create(key, nullptr));
    QVERIFY(page);
    QCOMPARE(page->wgt()->metaObject()->className(), "LumoWidget");
    QCOMPARE(m("lumo.execute.state")->getString(), "idle");
}

void TestLibrary::globals_areResolvableByName() {
    auto* mode = reinterpret_cast<int*>(library_.resolve("hand_or_signalbing"));
    QVERIFY(mode);
    QCOMPARE(*mode, 0);
    auto* executor = reinterpret_cast<QObject**>(library_.resolve("executor"));
    QVERIFY(executor);
    QVERIFY(*executor);
    QCOMPARE((*executor)->parent(), m("lumo"));
    QVERIFY(library_.resolve("isEnable_moveorder"));
    QVERIFY(library_.resolve("isnew_pWgt"));
    QVERIFY(library_.resolve("_Z15showAlertDialogRK7QString"));
}

void TestLibrary::internals_areHidden() {
    QVERIFY(!library_.resolve("_Z14scaledFractiond"));
}

QTEST_MAIN(TestLibrary)
#include "test_library.moc"
