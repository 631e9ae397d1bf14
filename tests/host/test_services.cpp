// The host's other services: files, logs, themes, loading of libraries.

#include "gantu/package.h"
#include "json/jsonwriter.h"
#include "kord/thememanager.h"
#include "mendo/log.h"
#include "mendo/modulemanager.h"
#include "simulator/time/virtualtime.h"
#include "support/suite.h"
#include "support/text.h"

#include <QDir>
#include <QSignalSpy>
#include <QVector3D>
#include <QWidget>

#include <limits>

using mendo::ModuleManager;
using mendo::ModuleObject;
using namespace test;

using Layout = mendo::JsonWriter::Layout;

class TestServices : public QObject {
    Q_OBJECT
private:
    QStringList problems_;  // "line:column reason"

    static void compareWithDocument(const ModuleObject& tree) {
        const QJsonValue value = tree.exportToJson();
        const QJsonDocument document =
            value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
        QCOMPARE(mendo::JsonWriter(Layout::Document).node(&tree).take(), document.toJson());
    }

private slots:
    void initTestCase() {
        connect(ModuleManager::instance(), &ModuleManager::fileProblem, this,
                [this](const mendo::FileProblem& problem) {
                    const auto& [line, column] = problem.place;
                    problems_
                        << QString("%1:%2:%3 %4").arg(problem.file).arg(line).arg(column).arg(problem.text());
                });
    }

    void documentOfATree_hasTheBytesOfQJsonDocument() {
        QString everyUnit;
        for (int unit = 0; unit <= 0xffff; ++unit) {
            everyUnit += QChar(unit);
        }
        const QString pair = QString::fromUtf8("\xF0\x9F\x94\xA5");
        ModuleObject list;
        const QString numbers =
            "0 -0 0.1 0.3333333333333333 1e-5 1e-300 1e16 123456789012345680 1e18 9.3e18 2e20 -1e22"
            " 9223372036854775808 -9223372036854775808 18446744073709551616 4.9e-324 1.7e308 nan -inf";
        for (const QString& number : numbers.split(' ')) {
            list.append(nullptr)->setValue(nullptr, number.toDouble());
        }
        for (const QVariant& value :
             QVariantList{0.1F, std::numeric_limits<int>::min(), (qlonglong(1) << 53) + 1,
                          std::numeric_limits<qlonglong>::min(), std::numeric_limits<qulonglong>::max(),
                          QVariant(QVariant::Int), true, false, QVariant(), QString(), QByteArray("bytes"),
                          QChar('c'), QVariant::fromValue<QObject*>(nullptr), everyUnit, pair.repeated(20000),
                          'x' + pair.repeated(20000), 'x' + pair.left(1), pair.right(1) + pair[0] + 'x',
                          QVariantList{1, QVariantList{}, QVariantMap{{"b", 0.5}, {"a", "t"}}, true}}) {
            list.append(nullptr)->setValue(nullptr, value);
        }
        compareWithDocument(list);

        ModuleObject map;
        map.loadJson(nullptr, json("{'a':[[],{},[[]],{'a':{}},[true,[false]]],'c':{'d':null},'g':0.5}"));
        for (const char* name : {"b", "Z", "aa", "é", "激", "\xF0\x9F\x94\xA5", "\xEF\xBC\xA1", "10", "9", "",
                                 "#0", "a.b", "\t", "\\"}) {
            map.append(nullptr, name)->setValue(nullptr, name);
        }
        compareWithDocument(map);
        map.loadJson(nullptr, json(QByteArray(900, '[') + QByteArray(900, ']')));
        compareWithDocument(map);

        mendo::JsonWriter text(Layout::Document);
        text.beginArray().elements(node("[{'type':'moveJ'}]").get()).elements(node("{'end':1}").get());
        QCOMPARE(text.node(node("{}").get()).endArray().take(),
                 QByteArray("[\n    {\n        \"type\": \"moveJ\"\n    },\n    {\n    }\n]\n"));
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
            {"[\"a\\", "1:5 no JSON: expected the end of a string"},
            {"[\"a\xff\"]", "1:4 no JSON: invalid UTF8 string"},
            {"[1e999]", "1:7 no JSON: illegal number"},
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

    void writtenFile_readsBackTheSame_withoutOtherFiles() {
        const QJsonValue value = json("[{'near':[0.1,-1.5707963267948966]},{'note':'激光'},{},[]]");
        writeFile("a.json", "\xEF\xBB\xBF{\"old\": 1}");
        QCOMPARE(ModuleManager::readFromJson("a.json"), json("{'old': 1}"));
        QVERIFY(QFile::setPermissions("a.json", QFile::ReadOwner | QFile::WriteOwner));
        const QFile::Permissions permissions = QFile::permissions("a.json");
        for (const bool indented : {false, true}) {
            QVERIFY(ModuleManager::writeToJson("a.json", value, indented));
            QCOMPARE(ModuleManager::readFromJson("a.json"), value);
            QCOMPARE(contentOf("a.json").count('\n') > 1, indented);
        }
        QCOMPARE(QFile::permissions("a.json"), permissions);
        QCOMPARE(QDir().entryList(QDir::Files | QDir::Hidden), QStringList{"a.json"});
        QVERIFY(ModuleManager::readFromJson("none.json").isUndefined() && problems_.isEmpty());
        QVERIFY(ModuleManager::readFromJson(".").isUndefined());
        for (const char* file : {".", "none/a.json"}) {
            QVERIFY(!ModuleManager::writeToJson(file, value, true));
        }
        QVERIFY(!ModuleManager::writeToJson("a.json", 5, true));
        QCOMPARE(problems_.join(", "),
                 ".:0:0 this is a folder, .:0:0 this is a folder, none/a.json:0:0 there is no "
                 "such folder, a.json:0:0 holds no array and no object");
    }

    void logLine_isTaggedAndWrittenOnceTheFolderExists() {
        const auto log = [](int number) {
            mendo::QFLog("\033[35m", "[S|%1]", "", "log/lumo", "log")
                << "激光 %1 " << QString("a b") << 0.5 << QVector3D(1, 2, 3) << number;
        };
        mendo::LogHub::instance()->setConsole(false);
        QSignalSpy logged(mendo::LogHub::instance(), &mendo::LogHub::line);
        // After many failures the file is tried only every 100 ms; listeners get every line.
        for (int number = 0; number < 1000; ++number) {
            log(number);
        }
        QVERIFY(QDir().mkdir("log"));
        log(1000);
        sim::VirtualTime::instance()->advance(100);
        log(-1);
        const QString line = "激光 %1  a b 0.5 QVector3D(1, 2, 3) -1";
        QCOMPARE(logged.size(), 1002);
        QCOMPARE(logged.last(), (QVariantList{"S", line}));
        QCOMPARE(contentOf("log/lumo.log"), ("[S|01/01 08:00:00.100] " + line + '\n').toUtf8());
        mendo::LogHub::instance()->setConsole(true);
    }

    void theme_isAppliedToAPage() {
        writeFile("s.json", quoted("{'QPushButton': {'color': '#333', 'width': 2}, 'QDialog': {}}"));
        QWidget page;
        kord::ThemeManager::setRecursiveWidgetStyleSheet(&page, kord::ThemeManager::genStyleSheet("s.json"),
                                                         {});
        QCOMPARE(page.styleSheet(), "QDialog { }\nQPushButton { color: #333; width: 2; }\n");
    }

    void libraryWithoutPackage_isRefusedWithTheReason() {
        gantu::Package package;
        QString error;
        QVERIFY(!package.load("", "none", &error) && error.contains("libnone.so is not beside"));
        QVERIFY(!package.load("/nowhere/x.so", "none", &error) && error.contains("/nowhere/x.so"));
        QVERIFY(!package.load("libQt5Core.so.5", "none", &error) && error.contains("no module \"none\""));
    }
};

LUMO_TEST(TestServices)
#include "test_services.moc"
