// What the host offers packages beside the tree.

#include "gantu/bmodule.h"
#include "gantu/package.h"
#include "kord/kordservice.h"
#include "kord/thememanager.h"
#include "mendo/clock.h"
#include "mendo/creatormanager.h"
#include "mendo/log.h"
#include "support/suite.h"
#include "support/text.h"

#include <QDir>
#include <QSignalSpy>
#include <QVector3D>

namespace {

class StoppedClock : public mendo::Clock {
public:
    StoppedClock() { install(this); }
    ~StoppedClock() override { install(&before_); }
    QDateTime now() const override { return QDateTime(QDate(2031, 2, 3), QTime(4, 5, 6, 78)); }
    qint64 elapsedMs() const override { return ms; }

    qint64 ms = 0;

private:
    const Clock& before_ = current();
};

class Module : public gantu::BModule {
public:
    using BModule::BModule;
    void init() override { page_.setObjectName("initialised"); }
    QWidget* wgt() override { return &page_; }

private:
    QWidget page_;
};

}  // namespace

class TestServices : public QObject {
    Q_OBJECT
private slots:
    void dataHandedOver_isCopiedThenAnnounced() {
        QStringList heard;
        mendo::ModuleObject* const target = kordservice()->dataNode("pel.coord.toolset");
        connect(target, &mendo::ModuleObject::changed, this, [&] { heard << test::text(target); });
        connect(kordservice(), &KordService::handed, this,
                [&](const QString& path, auto node) { heard << path + test::text(node); });
        const auto toolset = test::node("{'end': {'name': 'gun'}}");
        kordservice()->set(this, "pel.coord.toolset", toolset.get());
        kordservice()->set(this, "new.path", toolset.get());
        QCOMPARE(heard, (QStringList{"{'end':{'name':'gun'}}", "pel.coord.toolset{'end':{'name':'gun'}}",
                                     "new.path{'end':{'name':'gun'}}"}));
        QCOMPARE(kordservice()->get(this, "new.path", "end.name")->getString(), "gun");
    }

    void package_saysWhyItIsNotLoadedAndEndsItsPages() {
        const auto module = [](QObject* owner) { return new Module(owner); };
        bfactory().regist("some", module);
        bfactory().regist("value", module);
        bfactory().regist("value", [] { return 26; });
        QPointer<QWidget> page;
        {
            gantu::Package package;
            QString error;
            QVERIFY(!package.load("", "none", &error) && error.contains("libnone.so is not beside"));
            QVERIFY(!package.load("/nowhere/x.so", "some", &error) && error.contains("/nowhere/x.so"));
            QVERIFY(!package.load(PANELHOST_LIBRARY, "none", &error) && error.contains("no module \"none\""));
            QVERIFY2(package.load(PANELHOST_LIBRARY, "some", &error), qPrintable(error));
            page = package.page("some");
            QVERIFY(page && package.page("some") == page && !package.page("value"));
            QCOMPARE(bfactory().value("value") + bfactory().value("some", -1), 25);
        }
        QVERIFY(!page);
    }

    void logLine_isTaggedSpacedOnceAndFiledOnceTheFolderIsThere() {
        const auto log = [](int number) {
            mendo::QFLog("\033[35m", "[S|%1]", "", "log/lumo", "log")
                << "激光 %1 " << QString("a b") << 0.5 << QVector3D(1, 2, 3) << true << number;
        };
        StoppedClock clock;
        mendo::LogHub::instance()->setConsole(false);
        // After many lines without a folder it is looked for every 100 ms only; listeners miss none.
        for (const int linesBefore : {3, 1000}) {
            QSignalSpy heard(mendo::LogHub::instance(), &mendo::LogHub::line);
            for (int number = 0; number < linesBefore; ++number)
                log(number);
            QVERIFY(QDir().mkdir("log"));
            clock.ms += linesBefore / 10;
            log(-2);
            log(-1);
            const QString line = "激光 %1  a b 0.5 QVector3D(1, 2, 3) true -1",
                          tag = "[S|02/03 04:05:06.078] ";
            QCOMPARE(heard.size(), linesBefore + 2);
            QCOMPARE(heard.last(), (QVariantList{"S", line}));
            const QString filed = QString::fromUtf8(test::contentOf("log/lumo.log"));
            QCOMPARE(filed.section(tag, 0, 0) + filed.section(tag, 2), line + '\n');
            QVERIFY(QDir("log").removeRecursively());
        }
        mendo::LogHub::instance()->setConsole(true);
    }

    void theme_becomesASheetForWindows() {
        test::writeFile("s.json",
                        test::quoted("{'QPushButton': {'color': '#333', 'width': 2}, 'QDialog': {}}"));
        const QString sheet = kord::ThemeManager::genStyleSheet("s.json");
        QCOMPARE(sheet, "QDialog { }\nQPushButton { color: #333; width: 2; }\n");
        QWidget panel;
        auto* const part = new QWidget(&panel);
        auto* const dialog = new QWidget(part, Qt::Dialog);
        kord::ThemeManager::setRecursiveWidgetStyleSheet(&panel, sheet, {});
        QCOMPARE(panel.styleSheet() + part->styleSheet() + dialog->styleSheet(), sheet + sheet);
    }
};

LUMO_TEST(TestServices)
#include "test_services.moc"
