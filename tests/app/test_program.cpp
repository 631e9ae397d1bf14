#include "app/examples/exampleshelf.h"
#include "app/options.h"
#include "app/preferences.h"
#include "app/workfolder.h"
#include "support/runnerfolder.h"
#include "support/suite.h"
#include "support/text.h"

#include <csignal>

using app::Preferences;
using test::contentOf;
using test::writeFile;

/// The built program as its caller meets it, and what it remembers.
class AppProgram : public QObject {
    Q_OBJECT

    const QDir home_ = QDir::current();

    static Result call(const QStringList& arguments) { return runIn(".", arguments, LUMO_PANEL); }

private slots:
    void initTestCase() {
        QCoreApplication::setOrganizationName("lumo");
        QCoreApplication::setApplicationName("lumo-panel");
        qputenv("XDG_DATA_HOME", QFile::encodeName(home_.filePath("data")));
        for (const char* name :
             {"cell", "checkout/lumo/resources", "checkout/deep", "elsewhere", "from/seam"}) {
            QVERIFY(QDir().mkpath(name));
        }
        writeFile("cell/seam.json", "[]");
        writeFile("checkout/lumo/resources/lumo.json", "{}");
    }
    void init() {
        QVERIFY(QDir::setCurrent(home_.path()));
        QFile::remove(qgetenv("XDG_CONFIG_HOME") + "/lumo/lumo-panel.json");
    }

    void wrongOption_isSaidInOneLine() {
        const QVector<QStringList> rows = {
            {"--fast", "unknown argument --fast"},
            {"--language", "--language needs a value: cn|en|ru"},
            {"--help=yes", "--help takes no value"},
            {"--settings cell/seam.json", "--settings cell/seam.json is no folder"},
            {"--open cell", "--open cell is no file that can be read"},
            {"--example flange --settings cell", "--example brings its own project and settings"},
            {"--vcd nowhere/a.vcd", "--vcd nowhere/a.vcd is no file that can be written"},
        };
        QString error;
        for (const QStringList& row : rows) {
            QVERIFY2(!app::parseOptions(row[0].split(' '), &error), qPrintable(row[0]));
            QVERIFY2(error.contains(row[1]) && !error.contains('\n'), qPrintable(error));
        }
        QCOMPARE(app::parseOptions({"--open=cell/seam.json"}, &error)->project,
                 home_.filePath("cell/seam.json"));
    }

    void status_tellsTheCallerWhatHappened() {
        const Result wrong = call({"--language", "de"}), version = call({"--version"});
        QCOMPARE(wrong.err, QByteArray("lumo-panel: --language de is none of cn, en, ru\n"));
        QVERIFY(wrong.status == 2 && wrong.out.isEmpty() && call({"--example", "../flange"}).status == 2);
        QVERIFY(version.status == 0 && version.out.startsWith("lumo-panel "));
        qputenv("QT_QPA_PLATFORM", "xcb");
        qputenv("DISPLAY", ":4321");  // nobody's
        const Result blind = call({});
        qputenv("QT_QPA_PLATFORM", "offscreen");
        QVERIFY2(blind.status == 3 && blind.err.endsWith("no display can be opened\n"), blind.err);
    }

    /// As by closing the window: a process that a signal kills would switch nothing off.
    void signal_endsInOrder() {
        for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
            const bool example = number == SIGTERM;
            const QStringList options = example ? QStringList{"--example", "flange"}
                                                : QStringList{"--settings", "cell", "--language", "ru"};
            QFile::remove("cell.vcd");
            QProcess panel;
            panel.setProcessChannelMode(QProcess::MergedChannels);
            panel.start(LUMO_PANEL, options + QStringList{"--vcd", "cell.vcd"});
            QByteArray said;
            // Once the package is loaded, signals are listened to.
            while (!said.contains(example ? "flange.json" : "lumo v26") && panel.waitForReadyRead(600000)) {
                said += panel.readAll();
            }
            QVERIFY2(said.contains("lumo v26"), said);
            QCOMPARE(kill(pid_t(panel.processId()), number), 0);
            QVERIFY(panel.waitForFinished(600000));
            QVERIFY(panel.exitStatus() == QProcess::NormalExit && panel.exitCode() == 0);
            QVERIFY(contentOf("cell.vcd").startsWith("$version"));
            // What was asked for is remembered, but no example.
            QCOMPARE(Preferences::language(), example ? "" : "ru");
            QCOMPARE(Preferences::folder(), example ? "" : home_.filePath("cell"));
            QCOMPARE(said.contains("/data/lumo/lumo-panel/examples/flange/flange.json"), example);
        }
    }

    void example_isCopiedAndItsChangesAreKept() {
        const app::ExampleShelf shelf("from", "to");
        QString error;
        writeFile("from/seam/seam.json", "[]");
        QFile::setPermissions("from/seam/seam.json", QFile::ReadOwner);  // as it is where it is installed
        QVERIFY(shelf.take("seam", &error) == "to/seam" && contentOf(shelf.project("seam")) == "[]");
        writeFile("to/seam/seam.json", "[1]");  // the copy is writable
        QVERIFY(shelf.take("seam", &error) == "to/seam" && contentOf(shelf.project("seam")) == "[1]");
        QVERIFY(QDir("to/seam").removeRecursively());
        writeFile("to/seam", "in the way");
        QVERIFY(shelf.take("seam", &error).isEmpty() && error == "to/seam");
    }

    void pendantAndLanguage_areRemembered() {
        QVERIFY(!Preferences::pendantPlace() && Preferences::pendantUnfolded());
        Preferences::rememberPendant(QPoint(-12, 34), false);
        QVERIFY(Preferences::pendantPlace() == QPoint(-12, 34) && !Preferences::pendantUnfolded());
        Preferences::rememberLanguage("../en");
        QVERIFY(Preferences::language().isEmpty());
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
        const auto whole = [this](const QString& n) { return n.isEmpty() ? n : home_.filePath(n); };
        for (const QStringList& row : rows) {
            QVERIFY(QDir::setCurrent(whole(row[0])));
            QString lost;
            QVERIFY(app::enterWorkFolder(whole(row[1]), whole(row[2]), &lost));
            QCOMPARE(QDir::currentPath() + "," + lost, whole(row[3]) + "," + whole(row[4]));
        }
    }
};

LUMO_TEST(AppProgram)
#include "test_program.moc"
