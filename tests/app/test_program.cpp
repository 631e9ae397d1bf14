#include "app/examples/examplelibrary.h"
#include "app/options.h"
#include "app/preferences.h"
#include "support/runnerfolder.h"
#include "support/suite.h"
#include "support/text.h"

#include <csignal>

using app::Preferences;
using test::contentOf;
using test::writeFile;

/// The program's options, exit status and preferences.
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

    void wrongOption_givesOneLine() {
        const QVector<QStringList> rows = {
            {"seam.json", "unknown argument seam.json"},
            {"--settings cell/seam.json", "--settings cell/seam.json is no folder"},
            {"--open cell", "--open cell is no file that can be read"},
            {"--example flange --settings cell", "--example brings its own project and settings"},
            {"--rated-power 0", "--rated-power 0 is no power above 0"},
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

    void exitStatus_distinguishesUsageAndDisplayErrors() {
        const Result wrong = call({"--language", "de"}), version = call({"--version"});
        QCOMPARE(wrong.err, QByteArray("lumo-panel: --language de is none of cn, en, ru\n"));
        QVERIFY(wrong.status == 2 && wrong.out.isEmpty() && call({"--example", "../flange"}).status == 2);
        QVERIFY(version.status == 0 && version.out.startsWith("lumo-panel "));
        qputenv("QT_QPA_PLATFORM", "xcb");
        qputenv("DISPLAY", ":4321");  // does not exist
        const Result noDisplay = call({});
        qputenv("QT_QPA_PLATFORM", "offscreen");
        QVERIFY2(noDisplay.status == 3 && noDisplay.err.endsWith("no display can be opened\n"),
                 noDisplay.err);
    }

    void signal_quitsNormally() {
        for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
            const bool example = number == SIGTERM;
            const QStringList options = example ? QStringList{"--example", "flange"}
                                                : QStringList{"--settings", "cell", "--language", "ru"};
            QFile::remove("cell.vcd");
            QProcess panel;
            panel.setProcessChannelMode(QProcess::MergedChannels);
            panel.start(LUMO_PANEL, options + QStringList{"--vcd", "cell.vcd"});
            QByteArray said;
            // The signal handlers are installed before the package is loaded.
            while (!said.contains(example ? "flange.json" : "lumo v26") && panel.waitForReadyRead(600000)) {
                said += panel.readAll();
            }
            QVERIFY2(said.contains("lumo v26"), said);
            QCOMPARE(kill(pid_t(panel.processId()), number), 0);
            QVERIFY(panel.waitForFinished(600000));
            QVERIFY(panel.exitStatus() == QProcess::NormalExit && panel.exitCode() == 0);
            QVERIFY(contentOf("cell.vcd").startsWith("$version"));
            // Options are remembered, examples are not.
            QCOMPARE(Preferences::language(), example ? "" : "ru");
            QCOMPARE(Preferences::folder(), example ? "" : home_.filePath("cell"));
            QCOMPARE(said.contains("/data/lumo/lumo-panel/examples/flange/flange.json"), example);
        }
    }

    void example_isCopied_andItsChangesAreKept() {
        const app::ExampleLibrary library("from", "to");
        QString error;
        writeFile("from/seam/seam.json", "[]");
        QFile::setPermissions("from/seam/seam.json", QFile::ReadOwner);  // as when installed
        QVERIFY(library.copyForOperator("seam", &error) == "to/seam" &&
                contentOf(library.project("seam")) == "[]");
        writeFile("to/seam/seam.json", "[1]");  // the copy is writable
        QVERIFY(library.copyForOperator("seam", &error) == "to/seam" &&
                contentOf(library.project("seam")) == "[1]");
        QVERIFY(QDir("to/seam").removeRecursively());
        writeFile("to/seam", "in the way");
        QVERIFY(library.copyForOperator("seam", &error).isEmpty() && error == "to/seam");
    }

    void docksSizeAndLanguage_areRemembered() {
        QVERIFY(Preferences::docks().isEmpty() && Preferences::factor() == 0);
        Preferences::rememberDocks({"cell", "path"});
        Preferences::rememberFactor(1.5);
        QVERIFY(Preferences::docks() == QStringList({"cell", "path"}) && Preferences::factor() == 1.5);
        Preferences::rememberFactor(50);
        QCOMPARE(Preferences::factor(), 0.0);
        Preferences::rememberLanguage("../en");
        QVERIFY(Preferences::language().isEmpty());
    }

    void folder_isTheGivenElseTheRememberedElseTheDefault() {
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
