// A fault campaign: random programs and random schedules of everything that can come in between, against
// the real executor on the simulated cell, on virtual time. The rules say what has to hold. `run` runs
// many, on several processes, and shrinks what fails.

#include "campaign/draw.h"
#include "campaign/schedule.h"
#include "campaign/world.h"
#include "support/text.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>

#include <cstdio>

namespace campaign {
QStringList checkRules();
}

namespace {

using namespace campaign;

void print(const QString& text) {
    std::printf("%s\n", qPrintable(text));
    std::fflush(stdout);
}

class Runner {
public:
    void run(const QString& title, const QJsonObject& scenario) {
        print(title);
        const auto tell = [this, &scenario](const Outcome& outcome) {
            ++count;
            virtualMs += outcome.virtualMs;
            if (!outcome.broken.isEmpty()) {
                ++broken;
                print("broken: " + outcome.broken.first());
                print("scenario: " + QJsonDocument(scenario).toJson(QJsonDocument::Compact));
                print(outcome.diary.join('\n'));
            }
        };
        tell(runSchedule(world_, scenario, tell));
    }

    int count = 0, broken = 0;
    qint64 virtualMs = 0;

private:
    World world_;
};

}  // namespace

int main(int argc, char** argv) {
    sim::VirtualTime::install();
    const QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOptions({{"seed", "The first schedule's seed.", "number", "1"},
                       {"count", "How many schedules.", "number", "1"},
                       {"replay", "A scenario, or each one of a folder, instead of seeds.", "path"},
                       {"self-check", "Instead, whether each rule can be broken."}});
    parser.addHelpOption();
    parser.process(application);
    if (parser.isSet("self-check")) {
        const QStringList missed = checkRules();
        print(missed.isEmpty() ? "every rule can be broken" : missed.join('\n'));
        return missed.isEmpty() ? 0 : 1;
    }
    Runner runner;
    const QString path = parser.value("replay");
    QStringList files{path};
    for (const QString& name : QDir(path).entryList({"*.json"})) {
        files << path + '/' + name;
    }
    for (const QString& file : path.isEmpty() ? QStringList() : files) {
        const QJsonDocument document = QJsonDocument::fromJson(test::contentOf(file));
        if (document.isObject()) {
            runner.run(file, document.object());
        }
    }
    const quint64 seed = parser.value("seed").toULongLong();
    const int count = path.isEmpty() ? parser.value("count").toInt() : 0;
    for (int i = 0; i < count; ++i) {
        const quint64 next = seed + quint64(i);
        runner.run(QString("seed %1").arg(next), drawScenario(next));
    }
    print(QString("%1 of %2 schedules broke a rule; %3 min of virtual time")
              .arg(runner.broken)
              .arg(runner.count)
              .arg(runner.virtualMs / 60000));
    return runner.broken == 0 && runner.count > 0 ? 0 : 1;
}
