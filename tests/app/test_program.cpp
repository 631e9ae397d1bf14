#include "app/examples/exampleshelf.h"
#include "app/options.h"
#include "app/preferences.h"
#include "app/workfolder.h"
#include "support/runnerfolder.h"
#include "support/suite.h"
#include "support/text.h"

#include <sys/resource.h>
#include <csignal>

using app::Preferences;
using test::contentOf;
using test::writeFile;

/// The built program as its caller meets it, and what it remembers.
class AppProgram : public QObject {
    Q_OBJECT

    const QDir home_ = QDir::current();
    const QString kept_ = qgetenv("XDG_CONFIG_HOME") + "/lumo/lumo-panel.json";

    static Result call(const QStringList& arguments) { return runIn(".", arguments, LUMO_PANEL); }

private slots:
    void initTestCase() {
        QCoreApplication::setOrganizationName("lumo");
        QCoreApplication::setApplicationName("lumo-panel");
        qputenv("XDG_DATA_HOME", QFile::encodeName(home_.filePath("data")));
        for (const char* folder : {"cell", "checkout/lumo/resources", "checkout/deep", "elsewhere", "from/seam"})
            QVERIFY(QDir().mkpath(folder));
        writeFile("cell/seam.json", "[]");
        writeFile("checkout/lumo/resources/lumo.json", "{}");
    }
    void init() {
        QVERIFY(QDir::setCurrent(home_.path()));
        QFile::remove(kept_);
    }

    void wrongOption_isSaidInOneLine() {
        const QVector<QStringList> rows = {
            {"--fast", "unknown argument --fast"},
            {"cell/seam.json", "unknown argument cell/seam.json"},
            {"--language", "--language needs a value: cn|en|ru"},
            {"--help=yes", "--help takes no value"},
            {"--language de", "--language de is none of cn, en, ru"},
            {"--language=", "--language \"\" is none of"},
            {"--settings cell/seam.json", "cell/seam.json is no folder"},
            {"--open cell", "--open cell is no file that can be read"},
            {"--screenshots cell/seam.json", "is no folder"},
            {"--screenshots a --open cell/seam.json", "its own project"},
            {"--screenshots a --settings cell", "its own project"},
            {"--screenshots a --example flange", "--screenshots brings its own project"},
            {"--example flange --open cell/seam.json", "--example brings its own project and settings"},
            {"--example ../flange", "--example ../flange is no example"},
            {"--vcd cell", "--vcd cell is no file that can be written"},
            {"--vcd nowhere/a.vcd", "is no file that can be written"},
        };
        QString error;
        for (const QStringList& row : rows) {
            QVERIFY2(!app::parseOptions(row[0].split(' '), &error), qPrintable(row[0]));
            QVERIFY2(error.contains(row[1]) && !error.contains('\n'), qPrintable(error));
        }
        const auto right = app::parseOptions({"--settings", "cell", "--open=cell/seam.json"}, &error);
        QCOMPARE(right.value().settings, home_.filePath("cell"));  // of the caller's folder
        QCOMPARE(right.value().project, home_.filePath("cell/seam.json"));
    }

    void status_tellsTheCallerWhatHappened() {
        const Result wrong = call({"--language", "de"});
        QCOMPARE(wrong.status, 2);
        QCOMPARE(wrong.err, QByteArray("lumo-panel: --language de is none of cn, en, ru\n"));
        QCOMPARE(call({"--example", "none"}).status, 2);
        const Result help = call({"--help"}), version = call({"--version"});
        QVERIFY(help.status == 0 && help.out.startsWith("Usage: lumo-panel [options]\n") && help.err.isEmpty());
        QVERIFY(version.status == 0 && version.out.startsWith("lumo-panel ") && version.err.isEmpty());
        qputenv("QT_QPA_PLATFORM", "xcb");
        qputenv("DISPLAY", ":4321");  // nobody's
        const Result blind = call({});
        qputenv("QT_QPA_PLATFORM", "offscreen");
        QCOMPARE(blind.status, 3);
        QVERIFY2(blind.err.endsWith("lumo-panel: no display can be opened\n"), blind.err);
    }

    void signal_endsInOrder_data() {
        QTest::addColumn<int>("number");
        QTest::addColumn<QStringList>("options");
        QTest::newRow("interrupted") << SIGINT << QStringList{"--settings", "cell", "--language", "ru"};
        QTest::newRow("hung up") << SIGHUP << QStringList{"--settings", "cell", "--language", "ru"};
        QTest::newRow("terminated") << SIGTERM << QStringList{"--example", "flange"};
    }

    /// As by closing the window: a process that a signal kills would switch nothing off.
    void signal_endsInOrder() {
        QFETCH(int, number);
        QFETCH(QStringList, options);
        const bool example = options.contains("flange");
        QFile::remove("cell.vcd");
        QProcess panel;
        panel.setProcessChannelMode(QProcess::MergedChannels);
        panel.start(LUMO_PANEL, options + QStringList{"--vcd", "cell.vcd"});
        QByteArray said;
        // Once the package is loaded, signals are listened to.
        while (!said.contains(example ? "flange.json" : "lumo v26") && panel.waitForReadyRead(600000))
            said += panel.readAll();
        QVERIFY2(said.contains("lumo v26"), said);
        QCOMPARE(kill(pid_t(panel.processId()), number), 0);
        QVERIFY(panel.waitForFinished(600000));
        QVERIFY(panel.exitStatus() == QProcess::NormalExit && panel.exitCode() == 0);
        QVERIFY(contentOf("cell.vcd").startsWith("$version"));
        // What was asked for is remembered, but no example.
        QCOMPARE(Preferences::language(), example ? "" : "ru");
        QCOMPARE(Preferences::folder(), example ? "" : home_.filePath("cell"));
        const QString copy = home_.filePath("data/lumo/lumo-panel/examples/flange/flange.json");
        QVERIFY2(!example || (said.contains(copy.toUtf8()) && QFile::exists(copy)), said);
    }

    void example_isCopiedAndItsChangesAreKept() {
        const app::ExampleShelf shelf("from", "to");
        QString error;
        for (const char* name : {"from/seam/seam.json", "from/seam/lumo_port.json"}) {
            writeFile(name, "[]");
            QFile::setPermissions(name, QFile::ReadOwner);  // as it is where it is installed
        }
        QCOMPARE(shelf.take("seam", &error), "to/seam");
        QVERIFY(QFile::permissions("to/seam/seam.json") & QFile::WriteOwner);
        writeFile("to/seam/seam.json", "[1]");
        QVERIFY(QFile::remove("to/seam/lumo_port.json"));
        QCOMPARE(shelf.take("seam", &error), "to/seam");
        QCOMPARE(contentOf(shelf.project("seam")), QByteArray("[1]"));
        QCOMPARE(contentOf("to/seam/lumo_port.json"), QByteArray("[]"));
        QVERIFY(shelf.take("../from/seam", &error).isEmpty() && error.startsWith("to/"));
        QVERIFY(QDir("to/seam").removeRecursively());
        writeFile("to/seam", "in the way");
        QVERIFY(shelf.take("seam", &error).isEmpty());
        QCOMPARE(error, "to/seam");
        const QStringList shipped = app::ExampleShelf(EXAMPLES, "").names();
        QCOMPARE(shipped, (QStringList{"box_stitch", "flange", "lap_seam", "stations"}));
        for (const QString& name : shipped)
            QVERIFY2(app::ExampleShelf::title(name) != name, qPrintable(name));
    }

    void language_followsTheSystemUntilOneIsRemembered() {
        const QVector<QStringList> rows = {{"zh_TW", "cn"}, {"ru_RU", "ru"}, {"ru", "ru"}, {"rup_MK", "en"}};
        for (const QStringList& row : rows)
            QCOMPARE(app::languageOf(row[0]), row[1]);
        QVERIFY(Preferences::language().isEmpty() && Preferences::pendantUnfolded());
        Preferences::rememberPendant(QPoint(-12, 34), false);
        QVERIFY(Preferences::pendantPlace() == QPoint(-12, 34) && !Preferences::pendantUnfolded());
        Preferences::rememberLanguage("../en");
        QVERIFY(Preferences::language().isEmpty());
    }

    /// No file can grow longer than a lock file: writing the preferences fails as on a full disk.
    void fullDisk_leavesWhatWasRemembered() {
        Preferences::rememberFolder(QString(5000, 'f'));
        const QByteArray before = contentOf(kept_);
        QVERIFY(before.contains("ffff"));
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit usual{};
        QCOMPARE(::getrlimit(RLIMIT_FSIZE, &usual), 0);
        const rlimit small{1000, usual.rlim_max};
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &small), 0);
        Preferences::rememberLanguage("cn");
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &usual), 0);
        QCOMPARE(contentOf(kept_), before);
    }

    void folder_isTheGivenThenTheRememberedThenItsOwn() {
        const QVector<QStringList> rows = {
            // started in, given, remembered, entered, lost
            {"checkout/deep", "", "", "checkout/deep", ""},
            {"elsewhere", "", "", "data/lumo/lumo-panel", ""},
            {"checkout", "", "cell", "cell", ""},
            {"checkout", "elsewhere", "cell", "elsewhere", ""},
            {"checkout", "", "gone", "checkout", "gone"},
        };
        const auto whole = [this](const QString& name) { return name.isEmpty() ? name : home_.filePath(name); };
        for (const QStringList& row : rows) {
            QVERIFY(QDir::setCurrent(whole(row[0])));
            QString lost;
            QVERIFY(app::enterWorkFolder(whole(row[1]), whole(row[2]), &lost));
            QCOMPARE(QDir::currentPath(), whole(row[3]));
            QCOMPARE(lost, whole(row[4]));
        }
    }
};

LUMO_TEST(AppProgram)
#include "test_program.moc"
