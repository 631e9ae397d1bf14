// The host's file service.

#include "host/nodesupport.h"
#include "mendo/modulemanager.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using mendo::ModuleManager;

class TestFiles : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup() { folder_.reset(); }
    void read_acceptsAByteOrderMark();
    void read_missingFileIsSilent();
    void read_tellsWhereAFileDoesNotParse_data();
    void read_tellsWhereAFileDoesNotParse();
    void read_tellsWhatCannotBeRead_data();
    void read_tellsWhatCannotBeRead();
    void write_keepsAPipe();
    void write_readsBackTheSame_data();
    void write_readsBackTheSame();
    void write_replacesAndLeavesNothingBeside();
    void write_keepsADamagedFile();
    void write_keepsADamagedFileBehindALink();
    void write_failureLeavesTheOldFile_data();
    void write_failureLeavesTheOldFile();

private:
    QString path(const char* name) const { return folder_->filePath(QLatin1String(name)); }
    void put(const char* name, const QByteArray& bytes) const {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QByteArray bytes(const char* name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
    }
    QStringList entries() const {
        return QDir(folder_->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<QTemporaryDir> folder_;
    QStringList problems_;  // "line:column", with what is announced about each file
    QString lastReason_;
};

void TestFiles::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    problems_.clear();
    lastReason_.clear();
    ModuleManager::instance()->disconnect(this);
    connect(ModuleManager::instance(), &ModuleManager::fileProblem, this,
            [this](const QString& file, int line, int column, const QString& reason) {
                problems_ << QStringLiteral("%1 %2:%3").arg(QFileInfo(file).fileName()).arg(line).arg(column);
                lastReason_ = reason;
            });
}

void TestFiles::read_acceptsAByteOrderMark() {
    put("a.json", "\xEF\xBB\xBF{\"a\": 1}");
    QCOMPARE(ModuleManager::readFromJson(path("a.json")), json("{'a': 1}"));
    QVERIFY(problems_.isEmpty());
}

void TestFiles::read_missingFileIsSilent() {
    QVERIFY(ModuleManager::readFromJson(path("a.json")).isUndefined());
    QVERIFY(ModuleManager::readFromJson(QStringLiteral(":/no/such.json")).isUndefined());
    QVERIFY(problems_.isEmpty());
}

void TestFiles::read_tellsWhereAFileDoesNotParse_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("place");
    QTest::newRow("first line") << QByteArray("{\"a\" 1}") << "1:6";
    QTest::newRow("third line") << QByteArray("{\n\"a\": 1,\n  x\n}") << "3:3";
    QTest::newRow("after wide characters") << QByteArray("{\"激光\": x}") << "1:8";
    QTest::newRow("after one of two units") << QByteArray("{\"\xF0\x9F\x94\xA5\": x}") << "1:7";
    QTest::newRow("after a byte-order mark") << QByteArray("\xEF\xBB\xBFx") << "1:1";
    QTest::newRow("windows lines") << QByteArray("[\r\n1,\r\nx]") << "3:1";
    QTest::newRow("unfinished") << QByteArray("[1,\n2") << "2:2";
    QTest::newRow("unquoted key") << QByteArray("{\"a\": 1,\n  b: 2}") << "2:3";
    QTest::newRow("comma at the end") << QByteArray("[1,\n]") << "2:1";
    QTest::newRow("wrong bracket") << QByteArray("[1}") << "1:3";
    QTest::newRow("more after the end") << QByteArray("[1]\n]") << "2:1";
    QTest::newRow("empty") << QByteArray() << "1:1";
}

void TestFiles::read_tellsWhereAFileDoesNotParse() {
    QFETCH(QByteArray, content);
    QFETCH(QString, place);
    put("a.json", content);
    QVERIFY(ModuleManager::readFromJson(path("a.json")).isUndefined());
    QCOMPARE(problems_, QStringList{QStringLiteral("a.json ") + place});
    QVERIFY(!lastReason_.isEmpty());
}

void TestFiles::read_tellsWhatCannotBeRead_data() {
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("reason");
    QTest::newRow("folder") << "folder"
                            << "file to open is a directory";
    QTest::newRow("pipe") << "pipe"
                          << "this is no plain file";
    QTest::newRow("device without end") << "/dev/zero"
                                        << "this is no plain file";
}

void TestFiles::read_tellsWhatCannotBeRead() {
    QFETCH(QString, target);
    QDir(folder_->path()).mkdir(QStringLiteral("folder"));
    QCOMPARE(::mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
    QVERIFY(QFile::link(target, path("a.json")));
    QVERIFY(ModuleManager::readFromJson(path("a.json")).isUndefined());
    QCOMPARE(problems_, QStringList{"a.json 0:0"});
    QTEST(lastReason_, "reason");
}

/// As it keeps all that is not JSON, without waiting for the pipe's other end.
void TestFiles::write_keepsAPipe() {
    QCOMPARE(::mkfifo(QFile::encodeName(path("a.json")).constData(), 0600), 0);
    QVERIFY(ModuleManager::writeToJson(path("a.json"), json("[1]"), false));
    QCOMPARE(bytes("a.json").trimmed(), QByteArray("[1]"));
    QVERIFY(!QFileInfo(path("a.json.damaged")).isFile());
    QVERIFY(QFileInfo::exists(path("a.json.damaged")));
}

void TestFiles::write_readsBackTheSame_data() {
    QTest::addColumn<QByteArray>("document");
    QTest::newRow("empty map") << QByteArray("{}");
    QTest::newRow("empty list") << QByteArray("[]");
    QTest::newRow("program") << QByteArray(
        "[{'near':[0.1,-1.5707963267948966],'type':'moveJ'},{'note':'激光'}]");
}

void TestFiles::write_readsBackTheSame() {
    QFETCH(QByteArray, document);
    const QJsonValue value = json(document.constData());
    for (const bool indented : {false, true}) {
        QVERIFY(ModuleManager::writeToJson(path("a.json"), value, indented));
        QCOMPARE(ModuleManager::readFromJson(path("a.json")), value);
        if (!indented) {
            QCOMPARE(bytes("a.json").trimmed(), QByteArray(document).replace('\'', '"'));
        }
    }
}

void TestFiles::write_replacesAndLeavesNothingBeside() {
    put("a.json", "{\"old\": 1}");
    QVERIFY(QFile::setPermissions(path("a.json"), QFile::ReadOwner | QFile::WriteOwner));
    const QFile::Permissions permissions = QFile::permissions(path("a.json"));
    QVERIFY(ModuleManager::writeToJson(path("a.json"), json("[2]"), false));
    QCOMPARE(bytes("a.json").trimmed(), QByteArray("[2]"));
    QCOMPARE(QFile::permissions(path("a.json")), permissions);
    QCOMPARE(entries(), QStringList{"a.json"});
    QVERIFY(problems_.isEmpty());
}

void TestFiles::write_keepsADamagedFile() {
    for (const char* damaged : {"{\"a\": 1", "precious"}) {
        put("a.json", damaged);
        QVERIFY(ModuleManager::writeToJson(path("a.json"), json("{}"), false));
    }
    QCOMPARE(bytes("a.json.damaged"), QByteArray("{\"a\": 1"));
    QCOMPARE(bytes("a.json.damaged.2"), QByteArray("precious"));
    QCOMPARE(ModuleManager::readFromJson(path("a.json")), json("{}"));
}

void TestFiles::write_keepsADamagedFileBehindALink() {
    QDir(folder_->path()).mkdir(QStringLiteral("real"));
    put("real/b.json", "precious");
    QVERIFY(QFile::link(QStringLiteral("real/b.json"), path("a.json")));
    QVERIFY(ModuleManager::writeToJson(path("a.json"), json("[1]"), false));
    QCOMPARE(bytes("a.json.damaged"), QByteArray("precious"));
    QCOMPARE(bytes("real/b.json").trimmed(), QByteArray("[1]"));
    QVERIFY(QFileInfo(path("a.json")).isSymLink());
}

void TestFiles::write_failureLeavesTheOldFile_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QJsonValue>("value");
    QTest::newRow("no such folder") << "none/a.json" << json("[1]");
    QTest::newRow("a folder in the way") << "folder" << json("[1]");
    QTest::newRow("below a file") << "old.json/a.json" << json("[1]");
    QTest::newRow("name too long") << QString(300, QLatin1Char('n')) << json("[1]");
    QTest::newRow("no document") << "old.json" << QJsonValue(5);
    QTest::newRow("undefined") << "old.json" << QJsonValue(QJsonValue::Undefined);
}

void TestFiles::write_failureLeavesTheOldFile() {
    QFETCH(QString, name);
    QFETCH(QJsonValue, value);
    put("old.json", "[\"old\"]");
    QDir(folder_->path()).mkdir(QStringLiteral("folder"));
    const QStringList before = entries();
    QVERIFY(!ModuleManager::writeToJson(folder_->filePath(name), value, true));
    QCOMPARE(problems_.size(), 1);
    QVERIFY(!lastReason_.isEmpty());
    QCOMPARE(bytes("old.json"), QByteArray("[\"old\"]"));
    QCOMPARE(entries(), before);
}

QTEST_GUILESS_MAIN(TestFiles)
#include "test_files.moc"
