// A fault campaign: random programs and random schedules of everything that can come in between, against
// the real executor on the simulated cell, on virtual time. The rules say what has to hold. `run` runs
// many, on several processes, and shrinks what fails.

#include "campaign/draw.h"
#include "campaign/rules.h"
#include "campaign/world.h"
#include "support/text.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>

#include <cstdio>

namespace {

void print(const QString& text) {
    std::printf("%s\n", qPrintable(text));
    std::fflush(stdout);
}

/// Whether everything held; else, or when asked for, with every event.
bool tell(const QJsonObject& scenario, const std::vector<campaign::Event>& events, bool verbose) {
    const auto broken = campaign::check(events).all;
    if (!broken.empty()) {
        print("broken: " + broken.begin()->second);
        print("scenario: " + QJsonDocument(scenario).toJson(QJsonDocument::Compact));
    }
    for (std::size_t i = 0; i < events.size() && (verbose || !broken.empty()); ++i) {
        print(events[i].toText());
        const auto [from, to] = broken.equal_range(i);
        std::for_each(from, to, [](const auto& finding) { print("!!!! " + finding.second); });
    }
    return broken.empty();
}

/// Scenarios by their titles: the seed, or the file.
QVector<QPair<QString, QJsonObject>> scenarios(const QCommandLineParser& parser) {
    QVector<QPair<QString, QJsonObject>> all;
    const QString path = parser.value("replay");
    const QStringList names = QDir(path).exists() ? QDir(path).entryList({"*.json"}) : QStringList("");
    for (const QString& name : path.isEmpty() ? QStringList() : names) {
        const QString file = name.isEmpty() ? path : path + '/' + name;
        all.append({file, QJsonDocument::fromJson(test::contentOf(file)).object()});
    }
    const quint64 first = parser.value("seed").toULongLong();
    const quint64 count = path.isEmpty() ? parser.value("count").toULongLong() : 0;
    for (quint64 seed = first; seed < first + count; ++seed) {
        all.append({QString("seed %1").arg(seed), campaign::drawScenario(seed)});
    }
    return all;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    sim::VirtualTime::install();
    const QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOptions({{"seed", "The first schedule's seed.", "number", "1"},
                       {"count", "How many schedules.", "number", "1"},
                       {"replay", "A scenario, or each one of a folder, instead of seeds.", "path"},
                       {"draw", "Print the scenario instead of running it."},
                       {"verbose", "Print every event, also where all is well."},
                       {"self-check", "Instead, whether each rule can be broken."}});
    parser.addHelpOption();
    parser.process(application);
    if (parser.isSet("self-check")) {
        const QStringList missed = campaign::checkRules();
        print(missed.isEmpty() ? "every rule can be broken" : missed.join('\n'));
        return missed.isEmpty() ? 0 : 1;
    }
    campaign::World world;
    int count = 0;
    int broken = 0;
    qint64 virtualMs = 0;
    for (const auto& named : scenarios(parser)) {
        const QJsonObject& scenario = named.second;
        if (parser.isSet("draw")) {
            print(QJsonDocument(scenario).toJson(QJsonDocument::Compact));
            continue;
        }
        print(named.first);
        const auto tellOf = [&](const auto& events) {
            return tell(scenario, events, parser.isSet("verbose"));
        };
        const auto events = campaign::runSchedule(world, scenario, tellOf);
        broken += tellOf(events) ? 0 : 1;
        ++count;
        virtualMs += events.back().ms;
    }
    print(QString("%1 of %2 schedules broke a rule; %3 min of virtual time")
              .arg(broken)
              .arg(count)
              .arg(virtualMs / 60000));
    return broken == 0 && (count > 0 || parser.isSet("draw")) ? 0 : 1;
}
