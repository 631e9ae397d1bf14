// A fault campaign: random programs and random schedules of everything that can come in between,
// against the real executor on the simulated cell, on virtual time. What has to hold is in rules.h.

#include "campaign/conductor.h"
#include "campaign/sources.h"
#include "module/globals.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QJsonDocument>

#include <cstdio>
#include <cstdlib>

namespace {

using namespace campaign;

constexpr int tailLength = 40;
constexpr int brokenShown = 5;

void print(const QString& text) {
    std::printf("%s\n", qPrintable(text));
}

/// The scenario as one JSON object, a line for each element of its lists.
void print(const Scenario& scenario) {
    const QJsonObject object = scenario.toJson();
    QStringList members;
    for (auto member = object.begin(); member != object.end(); ++member) {
        // An array of one element, without its brackets, is how Qt writes a value alone.
        const auto compact = [](const QJsonValue& value) {
            const QByteArray text = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
            return QString::fromUtf8(text.mid(1, text.size() - 2));
        };
        QString text = compact(*member);
        if (member->isArray()) {
            QStringList elements;
            for (const QJsonValue element : member->toArray()) {
                elements << QStringLiteral("    ") + compact(element);
            }
            text = elements.isEmpty()
                       ? QStringLiteral("[]")
                       : QStringLiteral("[\n%1\n  ]").arg(elements.join(QStringLiteral(",\n")));
        }
        members << QStringLiteral("  \"%1\": %2").arg(member.key(), text);
    }
    print(QStringLiteral("{\n%1\n}").arg(members.join(QStringLiteral(",\n"))));
}

/// What Qt reports while a schedule runs; nothing but misuse does.
std::function<void(const QString&)> onQtMessage;

void handleMessage(QtMsgType type, const QMessageLogContext&, const QString& text) {
    const bool isOffscreen = text.startsWith(QLatin1String("This plugin does not support"));
    if (type != QtDebugMsg && type != QtInfoMsg && !isOffscreen && onQtMessage) {
        onQtMessage(text);
    }
}

void report(const Scenario& scenario, const Recorder& recorder, const QStringList& broken, bool verbose) {
    print(QStringLiteral("\nseed %1: %2")
              .arg(scenario.seed)
              .arg(broken.mid(0, brokenShown).join(QStringLiteral("\n  then: "))));
    print(scenario);
    const auto& events = recorder.events();
    const int end = recorder.brokenAt() < 0 ? static_cast<int>(events.size()) : recorder.brokenAt();
    for (int i = verbose ? end : std::max(0, end - tailLength); i < end; ++i) {
        print(events[static_cast<std::size_t>(i)].toText());
    }
    print(QStringLiteral("Once more, with every event: campaign --seed %1 --count 1 --verbose")
              .arg(scenario.seed));
    std::fflush(stdout);
}

/// Runs one schedule; what did not hold, in words.
QStringList runOne(World& world, const Scenario& scenario, bool verbose, bool quiet) {
    Checker checker;
    Recorder recorder(checker);
    if (verbose) {
        print(QStringLiteral("seed %1").arg(scenario.seed));
        recorder.setListener([](const Event& event) { print(event.toText()); });
    }
    onQtMessage = [&recorder](const QString& text) {
        Event event;
        event.kind = Event::Kind::Complaint;
        event.text = QStringLiteral("Qt reports: ") + text;
        recorder.record(event);
    };
    world.fill(scenario);
    Performer performer(world, recorder, scenario);
    Sources first;
    QObject::connect(&first, &Sources::heard, &recorder, [&](const Event& event) {
        const Event kept = recorder.record(event);
        if (kept.action >= 0) {
            performer.notice(kept, true);
        }
        // Nobody comes after these.
        if (kept.action >= 0 && kept.kind == Event::Kind::Activity) {
            performer.notice(kept, false);
        }
    });
    world.makeExecutor();
    first.follow(executor);
    world.makeCell(scenario);
    first.follow(world.controller.get(), world.cell.get());
    Sources last;
    last.hearOnly(executor);
    QObject::connect(&last, &Sources::heard, &performer,
                     [&performer](const Event& event) { performer.notice(event, false); });

    Conductor conductor(world, recorder, performer, scenario);
    conductor.setStuckHandler([&](const QString& words) {
        // The executor is somewhere below: there is no way back to a clean beginning.
        report(scenario, recorder, checker.broken() + QStringList(words), verbose);
        std::_Exit(EXIT_FAILURE);
    });
    conductor.begin();
    world.time.advanceUntil([&conductor] { return conductor.isOver(); }, 1000000);
    checker.end(world.takeDown(recorder.resumeLines()));
    onQtMessage = nullptr;
    if (!checker.broken().isEmpty() && !quiet) {
        report(scenario, recorder, checker.broken(), verbose);
    }
    return checker.broken();
}

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    sim::VirtualTime* const time = sim::VirtualTime::install();
    QApplication application(argc, argv);
    qInstallMessageHandler(handleMessage);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Random schedules against the executor on the simulated cell."));
    parser.addHelpOption();
    parser.addOptions(
        {{"seed", "The first schedule's seed (1).", "number", "1"},
         {"count", "How many schedules, of this seed and those that follow (2500).", "number", "2500"},
         {"verbose", "Print every event."},
         {"keep-going", "Go on after a violation, and say of each schedule what did not hold."}});
    parser.process(application);
    bool numbers[2] = {};
    const quint64 seed = parser.value(QStringLiteral("seed")).toULongLong(&numbers[0]);
    const int count = parser.value(QStringLiteral("count")).toInt(&numbers[1]);
    if (!numbers[0] || !numbers[1] || count < 1) {
        std::fprintf(stderr, "campaign: --seed and --count take a number from 1.\n");
        return 2;
    }
    const bool verbose = parser.isSet(QStringLiteral("verbose"));
    const bool keepGoing = parser.isSet(QStringLiteral("keep-going"));
    QElapsedTimer wall;
    wall.start();
    World world;
    int failed = 0;
    for (int i = 0; i < count && (failed == 0 || keepGoing); ++i) {
        const Scenario scenario = drawScenario(seed + static_cast<quint64>(i));
        const QStringList broken = runOne(world, scenario, verbose, keepGoing);
        failed += broken.isEmpty() ? 0 : 1;
        if (keepGoing && !broken.isEmpty()) {
            print(QStringLiteral("%1: %2").arg(scenario.seed).arg(broken.first()));
            std::fflush(stdout);
        }
    }
    print(QStringLiteral("%1 of %2 schedules broke an invariant; %3 min of virtual time in %4 s")
              .arg(failed)
              .arg(count)
              .arg(time->nowMs() / 60000)
              .arg(wall.elapsed() / 1000.0, 0, 'f', 1));
    return failed == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
