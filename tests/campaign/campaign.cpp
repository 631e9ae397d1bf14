// A fault campaign: random programs with random schedules of events, on the real executor with the simulated
// robot, on virtual time. Safety rules are checked afterwards. `run` runs many schedules in several processes
// and shrinks those that fail.

#include "campaign/world.h"
#include "support/text.h"

#include <QCommandLineParser>
#include <QDir>
#include <QTemporaryDir>

#include <cstdio>

namespace {

void print(const QString& text) {
    std::printf("%s\n", qPrintable(text));
    std::fflush(stdout);
}

/// Returns whether no rule was broken; otherwise prints all events.
bool report(const std::vector<campaign::Event>& events) {
    const auto broken = campaign::check(events);
    if (!broken.empty()) {
        print("broken: " + broken.begin()->second);
    }
    for (std::size_t i = 0; i < events.size() && !broken.empty(); ++i) {
        print(events[i].toText());
        const auto [from, to] = broken.equal_range(i);
        std::for_each(from, to, [](const auto& finding) { print("!!!! " + finding.second); });
    }
    return broken.empty();
}

/// Titles and scenarios: of the files given as arguments, else of the seeds.
QVector<QPair<QString, QJsonObject>> scenarios(const QCommandLineParser& parser) {
    QVector<QPair<QString, QJsonObject>> all;
    for (const QString& path : parser.positionalArguments()) {
        all.append({path, QJsonDocument::fromJson(test::contentOf(path)).object()});
    }
    quint64 seed = parser.value("seed").toULongLong();
    for (int left = all.isEmpty() ? parser.value("count").toInt() : 0; left > 0; --left, ++seed) {
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
                       {"draw", "Print the scenario instead of running it."}});
    parser.addHelpOption();
    parser.process(application);
    const auto all = scenarios(parser);
    if (parser.isSet("draw")) {
        print(QJsonDocument(all.value(0).second).toJson(QJsonDocument::Compact));
        return 0;
    }
    const QTemporaryDir folder;
    QDir::setCurrent(folder.path());  // without settings files
    campaign::World world;
    int broken = 0;
    for (const auto& [title, scenario] : all) {
        print(title);
        broken += report(campaign::runSchedule(world, scenario, report)) ? 0 : 1;
    }
    print(QString("%1 of %2 schedules broke a rule").arg(broken).arg(all.size()));
    return broken == 0 && !all.isEmpty() ? 0 : 1;
}
