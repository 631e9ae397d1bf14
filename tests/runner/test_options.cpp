#include "runner/options.h"
#include "runner/outputfault.h"
#include "support/suite.h"
#include "support/text.h"

#include <QDir>

#include <unistd.h>

#include <limits>

using run::parseOptions;
using run::Problem;

namespace {

QStringList words(const char* line) {
    return QString(line).split(' ', Qt::SkipEmptyParts);
}

}  // namespace

class RunnerOptions : public QObject {
    Q_OBJECT
private slots:
    void options_areTakenAsGiven_andDefaultToASafeRun() {
        Problem problem;
        QVERIFY(QDir().mkpath("sub"));
        const auto plain = parseOptions({"sub/a.json"}, &problem);
        QVERIFY2(plain, qPrintable(problem.text()));
        QCOMPARE(plain->settings, QDir::current().absoluteFilePath("sub"));
        QVERIFY(plain->power && plain->weld && !plain->noWriteMulti && !plain->handWeld && !plain->once);
        QVERIFY(plain->untilMs == 3600000 && plain->line == 1 && plain->ackMs == 0 && plain->axes == 6);
        QCOMPARE(plain->language, QString("en"));

        const auto all = parseOptions(
            words("--settings . --language cn --mode=manual --power off --weld off --hand-weld on --once 7 "
                  "--axes 7 --no-write-multi --scenario s.json --ack 250 --until=9 --realtime --trace - "
                  "--posture --vcd v.vcd --quiet --overlap 7.5 --dry-run --repeat 3 --every "
                  "9223372036854775807 a.json"),
            &problem);
        QVERIFY2(all, qPrintable(problem.text()));
        QVERIFY(!all->power && !all->weld && all->handWeld && all->noWriteMulti && all->trace == "-");
        QVERIFY(all->repeat == 3 && all->everyMs == std::numeric_limits<qint64>::max());
        QVERIFY(all->overlapMm == 7.5 && all->dryPercent == 100.0 && !plain->dryPercent);
        QVERIFY(all->realtime && all->posture && all->quiet);
        QVERIFY(all->once == 7 && all->axes == 7 && all->ackMs == 250 && all->untilMs == 9);
        QCOMPARE((QStringList{all->settings, all->mode, all->scenarioName, all->vcd, all->project}),
                 (QStringList{QDir::currentPath(), "manual", "s.json", QDir().absoluteFilePath("v.vcd"),
                              QDir().absoluteFilePath("a.json")}));

        const auto stations = parseOptions({"--stations", "sub", "--settings", "sub/."}, &problem);
        QVERIFY2(stations && stations->folder() == QDir().absoluteFilePath("sub"),
                 qPrintable(problem.text()));
    }

    void wrongUsage_isRefusedInOneLine() {
        const std::pair<const char*, const char*> usages[] = {
            {"", "one project file, got 0"},
            {"--fast a.json", "--fast"},
            {"a.json --line", "--line needs a value"},
            {"--overlap 20.5 a.json", "--overlap 20.5 is no number from 0 to 20"},
            {"--dry-run=99 a.json", "--dry-run 99 is no number from 100 to 1000"},
            {"--quiet=yes a.json", "--quiet takes no value"},
            {"--language de a.json", "cn, en, ru"},
            {"--axes 5 a.json", "6, 7"},
            {"--line 0 a.json", "no number from 1"},
            {"--line 1 --once=1 a.json", "exclude"},
            {"--until= a.json", "no number from 0"},
            {"--until 1e3 a.json", "no number from 0"},
            {"--until 9223372036854775808 a.json", "too large"},
            {"--repeat 2 a.json", "need a --scenario"},
            {"--diff a.jsonl", "two traces, got 1"},
            {"--vcd v --posture .", "--posture and a folder of projects exclude"},
            {"--settings no/such/folder a.json", "--settings no/such/folder is no folder"},
            {"--trace= a.json", "names no file"},
            {"--stations . a.json", "exclude"},
            {"--stations . --line 1", "--stations and --line exclude"},
            {"--stations . --settings ..", "--settings .. is not the folder of the stations"},
            {"--point 1,2,3,4,5", "X,Y,Z,RX,RY,RZ"},
            {"--point 1,2,3,4,5,x", "X,Y,Z,RX,RY,RZ"}};
        for (const auto& [line, part] : usages) {
            Problem problem;
            QVERIFY2(!parseOptions(words(line), &problem), line);
            QVERIFY2(problem.text().contains(part) && !problem.text().contains('\n'),
                     qPrintable(problem.text()));
        }
    }

    /// Through symbolic and hard links, relative paths, and files that do not exist yet.
    void output_neverOverwritesWhatIsRead() {
        QVERIFY(QDir().mkpath("set"));
        for (const char* name : {"p.json", "s.json", "set/lumo_port.json", "other.json"}) {
            test::writeFile(name, "[]");
        }
        QVERIFY(QFile::link("p.json", "soft") && ::link("p.json", "hard") == 0);
        const std::pair<const char*, const char*> outputs[] = {
            {"--trace t --vcd v", ""},
            {"--trace - --vcd ./-", ""},
            {"--trace soft", "--trace soft would overwrite"},
            {"--trace hard", "--trace hard would overwrite"},
            {"--scenario s.json --vcd s.json", "--vcd s.json would overwrite"},
            {"--settings set --vcd set/lumo_port.json", "would overwrite"},
            {"--trace set/../lumo_param.json", "would overwrite"},
            {"--trace set/lumo_port.json", ""},
            {"--trace other.json", "would overwrite"},
            {"--trace t --vcd set/../t", "same file"},
            {"--trace /dev/null --vcd /dev/null", ""}};
        for (const auto& [line, fault] : outputs) {
            Problem problem;
            const auto options = parseOptions(words(line) + QStringList{"p.json"}, &problem);
            QVERIFY2(options, qPrintable(problem.text()));
            const QString found = run::outputFault(*options, {QDir().absoluteFilePath("other.json")});
            QVERIFY2(found.isEmpty() == !*fault && found.contains(fault), line);
        }
    }
};

LUMO_TEST_ON(RunnerOptions, test::onWallClock)
#include "test_options.moc"
