#include "gantu/package.h"

#include "gantu/bmodule.h"
#include "mendo/creatormanager.h"

#include <QPointer>
#include <QTest>
#include <QWidget>

namespace {

int initialised = 0;

class Module : public gantu::BModule {
public:
    explicit Module(QObject* parent) : BModule(parent) {}
    void init() override { ++initialised; }
    QWidget* wgt() override { return &page_; }

private:
    QWidget page_;
};

mendo::CreatorManager::ModuleCreator creator() {
    return [](QObject* parent) { return new Module(parent); };
}

}  // namespace

class TestPackage : public QObject {
    Q_OBJECT
private slots:
    void load_saysWhyNot_data();
    void load_saysWhyNot();
    void load_makesAndInitialisesTheModule();
    void page_isMadeOnceAndGoesWithThePackage();
};

void TestPackage::load_saysWhyNot_data() {
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("reason");
    QTest::newRow("not found") << ""
                               << "libnone.so is not beside this program";
    QTest::newRow("no such file") << "/nowhere/libnone.so"
                                  << "/nowhere/libnone.so";
    QTest::newRow("registers nothing") << PANELHOST_LIBRARY << "registers no module \"none\"";
}

void TestPackage::load_saysWhyNot() {
    QFETCH(QString, file);
    QFETCH(QString, reason);
    gantu::Package package;
    QString error;
    QVERIFY(!package.load(file, QStringLiteral("none"), &error));
    QVERIFY2(error.contains(reason), qPrintable(error));
    QVERIFY(!package.page(QStringLiteral("none.page")));
}

void TestPackage::load_makesAndInitialisesTheModule() {
    bfactory().regist(QStringLiteral("some"), creator());
    gantu::Package package;
    QString error;
    QVERIFY2(package.load(QStringLiteral(PANELHOST_LIBRARY), QStringLiteral("some"), &error),
             qPrintable(error));
    QCOMPARE(initialised, 1);
}

void TestPackage::page_isMadeOnceAndGoesWithThePackage() {
    bfactory().regist(QStringLiteral("some.page"), creator());
    QPointer<QWidget> page;
    {
        gantu::Package package;
        page = package.page(QStringLiteral("some.page"));
        QVERIFY(page);
        QCOMPARE(package.page(QStringLiteral("some.page")), page.data());
    }
    QVERIFY(!page);
}

QTEST_MAIN(TestPackage)
#include "test_package.moc"
