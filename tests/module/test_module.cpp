// What the package tells a host about itself, its banner, its translation and its messages.

#include "gantu/bmodule.h"
#include "kord/managerhelper.h"
#include "mendo/creatormanager.h"
#include "module/host.h"
#include "panel/lumowidget.h"

#include <QApplication>
#include <QDir>
#include <QMessageBox>
#include <QPushButton>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTranslator>

#include <memory>

namespace {

void setLanguage(const QVariant& language) {
    kord::ManagerHelper::instance()->module()->mobj()->c("language")->setValue(nullptr, language);
}

std::unique_ptr<gantu::BModule> createModule(const QString& key) {
    return std::unique_ptr<gantu::BModule>(bfactory().create(key, nullptr));
}

QList<QMessageBox*> shownBoxes() {
    QList<QMessageBox*> boxes;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* box = qobject_cast<QMessageBox*>(window);
        if (box && box->isVisible()) {
            boxes << box;
        }
    }
    return boxes;
}

}  // namespace

class TestModule : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void registrations();
    void banner_goesToTheHubAndTheLogFile();
    void translation_followsTheLanguage_data();
    void translation_followsTheLanguage();
    void page_isRegisteredWithItsKey();
    void alert_doesNotBlock();
    void alert_isNotShownTwice();

private:
    QTemporaryDir folder_;
};

void TestModule::initTestCase() {
    mendo::LogHub::instance()->setConsole(false);
    kordservice();  // makes the nodes that packages rely on
    QVERIFY(QDir::setCurrent(folder_.path()));
}

void TestModule::init() {
    setLanguage("cn");
    qDeleteAll(qApp->findChildren<QTranslator*>());
}

void TestModule::registrations() {
    QCOMPARE(mendo::pluginManager().value("lumo", -1), 11);
    QCOMPARE(ver("lumo", false), 26);
    QObject parent;
    gantu::BModule* module = bfactory().create("lumo", &parent);
    QVERIFY(module);
    QCOMPARE(module->name(), "lumo");
    QCOMPARE(module->parent(), &parent);
    QVERIFY(!module->wgt());

    gantu::BModule* page = bfactory().create("rova.robot.pack.lumo", &parent);
    QVERIFY(page);
    QCOMPARE(page->name(), "lumowidget");
    QCOMPARE(page->parent(), &parent);
    QVERIFY(qobject_cast<LumoWidget*>(page->wgt()));
    QVERIFY(!page->wgt()->parent());
    const QPointer<QWidget> widget = page->wgt();
    delete page;
    QVERIFY(!widget);
}

void TestModule::banner_goesToTheHubAndTheLogFile() {
    QVERIFY(QDir().mkdir("log"));
    QStringList lines;
    connect(mendo::LogHub::instance(), &mendo::LogHub::line, this,
            [&lines](const QString& level, const QString& text) { lines << level + ' ' + text; });
    createModule("lumo");
    disconnect(mendo::LogHub::instance(), nullptr, this, nullptr);
    lumo::logI() << "not for the file";
    QCOMPARE(lines, QStringList{"S lumo v26"});
    QFile file("log/lumo.log");
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    const QRegularExpression line(R"(^\[S\|\d\d/\d\d \d\d:\d\d:\d\d\.\d{3}\] lumo v26\n$)");
    QVERIFY2(line.match(text).hasMatch(), qPrintable(text));
}

void TestModule::translation_followsTheLanguage_data() {
    QTest::addColumn<QVariant>("language");
    QTest::addColumn<QString>("title");
    QTest::newRow("Chinese") << QVariant("cn") << "激光焊接";
    QTest::newRow("English") << QVariant("en") << "Laser Welding";
    QTest::newRow("Russian") << QVariant("ru") << "Лазерная сварка";
    QTest::newRow("unknown") << QVariant("xx") << "激光焊接";
    QTest::newRow("none") << QVariant() << "激光焊接";
}

void TestModule::translation_followsTheLanguage() {
    QFETCH(QVariant, language);
    QFETCH(QString, title);
    setLanguage(language);
    createModule("lumo")->init();
    const ModuleObject* pages = m("pel.navo.pages");
    QCOMPARE(pages->c(pages->size() - 1)->c("title")->getString(), title);
}

void TestModule::page_isRegisteredWithItsKey() {
    const int before = m("pel.navo.pages")->size();
    const auto module = createModule("lumo");
    QCOMPARE(m("pel.navo.pages")->size(), before);
    module->init();
    QCOMPARE(m("pel.navo.pages")->size(), before + 1);
    const ModuleObject* page = m("pel.navo.pages")->c(before);
    QCOMPARE(page->c("nav")->getString(), "rova.robot.pack.lumo");
    QCOMPARE(page->c("group")->getString(), "robot.pack");
    QCOMPARE(page->c("icon")->getString("unset"), QString());
    QCOMPARE(page->c("index")->getInt(), -1);
}

void TestModule::alert_doesNotBlock() {
    QStackedWidget center;
    auto* current = new QWidget;
    center.addWidget(current);
    setInstantiatedCenterWidget(&center);
    showAlertDialog("Gas pressure is low");
    const QList<QMessageBox*> boxes = shownBoxes();
    QCOMPARE(boxes.size(), 1);
    const QPointer<QMessageBox> box = boxes.first();
    QCOMPARE(box->text(), "Gas pressure is low");
    QCOMPARE(box->windowTitle(), QString());
    QCOMPARE(box->parentWidget(), current);
    QCOMPARE(box->windowModality(), Qt::WindowModal);
    QCOMPARE(box->buttons().size(), 1);
    box->buttons().first()->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!box);
}

void TestModule::alert_isNotShownTwice() {
    showAlertDialog("first");
    showAlertDialog("first");
    showAlertDialog("second");
    QCOMPARE(shownBoxes().size(), 2);
    for (QMessageBox* box : shownBoxes()) {
        box->reject();
    }
    showAlertDialog("first");
    QCOMPARE(shownBoxes().size(), 1);
    shownBoxes().first()->reject();
}

QTEST_MAIN(TestModule)
#include "test_module.moc"
