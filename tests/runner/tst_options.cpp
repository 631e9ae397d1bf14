#include "runner/options.h"

#include <QtTest>

using run::Options;
using run::parseOptions;
using run::Problem;

class RunnerOptions : public QObject {
    Q_OBJECT
private slots:
    void defaults();
    void everyOption();
    void filesBelongToTheCallersFolder();
    void badUsage_data();
    void badUsage();
    void helpNamesEveryOption();
};

void RunnerOptions::defaults() {
    Problem problem;
    const auto options = parseOptions({QStringLiteral("sub/a.json")}, &problem);
    QVERIFY2(options, qPrintable(problem.text()));
    QCOMPARE(options->projectName, QStringLiteral("sub/a.json"));
    QCOMPARE(options->settings, QDir::current().absoluteFilePath(QStringLiteral("sub")));
    QCOMPARE(options->language, QStringLiteral("en"));
    QVERIFY(options->power && options->weld && options->writeMulti && !options->handWeld);
    QCOMPARE(options->untilMs, 3600000);
    QVERIFY(!options->once && options->line == 1 && options->ackMs == 0 && options->axes == 6);
}

void RunnerOptions::everyOption() {
    Problem problem;
    const QString line = QStringLiteral(
        "--settings . --language cn --mode=manual --power off --weld off --hand-weld on --once 7 --axes 7 "
        "--no-write-multi --scenario s.json --ack 250 --until=9 --realtime --trace - --posture --vcd v.vcd "
        "--quiet a.json");
    const auto o = parseOptions(line.split(QLatin1Char(' ')), &problem);
    QVERIFY2(o, qPrintable(problem.text()));
    QCOMPARE(o->settings, QDir::currentPath());
    QCOMPARE(o->language, QStringLiteral("cn"));
    QCOMPARE(o->mode, QStringLiteral("manual"));
    QVERIFY(!o->power && !o->weld && o->handWeld && !o->writeMulti);
    QVERIFY(o->realtime && o->posture && o->quiet);
    QCOMPARE(o->once.value_or(0), 7);
    QCOMPARE(o->axes, 7);
    QCOMPARE(o->ackMs, 250);
    QCOMPARE(o->untilMs, 9);
    QCOMPARE(o->scenarioName, QStringLiteral("s.json"));
    QCOMPARE(o->trace, QStringLiteral("-"));
    QCOMPARE(o->vcd, QDir::current().absoluteFilePath(QStringLiteral("v.vcd")));
}

void RunnerOptions::filesBelongToTheCallersFolder() {
    const QTemporaryDir folder;
    const QString before = QDir::currentPath();
    QDir::setCurrent(folder.path());
    const QString here = QDir::currentPath();
    Problem problem;
    const auto options = parseOptions({QStringLiteral("p.json"), QStringLiteral("--trace"),
                                       QStringLiteral("out/t.jsonl"), QStringLiteral("--settings=.")},
                                      &problem);
    QDir::setCurrent(before);
    QVERIFY2(options, qPrintable(problem.text()));
    QCOMPARE(options->project, here + QStringLiteral("/p.json"));
    QCOMPARE(options->trace, here + QStringLiteral("/out/t.jsonl"));
    QVERIFY(QFileInfo(options->settings).isAbsolute());
}

void RunnerOptions::badUsage_data() {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("part");
    QTest::newRow("nothing") << ""
                             << "one project file, got 0";
    QTest::newRow("two projects") << "a.json b.json"
                                  << "got 2";
    QTest::newRow("unknown") << "--fast a.json"
                             << "--fast";
    QTest::newRow("short") << "-q a.json"
                           << "-q";
    QTest::newRow("no value") << "a.json --line"
                              << "--line needs a value";
    QTest::newRow("value of a switch") << "--quiet=yes a.json"
                                       << "--quiet takes no value";
    QTest::newRow("language") << "--language de a.json"
                              << "cn, en, ru";
    QTest::newRow("mode") << "--mode AUTO a.json"
                          << "auto, manual";
    QTest::newRow("power") << "--power 1 a.json"
                           << "on, off";
    QTest::newRow("axes") << "--axes 5 a.json"
                          << "6, 7";
    QTest::newRow("line 0") << "--line 0 a.json"
                            << "no number from 1";
    QTest::newRow("line negative") << "--line -1 a.json"
                                   << "no number from 1";
    QTest::newRow("line text") << "--line two a.json"
                               << "no number from 1";
    QTest::newRow("line fraction") << "--line 1.5 a.json"
                                   << "no number from 1";
    QTest::newRow("once 0") << "--once 0 a.json"
                            << "no number from 1";
    QTest::newRow("line and once") << "--once 1 --line 2 a.json"
                                   << "exclude";
    QTest::newRow("ack") << "--ack x a.json"
                         << "no number from 0";
    QTest::newRow("until") << "--until= a.json"
                           << "no number from 0";
    QTest::newRow("settings") << "--settings no/such/folder a.json"
                              << "is no folder";
    QTest::newRow("empty trace") << "--trace= a.json"
                                 << "names no file";
    QTest::newRow("stations") << "--stations x"
                              << "not available yet";
    QTest::newRow("point of five") << "--point 1,2,3,4,5"
                                   << "X,Y,Z,RX,RY,RZ";
    QTest::newRow("point of words") << "--point 1,2,3,4,5,x"
                                    << "X,Y,Z,RX,RY,RZ";
}

void RunnerOptions::badUsage() {
    QFETCH(QString, line);
    QFETCH(QString, part);
    Problem problem;
    QVERIFY(!parseOptions(line.split(QLatin1Char(' '), Qt::SkipEmptyParts), &problem));
    QVERIFY2(problem.text().contains(part), qPrintable(problem.text()));
    QVERIFY(!problem.text().contains(QLatin1Char('\n')));
}

void RunnerOptions::helpNamesEveryOption() {
    const QString words = QStringLiteral(
        "settings language mode power weld hand-weld line once axes no-write-multi scenario stations ack "
        "until realtime trace posture vcd quiet version help point");
    for (const QString& name : words.split(QLatin1Char(' ')))
        QVERIFY2(run::usage().contains(QStringLiteral("  --%1 ").arg(name)), qPrintable(name));
}

QTEST_GUILESS_MAIN(RunnerOptions)
#include "tst_options.moc"
