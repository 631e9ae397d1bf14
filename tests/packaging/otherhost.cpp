// A host of somebody else's: built with what is installed, it loads the package and asks it for a page.
#include <gantu/package.h>
#include <gantu/panel.h>
#include <mendo/modulemanager.h>

#include <QApplication>
#include <QStackedWidget>

#include <cstdio>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QStackedWidget center;
    setInstantiatedCenterWidget(&center);
    gantu::Package package;
    QString error;
    if (!package.load(QStringLiteral(PACKAGE), QStringLiteral("lumo"), &error)) {
        std::printf("%s\n", qPrintable(error));
        return 1;
    }
    const mendo::ModuleObject* entry = m(QStringLiteral("pel.navo.pages"))->c(0);
    const QWidget* page = package.page(entry->c(QStringLiteral("nav"))->getString());
    std::printf("%d ports, %s\n", m(QStringLiteral("lumo.port"))->cmobjs().size(), page ? "a page" : "no page");
    return 0;
}
