// What the host offers packages beside the tree: files, the loading of libraries, logs and themes.

#include "gantu/bmodule.h"
#include "gantu/package.h"
#include "kord/thememanager.h"
#include "mendo/clock.h"
#include "mendo/creatormanager.h"
#include "mendo/jsontext.h"
#include "mendo/log.h"
#include "mendo/modulemanager.h"
#include "support/suite.h"
#include "support/text.h"

#include <QDir>
#include <QSignalSpy>
#include <QVector3D>

#include <sys/stat.h>
#include <limits>

using mendo::ModuleManager;
using mendo::ModuleObject;
using namespace test;

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
    void init() override { qApp->setObjectName("initialised"); }
    QWidget* wgt() override { return &page_; }

private:
    QWidget page_;
};

}  // namespace

class TestServices : public QObject {
    Q_OBJECT
private:
    QStringList problems_;  // "line:column reason"

    /// Files stay what they were, byte for byte.
    static void compareWithDocument(const ModuleObject& tree) {
        const QJsonValue value = tree.exportToJson();
        for (const auto format : {QJsonDocument::Indented, QJsonDocument::Compact}) {
            mendo::JsonText text(format == QJsonDocument::Indented);
            text.add(&tree);
            QCOMPARE(text.take(), value.isArray() ? QJsonDocument(value.toArray()).toJson(format)
                                                  : QJsonDocument(value.toObject()).toJson(format));
        }
    }
    static QStringList entries() {
        return QDir().entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot);
    }

private slots:
    void initTestCase() {
        connect(ModuleManager::instance(), &ModuleManager::fileProblem, this,
                [this](const QString& file, int line, int column, const QString& reason) {
                    problems_ << QString("%1:%2:%3 %4").arg(file).arg(line).arg(column).arg(reason);
                });
    }
    void init() {
        problems_.clear();
        for (const QString& name : entries())
            QFile::remove(name) || QDir(name).removeRecursively();
    }

    void treesText_isThatOfTheDocument() {
        QString everyUnit;
        for (int unit = 0; unit <= 0xffff; ++unit)
            everyUnit += QChar(unit);
        const QString pair = QString::fromUtf8("\xF0\x9F\x94\xA5");
        ModuleObject list;
        for (const QString& number :
             QString(
                 "0 -0 0.1 0.3333333333333333 1e-5 1e-300 1e15 1e16 123456789012345680 -2.5 1e18 9.3e18 2e20"
                 " -1e22 9223372036854775808 -9223372036854775808 18446744073709551616 9007199254740993"
                 " 4.9e-324 1.7e308 nan inf -inf")
                 .split(' '))
            list.append(nullptr)->setValue(nullptr, number.toDouble());
        for (const QVariant& value :
             QVariantList{0.1F, std::numeric_limits<int>::min(), (qlonglong(1) << 53) + 1,
                          std::numeric_limits<qlonglong>::min(), std::numeric_limits<qulonglong>::max(),
                          QVariant(QVariant::Int), true, false, QVariant(), QString(), QByteArray("bytes"),
                          QChar('c'), QVariant::fromValue<QObject*>(nullptr), everyUnit, pair.repeated(20000),
                          'x' + pair.repeated(20000), 'x' + pair.left(1), pair.right(1) + pair[0] + 'x',
                          QVariantList{1, QVariantList{}, QVariantMap{{"b", 0.5}, {"a", "t"}}, true}})
            list.append(nullptr)->setValue(nullptr, value);
        compareWithDocument(list);

        ModuleObject map;
        map.loadJson(nullptr, json("{'a':[[],{},[[]],{'a':{}},[true,[false]]],'c':{'d':null},'g':0.5}"));
        for (const char* name : {"b", "Z", "aa", "é", "激", "\xF0\x9F\x94\xA5", "\xEF\xBC\xA1", "10", "9", "",
                                 "#0", "a.b", "\t", "\\"})
            map.append(nullptr, name)->setValue(nullptr, name);
        compareWithDocument(map);
        map.loadJson(nullptr, json(QByteArray(900, '[') + QByteArray(900, ']')));
        compareWithDocument(map);

        mendo::JsonText text(false);
        text.beginArray();
        text.addElements(node("[{'type':'moveJ'},2]").get());
        text.addElements(node("{'end':1}").get());
        text.add(node("{'end':1}").get());
        text.endArray();
        QCOMPARE(text.take(), quoted("[{'type':'moveJ'},2,{'end':1}]"));
    }

    void placeOfAFault_isThatInAnEditor() {
        const std::vector<std::pair<QByteArray, const char*>> rows = {
            {"{\"a\" 1}", "1:6 no JSON: expected a colon"},
            {"{\n\"a\": 1,\n  x\n}", "3:3 no JSON: expected a key in quotes"},
            {"{\"激光\xF0\x9F\x94\xA5\": x}", "1:9 no JSON: expected a value"},
            {"\xEF\xBB\xBFx", "1:1 no JSON: expected a value"},
            {"[\r\n1,\r\n-x]", "3:2 no JSON: expected a digit"},
            {"[1,\n2", "2:2 no JSON: expected a comma or a closing bracket"},
            {"[1.x]", "1:4 no JSON: expected a digit"},
            {"[\"a\\\"b]", "1:8 no JSON: expected the end of a string"},
            {"[1]\n]", "2:1 no JSON: expected the end of the file"},
            {" 5", "1:2 holds no array and no object"},
            {"", "1:1 no JSON: expected a value"},
        };
        for (const auto& [content, problem] : rows) {
            writeFile("a.json", content);
            QVERIFY(ModuleManager::readFromJson("a.json").isUndefined());
            QCOMPARE(problems_, QStringList{QString("a.json:") + problem});
            problems_.clear();
        }
    }

    void whatIsNoPlainFile_isToldOrKeptWithoutWaitingForIt() {
        QVERIFY(QDir().mkdir("folder"));
        QCOMPARE(::mkfifo("pipe", 0600), 0);
        for (const char* target : {"pipe", "/dev/zero", "folder"}) {
            QVERIFY(QFile::link(target, "a.json"));
            QVERIFY(ModuleManager::readFromJson("a.json").isUndefined());
            QVERIFY(QFile::remove("a.json"));
        }
        QCOMPARE(problems_.join('|'),
                 "a.json:0:0 this is no plain file|a.json:0:0 this is no plain file|"
                 "a.json:0:0 file to open is a directory");
        QVERIFY(ModuleManager::writeToJson("pipe", json("[1]"), false));
        QCOMPARE(contentOf("pipe").trimmed(), "[1]");
        QVERIFY(QFileInfo::exists("pipe.damaged") && !QFileInfo("pipe.damaged").isFile());
    }

    void writtenFile_readsBackTheSameAndLeavesNothingBeside() {
        QVERIFY(ModuleManager::readFromJson("a.json").isUndefined());
        writeFile("a.json", "\xEF\xBB\xBF{\"old\": 1}");
        QCOMPARE(ModuleManager::readFromJson("a.json"), json("{'old': 1}"));
        QVERIFY(QFile::setPermissions("a.json", QFile::ReadOwner | QFile::WriteOwner));
        const QFile::Permissions permissions = QFile::permissions("a.json");
        for (const bool indented : {false, true}) {
            const QJsonValue value = json("[{'near':[0.1,-1.5707963267948966]},{'note':'激光'},{},[]]");
            QVERIFY(ModuleManager::writeToJson("a.json", value, indented));
            QCOMPARE(ModuleManager::readFromJson("a.json"), value);
            QCOMPARE(contentOf("a.json").count('\n') > 1, indented);
        }
        QCOMPARE(QFile::permissions("a.json"), permissions);
        QCOMPARE(entries(), QStringList{"a.json"});
        QCOMPARE(problems_, QStringList());
    }

    void damagedFile_isKeptUnderAFreeName() {
        QVERIFY(QDir().mkdir("real") && QFile::link("real/b.json", "a.json"));
        for (const char* damaged : {"{\"a\": 1", "precious"}) {
            writeFile("real/b.json", damaged);
            QVERIFY(ModuleManager::writeToJson("a.json", json("[1]"), false));
        }
        QCOMPARE(contentOf("a.json.damaged"), "{\"a\": 1");
        QCOMPARE(contentOf("a.json.damaged.2"), "precious");
        QCOMPARE(contentOf("real/b.json").trimmed(), "[1]");
        QVERIFY(QFileInfo("a.json").isSymLink());
    }

    void failedWrite_isToldAndLeavesTheOldFile() {
        writeFile("old.json", "[\"old\"]");
        QVERIFY(QDir().mkdir("folder"));
        const QStringList before = entries();
        for (const QString& name :
             {QString("none/a.json"), QString("folder"), QString("old.json/a.json"), QString(300, 'n')})
            QVERIFY2(!ModuleManager::writeToJson(name, json("[1]"), true), qPrintable(name));
        QVERIFY(!ModuleManager::writeToJson("old.json", QJsonValue::Undefined, true));
        QCOMPARE(problems_.size(), 5);
        QCOMPARE(contentOf("old.json"), "[\"old\"]");
        QCOMPARE(entries(), before);
    }

    void package_saysWhyItIsNotLoadedAndEndsItsPages() {
        bfactory().regist("some", [](QObject* owner) { return new Module(owner); });
        QPointer<QWidget> page;
        {
            gantu::Package package;
            QString error;
            QVERIFY(!package.load("", "none", &error) && error.contains("libnone.so is not beside"));
            QVERIFY(!package.load("/nowhere/x.so", "some", &error) && error.contains("/nowhere/x.so"));
            QVERIFY(!package.load(PANELHOST_LIBRARY, "none", &error) && error.contains("no module \"none\""));
            QVERIFY(package.load(PANELHOST_LIBRARY, "some", &error) && qApp->objectName() == "initialised");
            page = package.page("some");
            QVERIFY(page && package.page("some") == page && !package.page("none"));
        }
        QVERIFY(!page);
    }

    void logLine_isTaggedSpacedOnceAndFiledOnceTheFolderIsThere() {
        const auto log = [](int number) {
            mendo::QFLog("\033[35m", "[S|%1]", "", "log/lumo", "log")
                << "激光 %1 " << QString("a b") << 0.5 << QVector3D(1, 2, 3) << number;
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
            const QString line = "激光 %1  a b 0.5 QVector3D(1, 2, 3) -1", tag = "[S|02/03 04:05:06.078] ";
            QCOMPARE(heard.size(), linesBefore + 2);
            QCOMPARE(heard.last(), (QVariantList{"S", line}));
            const QString filed = QString::fromUtf8(contentOf("log/lumo.log"));
            QCOMPARE(filed.section(tag, 0, 0) + filed.section(tag, 2), line + '\n');
            QVERIFY(QDir("log").removeRecursively());
        }
        mendo::LogHub::instance()->setConsole(true);
    }

    void theme_becomesASheet() {
        writeFile("s.json", quoted("{'QPushButton': {'color': '#333', 'width': 2}, 'QDialog': {}}"));
        QCOMPARE(kord::ThemeManager::genStyleSheet("s.json"),
                 "QDialog { }\nQPushButton { color: #333; width: 2; }\n");
    }
};

LUMO_TEST(TestServices)
#include "test_services.moc"
