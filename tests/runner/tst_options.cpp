#include "runner/options.h"
#include "runner/outputcheck.h"

#include <QtTest>

#include <unistd.h>

using run::Options;
using run::parseOptions;
using run::Problem;

class RunnerOptions : public QObject {
    Q_OBJECT
private slots:
    void defaults();
    void everyOption();
    void filesBelongToTheCallersFolder();
    void stationsStandForTheProject();
    void badUsage_data();
    void badUsage();
    void helpNamesEveryOption();
    void outputsDestroyNothing_data();
    void outputsDestroyNothing();
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

void RunnerOptions::stationsStandForTheProject() {
    const QTemporaryDir folder;
    Problem problem;
    const auto options = parseOptions({QStringLiteral("--stations"), folder.path()}, &problem);
    QVERIFY2(options, qPrintable(problem.text()));
    QCOMPARE(options->settings, folder.path());
    QCOMPARE(options->folder(), folder.path());
    QVERIFY(options->project.isEmpty());
    const QString again = folder.path() + QLatin1String("/.");
    QVERIFY(parseOptions({QStringLiteral("--stations"), folder.path(), QStringLiteral("--settings"), again},
                         &problem));
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
    QTest::newRow("line 1 and once") << "--line 1 --once=1 a.json"
                                     << "exclude";
    QTest::newRow("ack") << "--ack x a.json"
                         << "no number from 0";
    QTest::newRow("until") << "--until= a.json"
                           << "no number from 0";
    QTest::newRow("settings") << "--settings no/such/folder a.json"
                              << "--settings no/such/folder is no folder";
    QTest::newRow("empty trace") << "--trace= a.json"
                                 << "names no file";
    QTest::newRow("stations, no folder") << "--stations no/such/folder"
                                         << "--stations no/such/folder is no folder";
    QTest::newRow("stations and a project") << "--stations . a.json"
                                            << "exclude";
    QTest::newRow("stations and a line") << "--stations . --line 1"
                                         << "--stations and --line exclude";
    QTest::newRow("stations and a step") << "--once 1 --stations ."
                                         << "--stations and --once exclude";
    QTest::newRow("stations with settings elsewhere") << "--stations . --settings .."
                                                      << "--settings .. is not the folder of the stations";
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

void RunnerOptions::outputsDestroyNothing_data() {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("fault");
    QTest::newRow("files of their own") << "--trace t --vcd v" << QString();
    QTest::newRow("neither") << "--settings set" << QString();
    QTest::newRow("standard output") << "--trace - --vcd ./-" << QString();
    QTest::newRow("project") << "--trace p.json"
                             << "--trace p.json would overwrite";
    QTest::newRow("project by another way") << "--vcd set/../p.json"
                                            << "--vcd set/../p.json would overwrite";
    QTest::newRow("project by a link") << "--trace soft"
                                       << "--trace soft would overwrite";
    QTest::newRow("project by its other name") << "--trace hard"
                                               << "--trace hard would overwrite";
    QTest::newRow("scenario") << "--scenario s.json --vcd s.json"
                              << "--vcd s.json would overwrite";
    QTest::newRow("no scenario here") << "--vcd s.json" << QString();
    QTest::newRow("settings file") << "--settings set --trace set/lumo_port.json"
                                   << "would overwrite";
    QTest::newRow("settings file to be") << "--trace lumo_param.json"
                                         << "would overwrite";
    QTest::newRow("settings of others") << "--trace set/lumo_port.json" << QString();
    QTest::newRow("project to load") << "--trace other.json"
                                     << "would overwrite";
    QTest::newRow("each other") << "--trace t --vcd set/../t"
                                << "same file";
    QTest::newRow("nowhere") << "--trace /dev/null --vcd /dev/null" << QString();
}

void RunnerOptions::outputsDestroyNothing() {
    QFETCH(QString, line);
    QFETCH(QString, fault);
    const QTemporaryDir folder;
    const QDir dir(folder.path());
    QVERIFY(dir.mkdir(QStringLiteral("set")));
    for (const QString& name : {QStringLiteral("p.json"), QStringLiteral("s.json"),
                                QStringLiteral("set/lumo_port.json"), QStringLiteral("other.json")})
        QVERIFY(QFile(dir.filePath(name)).open(QIODevice::WriteOnly));
    const QString project = dir.filePath(QStringLiteral("p.json"));
    QVERIFY(QFile::link(project, dir.filePath(QStringLiteral("soft"))));
    QCOMPARE(::link(QFile::encodeName(project), QFile::encodeName(dir.filePath(QStringLiteral("hard")))), 0);

    const QString before = QDir::currentPath();
    QDir::setCurrent(folder.path());
    Problem problem;
    const auto options = parseOptions((line + QStringLiteral(" p.json")).split(QLatin1Char(' ')), &problem);
    QDir::setCurrent(before);
    QVERIFY2(options, qPrintable(problem.text()));
    const QString found = run::outputFault(*options, {dir.filePath(QStringLiteral("other.json"))});
    QCOMPARE(found.isEmpty(), fault.isEmpty());
    QVERIFY2(found.contains(fault), qPrintable(found));
}

QTEST_GUILESS_MAIN(RunnerOptions)
#include "tst_options.moc"
