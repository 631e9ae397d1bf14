// A fault campaign: random programs and random schedules of everything that can come in between,
// against the real executor on the simulated cell, on virtual time. What has to hold is in rules.h.

#include "campaign/casefolder.h"
#include "campaign/options.h"
#include "campaign/scenarioreader.h"
#include "campaign/statistics.h"
#include "campaign/world.h"

#include <QApplication>
#include <QCommandLineParser>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <thread>

namespace {

using namespace campaign;

constexpr int tailLength = 40;
constexpr int brokenShown = 5;

void print(const QString& text) {
    std::printf("%s\n", qPrintable(text));
}

void tell(const Scenario& scenario, const Outcome& outcome, bool withEvents) {
    print(QStringLiteral("\nseed %1: %2")
              .arg(scenario.seed)
              .arg(outcome.broken.mid(0, brokenShown).join(QStringLiteral("\n  then: "))));
    if (withEvents) {
        print(readable(scenario.toJson()));
        print(eventsBefore(outcome, tailLength).join(QLatin1Char('\n')));
    }
    std::fflush(stdout);
}

char* volatile forgotten = nullptr;

/// Proves that whoever watches names the schedule: CAMPAIGN_MISHAP is "crash 7", "hang 7" or "leak 7".
void meetWithMishap(quint64 seed) {
    const QString mishap = qEnvironmentVariable("CAMPAIGN_MISHAP");
    if (mishap.section(QLatin1Char(' '), 1).toULongLong() != seed) {
        return;
    }
    if (mishap.startsWith(QLatin1String("crash"))) {
        std::abort();
    }
    while (mishap.startsWith(QLatin1String("hang"))) {
        std::this_thread::yield();
    }
    if (mishap.startsWith(QLatin1String("leak"))) {
        forgotten = new char[64];
        forgotten = nullptr;
    }
}

/// Runs schedules in this process, and says in the way that was asked for what comes of them.
class Runner {
public:
    explicit Runner(const Options& options) : options_(options) {}

    /// Whether everything held.
    bool run(const Scenario& scenario) {
        Statistics statistics;
        Observers observers;
        observers.heard = [&](const Event& event) {
            statistics.on(event);
            if (options_.verbose) {
                print(event.toText());
            }
        };
        observers.stuck = [&](const Outcome& outcome) { over(scenario, outcome, statistics); };
        if (options_.worker) {
            announceBegin(scenario.seed);
            meetWithMishap(scenario.seed);
        }
        statistics.begin(scenario);
        Outcome outcome = runSchedule(world_, scenario, observers);
        if (options_.twice) {
            compareWithNext(scenario, outcome);
        }
        over(scenario, outcome, statistics);
        return outcome.broken.isEmpty();
    }

    [[nodiscard]] const Statistics& sums() const { return sums_; }

private:
    /// Whatever a schedule left behind, and whatever its JSON leaves out, would show here.
    void compareWithNext(const Scenario& scenario, Outcome& outcome) {
        Scenario again;
        QString problem;
        if (scenarioFromJson(scenario.toJson(), &again, &problem)) {
            problem = difference(outcome, runSchedule(world_, again));
        }
        if (!problem.isEmpty()) {
            outcome.broken << problem;
        }
    }

    void over(const Scenario& scenario, const Outcome& outcome, Statistics& statistics) {
        statistics.end(outcome);
        sums_.add(statistics.toJson());
        if (options_.worker) {
            announceEnd(scenario.seed, outcome.broken, statistics.toJson());
        } else if (!outcome.broken.isEmpty()) {
            tell(scenario, outcome, !options_.verbose);
        }
    }

    const Options& options_;
    World world_;
    Statistics sums_;
};

/// Cases as their paths come in, until no more do; a file that is none is passed over.
int replayAsTold(const Options& options) {
    Runner runner(options);
    std::string path;
    while (std::getline(std::cin, path)) {
        Scenario scenario;
        QString problem;
        if (readCase(QString::fromStdString(path), &scenario, &problem)) {
            runner.run(scenario);
        } else {
            announceBegin(scenario.seed);
            announceEnd(scenario.seed, {problem}, {});
        }
    }
    return EXIT_SUCCESS;
}

/// Every case; a program that reads of none says so.
int replay(const Options& options) {
    if (options.replay == QLatin1String("-") && options.worker) {
        return replayAsTold(options);
    }
    const QStringList cases = casesIn(options.replay);
    if (cases.isEmpty()) {
        std::fprintf(stderr, "campaign: no case in %s\n", qPrintable(options.replay));
        return 2;
    }
    Runner runner(options);
    int failed = 0;
    for (const QString& path : cases) {
        Scenario scenario;
        QString problem;
        if (!readCase(path, &scenario, &problem)) {
            std::fprintf(stderr, "campaign: %s\n", qPrintable(problem));
            return 2;
        }
        if (!options.worker) {
            print(path);
            std::fflush(stdout);
        }
        failed += runner.run(scenario) ? 0 : 1;
    }
    if (!options.worker) {
        print(QStringLiteral("%1 of %2 cases broke an invariant").arg(failed).arg(cases.size()));
    }
    return failed == 0 || options.worker ? EXIT_SUCCESS : EXIT_FAILURE;
}

int runSeeds(const Options& options) {
    Runner runner(options);
    int failed = 0;
    for (int i = 0; i < options.seeds.count; ++i) {
        failed += runner.run(drawScenario(options.seeds.first + static_cast<quint64>(i))) ? 0 : 1;
    }
    if (options.report) {
        print(runner.sums().toMarkdown());
    }
    return failed == 0 || options.worker ? EXIT_SUCCESS : EXIT_FAILURE;
}

void describe(QCommandLineParser& parser) {
    parser.setApplicationDescription(
        QStringLiteral("Random schedules against the executor on the simulated cell."));
    parser.addHelpOption();
    parser.addOptions(
        {{"seed", "The first schedule's seed (1).", "number", "1"},
         {"count", "How many schedules, of this seed and those that follow (2500).", "number", "2500"},
         {"jobs", "How many processes at a time (1).", "number", "1"},
         {"limit", "Seconds of the wall clock that a schedule may take (60).", "seconds", "60"},
         {"twice", "Run each schedule again, from its JSON, and compare every event."},
         {"verbose", "Print every event; for one schedule or case."},
         {"keep-going", "Go on after a violation, and say of each schedule what did not hold."},
         {"keep", "Shrink what fails to the shortest schedule that still does, and keep it.", "folder"},
         {"replay", "Run a kept case, or each one in a folder, instead of seeds.", "path"},
         {"report", "Print what the schedules were made of, as tables."}});
    QCommandLineOption worker(QStringLiteral("worker"));
    worker.setFlags(QCommandLineOption::HiddenFromHelp);
    parser.addOption(worker);
}

/// False when a number is none.
bool read(const QCommandLineParser& parser, Options& options) {
    bool numbers[4] = {};
    options.seeds.first = parser.value(QStringLiteral("seed")).toULongLong(&numbers[0]);
    options.seeds.count = parser.value(QStringLiteral("count")).toInt(&numbers[1]);
    options.jobs = parser.value(QStringLiteral("jobs")).toInt(&numbers[2]);
    options.limitMs = 1000 * parser.value(QStringLiteral("limit")).toInt(&numbers[3]);
    options.verbose = parser.isSet(QStringLiteral("verbose"));
    options.keepGoing = parser.isSet(QStringLiteral("keep-going"));
    options.twice = parser.isSet(QStringLiteral("twice"));
    options.report = parser.isSet(QStringLiteral("report"));
    options.worker = parser.isSet(QStringLiteral("worker"));
    options.keep = parser.value(QStringLiteral("keep"));
    options.replay = parser.value(QStringLiteral("replay"));
    return numbers[0] && numbers[1] && numbers[2] && numbers[3] && options.seeds.count > 0 &&
           options.jobs > 0 && options.limitMs > 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QStringList words;
    for (int i = 0; i < argc; ++i) {
        words << QString::fromLocal8Bit(argv[i]);
    }
    QCommandLineParser parser;
    describe(parser);
    Options options;
    if (!parser.parse(words) || !parser.positionalArguments().isEmpty() || !read(parser, options)) {
        std::fprintf(stderr, "campaign: %s\n",
                     parser.errorText().isEmpty() ? "the numbers count from 1, and nothing else is asked for"
                                                  : qPrintable(parser.errorText()));
        return 2;
    }
    if (parser.isSet(QStringLiteral("help")) || options.watches()) {
        const QCoreApplication application(argc, argv);
        if (parser.isSet(QStringLiteral("help"))) {
            parser.showHelp();
        }
        return watch(options);
    }
    sim::VirtualTime::install();
    const QApplication application(argc, argv);
    watchQt();
    return options.replay.isEmpty() ? runSeeds(options) : replay(options);
}
