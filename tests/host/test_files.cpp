// JSON text: written straight from the tree, and to and from files.

#include "mendo/jsontext.h"
#include "mendo/modulemanager.h"
#include "support/suite.h"
#include "support/text.h"

#include <QDir>

#include <sys/stat.h>
#include <limits>

using mendo::ModuleManager;
using mendo::ModuleObject;
using test::contentOf;
using test::json;
using test::writeFile;

class TestFiles : public QObject {
    Q_OBJECT
private:
    QStringList problems_;  // "line:column reason"

    static QByteArray written(const ModuleObject& node, bool indented) {
        mendo::JsonText text(indented);
        text.add(&node);
        return text.take();
    }
    /// Files stay what they were, byte for byte.
    static void compareWithDocument(const ModuleObject& node) {
        const QJsonValue value = node.exportToJson();
        const QJsonDocument document =
            value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
        QCOMPARE(written(node, true), document.toJson(QJsonDocument::Indented));
        QCOMPARE(written(node, false), document.toJson(QJsonDocument::Compact));
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

        for (const bool indented : {true, false}) {
            mendo::JsonText text(indented);
            text.beginArray();
            text.addElements(test::node("[{'type':'moveJ'},2]").get());
            text.addElements(test::node("{'end':1}").get());
            text.add(test::node("{'end':1}").get());
            text.endArray();
            QCOMPARE(text.take(), written(*test::node("[{'type':'moveJ'},2,{'end':1}]"), indented));
        }
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
        for (const QJsonValue& value : {QJsonValue(5), QJsonValue(QJsonValue::Undefined)})
            QVERIFY(!ModuleManager::writeToJson("old.json", value, true));
        QCOMPARE(problems_.size(), 6);
        QCOMPARE(contentOf("old.json"), "[\"old\"]");
        QCOMPARE(entries(), before);
    }
};

LUMO_TEST(TestFiles)
#include "test_files.moc"
