#include "app/options.h"

#include <QtTest>

using app::Options;
using app::parseOptions;

class AppOptions : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void nothingGiven();
    void filesBelongToTheCallersFolder();
    void badUsage_data();
    void badUsage();
    void helpNamesEveryOption();

private:
    QTemporaryDir folder_;
};

void AppOptions::initTestCase() {
    QVERIFY(QDir::setCurrent(folder_.path()));
    QVERIFY(QDir().mkdir(QStringLiteral("cell")));
    QFile file(QStringLiteral("cell/seam.json"));
    QVERIFY(file.open(QIODevice::WriteOnly));
}

void AppOptions::nothingGiven() {
    QString error;
    const auto options = parseOptions({}, &error);
    QVERIFY2(options, qPrintable(error));
    QVERIFY(options->language.isEmpty() && options->settings.isEmpty() && options->project.isEmpty() &&
            options->screenshots.isEmpty());
    QVERIFY(!options->help && !options->version);
}

void AppOptions::filesBelongToTheCallersFolder() {
    QString error;
    const QString here = QDir::currentPath();
    const auto options =
        parseOptions({QStringLiteral("--settings"), QStringLiteral("cell"), QStringLiteral("--language=ru"),
                      QStringLiteral("--open=cell/seam.json")},
                     &error);
    QVERIFY2(options, qPrintable(error));
    QCOMPARE(options->settings, here + QStringLiteral("/cell"));
    QCOMPARE(options->project, here + QStringLiteral("/cell/seam.json"));
    QCOMPARE(options->language, QStringLiteral("ru"));
    const auto pictures = parseOptions({QStringLiteral("--screenshots"), QStringLiteral("new")}, &error);
    QVERIFY2(pictures, qPrintable(error));
    QCOMPARE(pictures->screenshots, here + QStringLiteral("/new"));
}

void AppOptions::badUsage_data() {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("part");
    QTest::newRow("unknown") << "--fast"
                             << "unknown argument --fast";
    QTest::newRow("a project without its option") << "cell/seam.json"
                                                  << "unknown argument cell/seam.json";
    QTest::newRow("short") << "-h"
                           << "unknown argument -h";
    QTest::newRow("no value") << "--language"
                              << "--language needs a value: cn|en|ru";
    QTest::newRow("value of a switch") << "--help=yes"
                                       << "--help takes no value";
    QTest::newRow("language") << "--language de"
                              << "--language de is none of cn, en, ru";
    QTest::newRow("empty language") << "--language="
                                    << "--language \"\" is none of";
    QTest::newRow("no such folder") << "--settings nowhere"
                                    << "--settings nowhere is no folder";
    QTest::newRow("a file for a folder") << "--settings cell/seam.json"
                                         << "is no folder";
    QTest::newRow("no such project") << "--open none.json"
                                     << "--open none.json is no file that can be read";
    QTest::newRow("a folder for a project") << "--open cell"
                                            << "is no file";
    QTest::newRow("pictures into a file") << "--screenshots cell/seam.json"
                                          << "is no folder";
    QTest::newRow("pictures of a project") << "--screenshots a --open cell/seam.json"
                                           << "its own project";
    QTest::newRow("pictures of an example") << "--screenshots a --example flange"
                                            << "--screenshots brings its own project";
    QTest::newRow("a project in an example") << "--example flange --open cell/seam.json"
                                             << "--example brings its own project and settings";
    QTest::newRow("an example elsewhere") << "--example ../flange"
                                          << "--example ../flange is no example";
    QTest::newRow("signals into a folder") << "--vcd cell"
                                           << "--vcd cell is no file that can be written";
    QTest::newRow("pictures of settings") << "--settings cell --screenshots a"
                                          << "its own project";
}

void AppOptions::badUsage() {
    QFETCH(QString, line);
    QFETCH(QString, part);
    QString error;
    QVERIFY(!parseOptions(line.split(QLatin1Char(' ')), &error));
    QVERIFY2(error.contains(part), qPrintable(error));
    QVERIFY2(!error.contains(QLatin1Char('\n')), qPrintable(error));
}

void AppOptions::helpNamesEveryOption() {
    for (const char* option : {"--language cn|en|ru", "--settings DIR", "--open PROJECT", "--example NAME",
                               "--screenshots DIR", "--version", "--help"})
        QVERIFY2(app::usage().contains(QLatin1String(option)), option);
}

QTEST_GUILESS_MAIN(AppOptions)
#include "tst_options.moc"
