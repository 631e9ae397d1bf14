#include "app/shots/gallery.h"
#include "app/shots/stops.h"

#include <QImage>
#include <QtTest>

#include <csignal>

/// The built program as its caller meets it.
class AppProgram : public QObject {
    Q_OBJECT
private slots:
    void badUsage_isOneLine();
    void helpAndVersion();
    void withoutDisplay_saysSo();
    void pictures_showEveryStop();
    void example_isACopyOfTheOperators();
    void signal_endsInOrder_data();
    void signal_endsInOrder();

private:
    struct Result {
        int status = -1;
        QByteArray out, err;
    };
    void start(QProcess* process, const QStringList& arguments,
               const QString& platform = QStringLiteral("offscreen")) const {
        process->setWorkingDirectory(folder_.path());
        // Whole stacks for every allocation would make a build with sanitizers many times slower; the
        // program has its suppressions in it.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(QStringLiteral("LSAN_OPTIONS"));
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), platform);
        environment.insert(QStringLiteral("DISPLAY"), QStringLiteral(":4321"));  // nobody's
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), folder_.path());
        environment.insert(QStringLiteral("XDG_DATA_HOME"), folder_.path());
        process->setProcessEnvironment(environment);
        process->start(QStringLiteral(LUMO_PANEL), arguments);
    }
    Result run(const QStringList& arguments, const QString& platform = QStringLiteral("offscreen")) const {
        QProcess process;
        start(&process, arguments, platform);
        process.waitForFinished(240000);
        Result result;
        result.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        result.out = process.readAllStandardOutput();
        result.err = process.readAllStandardError();
        return result;
    }
    QTemporaryDir folder_;
};

void AppProgram::badUsage_isOneLine() {
    const Result result = run({QStringLiteral("--language"), QStringLiteral("de")});
    QCOMPARE(result.status, 2);
    QCOMPARE(result.err, QByteArray("lumo-panel: --language de is none of cn, en, ru\n"));
    QVERIFY(result.out.isEmpty());
}

void AppProgram::helpAndVersion() {
    const Result help = run({QStringLiteral("--help")});
    QCOMPARE(help.status, 0);
    QVERIFY2(help.out.startsWith("Usage: lumo-panel [options]\n"), help.out);
    const Result version = run({QStringLiteral("--version")});
    QCOMPARE(version.status, 0);
    QCOMPARE(version.out, QByteArray("lumo-panel 26\n"));
    QVERIFY2(help.err.isEmpty() && version.err.isEmpty(), help.err + version.err);
}

void AppProgram::withoutDisplay_saysSo() {
    const Result result = run({}, QStringLiteral("xcb"));
    QCOMPARE(result.status, 3);
    QVERIFY2(result.err.endsWith("lumo-panel: no display can be opened\n"), result.err);
}

void AppProgram::pictures_showEveryStop() {
    const Result result = run({QStringLiteral("--screenshots"), QStringLiteral("shots/new"),
                               QStringLiteral("--language"), QStringLiteral("ru")});
    QVERIFY2(result.status == 0, result.err);
    const QDir shots(QDir(folder_.path()).filePath(QStringLiteral("shots/new")));
    QStringList expected;
    QSet<QByteArray> different;
    for (const app::Stop& stop : app::stops()) {
        for (const QSize& size : app::pictureSizes()) {
            const QString name = app::pictureName(QStringLiteral("ru"), size, QLatin1String(stop.name));
            expected << name;
            const QImage picture(shots.filePath(name));
            QVERIFY2(picture.size() == size, qPrintable(name));
            different.insert(QCryptographicHash::hash(
                QByteArray::fromRawData(reinterpret_cast<const char*>(picture.constBits()),
                                        int(picture.sizeInBytes())),
                QCryptographicHash::Sha1));
        }
    }
    expected.sort();
    QCOMPARE(shots.entryList(QDir::Files, QDir::Name), expected);
    // The panel after its start is the picture of its robot too, where the strip fits; all others differ.
    QVERIFY2(different.size() >= expected.size() - int(app::pictureSizes().size()),
             qPrintable(QString::number(different.size())));
}

void AppProgram::example_isACopyOfTheOperators() {
    QCOMPARE(run({QStringLiteral("--example"), QStringLiteral("none")}).status, 2);
    QProcess panel;
    panel.setProcessChannelMode(QProcess::MergedChannels);
    start(&panel, {QStringLiteral("--example"), QStringLiteral("flange")});
    QByteArray said;
    while (!said.contains("flange.json") && panel.waitForReadyRead(60000))
        said += panel.readAll();
    const QString copy = folder_.filePath(QStringLiteral("lumo/lumo-panel/examples/flange/flange.json"));
    QVERIFY2(said.contains(copy.toUtf8()), said);
    QVERIFY(QFile::exists(copy));
    kill(pid_t(panel.processId()), SIGTERM);
    QVERIFY(panel.waitForFinished(60000));
}

void AppProgram::signal_endsInOrder_data() {
    QTest::addColumn<int>("number");
    QTest::newRow("terminated") << SIGTERM;
    QTest::newRow("interrupted") << SIGINT;
    QTest::newRow("hung up") << SIGHUP;
}

/// As by closing the window: a program that a signal kills switches nothing off.
void AppProgram::signal_endsInOrder() {
    QFETCH(int, number);
    const QTemporaryDir settings;
    QProcess panel;
    panel.setProcessChannelMode(QProcess::MergedChannels);
    const QString dump = settings.filePath(QStringLiteral("cell.vcd"));
    start(&panel, {QStringLiteral("--settings"), settings.path(), QStringLiteral("--language"),
                   QStringLiteral("en"), QStringLiteral("--vcd"), dump});
    QByteArray said;
    while (!said.contains("lumo v26") && panel.waitForReadyRead(60000))
        said += panel.readAll();
    QVERIFY2(said.contains("lumo v26"), said);  // the package is loaded: signals are listened to by now
    kill(pid_t(panel.processId()), number);
    QVERIFY(panel.waitForFinished(60000));
    QCOMPARE(panel.exitStatus(), QProcess::NormalExit);
    QCOMPARE(panel.exitCode(), 0);
    QVERIFY(QFileInfo(dump).size() > 0);
}

QTEST_GUILESS_MAIN(AppProgram)
#include "tst_program.moc"
