#include "gantu/bmodule.h"
#include "gantu/package.h"
#include "kord/kordservice.h"
#include "mendo/creatormanager.h"
#include "mendo/modulemanager.h"
#include "support/suite.h"

#include <QLibrary>
#include <QPointer>
#include <QWidget>

/// The shared library as a host loads it: by file, then by registry keys and exported names.
class TestLibrary : public QObject {
    Q_OBJECT
private slots:
    void loadedLibrary_registersPageAndExportsGlobals() {
        kordservice();  // creates the nodes that packages need
        QString error;
        QVERIFY2(gantu::loadPackage(LUMO_LIBRARY, &error), qPrintable(error));
        QVERIFY(mendo::pluginManager().value("lumo", -1) == 11 && ver("lumo", true) == 26);
        QObject panel;
        gantu::BModule* const module = bfactory().create("lumo", &panel);
        QVERIFY(module->name() == "lumo" && module->parent() == &panel && !module->wgt());
        module->init();
        gantu::BModule* const page = bfactory().create(m("pel.navo.pages.#0.nav")->getString(), nullptr);
        const QPointer<QWidget> widget = page->wgt();
        QCOMPARE(widget->metaObject()->className(), "LumoWidget");
        QVERIFY(page->name() == "lumowidget" && !widget->parent());

        QLibrary library(LUMO_LIBRARY);
        QCOMPARE((*reinterpret_cast<QObject**>(library.resolve("executor")))->parent(), m("lumo"));
        QVERIFY(library.resolve("isEnable_moveorder") && library.resolve("isnew_pWgt"));
        QVERIFY(library.resolve("_Z15showAlertDialogRK7QString"));
        QVERIFY(!library.resolve("_Z14scaledFractiond"));  // internal names are hidden
        delete page;
        QVERIFY(!widget);
    }
};

LUMO_TEST_ON(TestLibrary, test::onWallClock)
#include "test_library.moc"
