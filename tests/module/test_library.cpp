#include "gantu/bmodule.h"
#include "gantu/panel.h"
#include "kord/kordservice.h"
#include "mendo/creatormanager.h"
#include "mendo/log.h"
#include "mendo/modulemanager.h"
#include "support/suite.h"

#include <QLibrary>
#include <QPointer>
#include <QWidget>

#include <memory>

/// The shared library as a host loads it: by file, then by registry keys and exported names.
class TestLibrary : public QObject {
    Q_OBJECT
private slots:
    void hostThatDoesNotLinkIt_findsPageAndGlobals() {
        mendo::LogHub::instance()->setConsole(false);
        kordservice();  // makes the nodes that packages rely on
        QVERIFY(!bfactory().contains("lumo") && !QFile::exists(":/lumo/lumo.json"));
        QString error;
        QVERIFY2(gantu::loadPackage(LUMO_LIBRARY, &error), qPrintable(error));
        QCOMPARE(mendo::pluginManager().value("lumo", -1), 11);
        QCOMPARE(ver("lumo", true), 26);
        QVERIFY(QFile::exists(":/lumo/lumo.json") && QFile::exists(":/lumo/language/lumo_ru.qm"));

        QObject panel;
        gantu::BModule* const module = bfactory().create("lumo", &panel);
        QCOMPARE(module->name(), "lumo");
        QVERIFY(module->parent() == &panel && !module->wgt());
        module->init();
        const QString key = m("pel.navo.pages.#0.nav")->getString();
        QCOMPARE(key, "rova.robot.pack.lumo");
        std::unique_ptr<gantu::BModule> page(bfactory().create(key, nullptr));
        const QPointer<QWidget> widget = page->wgt();
        QCOMPARE(widget->metaObject()->className(), "LumoWidget");
        QVERIFY(page->name() == "lumowidget" && !widget->parent());
        QCOMPARE(m("lumo.execute.state")->getString(), "idle");

        QLibrary library(LUMO_LIBRARY);
        QCOMPARE(*reinterpret_cast<int*>(library.resolve("hand_or_signalbing")), 0);
        QCOMPARE((*reinterpret_cast<QObject**>(library.resolve("executor")))->parent(), m("lumo"));
        QVERIFY(library.resolve("isEnable_moveorder") && library.resolve("isnew_pWgt"));
        QVERIFY(library.resolve("_Z15showAlertDialogRK7QString"));
        QVERIFY(!library.resolve("_Z14scaledFractiond"));  // what is internal is hidden
        page.reset();
        QVERIFY(!widget);
    }
};

LUMO_TEST_ON(TestLibrary, test::onWallClock)
#include "test_library.moc"
