// A fault campaign: random programs under random schedules, each on the real package with the simulated robot
// and judged by the rules of docs/safety.md, as `lumo-run --stress` does with a project. Schedules that break
// a rule are shrunk and written to SEED.json in the working directory; `campaign SEED.json` runs them again.

#include "campaign/draw.h"
#include "runner/session.h"
#include "runner/stress/bench.h"
#include "simulator/controller.h"
#include "simulator/time/virtualtime.h"
#include "support/ports.h"
#include "support/text.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QTemporaryDir>

#include <cstdio>

namespace {

using run::stress::Trial;
using run::stress::Verdict;

void print(const QString& text) {
    std::printf("%s\n", qPrintable(text));
    std::fflush(stdout);
}

/// A cell whose ports are all in use, and a project that the trials replace.
run::Options cellIn(const QTemporaryDir& folder) {
    QJsonArray rows;
    for (int port = 0; port < 19; ++port) {
        const char* const kind = port < 6 ? "DI" : port < 15 ? "DO" : "AO";
        rows.append(QJsonObject{{"type", kind}, {"name", test::portNames[port]}, {"enable", true}});
    }
    test::writeFile(folder.filePath("lumo_port.json"), QJsonDocument(rows).toJson());
    test::writeFile(folder.filePath("replaced.json"), "[]");
    run::Options options;
    options.project = folder.filePath("replaced.json");
    options.settings = folder.path();
    options.stress = 1;
    options.rules = options.quiet = options.force = true;
    return options;
}

class Campaign {
public:
    /// `here`: where findings are written.
    Campaign(run::Session* session, const QString& here)
        : bench_(session), inputs_(session->controller()->inputNames()), here_(here) {}

    /// The trials that are kept in files; returns how many broke a rule.
    int runFiles(const QStringList& files) {
        int broken = 0;
        for (const QString& file : files) {
            const Verdict verdict =
                bench_.judge(Trial::from(QJsonDocument::fromJson(test::contentOf(file)).object()));
            print(file +
                  (verdict.isBroken() ? '\n' + verdict.events + verdict.rule + ": " + verdict.text : ""));
            broken += verdict.isBroken() ? 1 : 0;
        }
        return broken;
    }

    int runSeeds(quint64 first, int count) {
        int broken = 0;
        const auto take = [&](int number, const Verdict& verdict) {
            if (verdict.isBroken()) {
                ++broken;
                report(first + quint64(number), verdict);
            }
        };
        bench_.judgeAll(
            count, [&](int number) { return campaign::drawTrial(first + quint64(number), inputs_); }, take);
        return broken;
    }

private:
    void report(quint64 seed, const Verdict& verdict) {
        print(QString("seed %1: %2: %3").arg(seed).arg(verdict.rule, verdict.text));
        const Trial least = bench_.shrunk(campaign::drawTrial(seed, inputs_), verdict, true);
        QJsonObject kept = least.toJson();
        kept["broke"] = verdict.text;
        const QString name = here_ + QString("/%1.json").arg(seed);
        test::writeFile(name, QJsonDocument(kept).toJson());
        print(QString("  %1: %2 entries, %3 lines")
                  .arg(name)
                  .arg(least.scenario.size())
                  .arg(least.program->size()));
    }

    run::stress::Bench bench_;
    QStringList inputs_;
    QString here_;
};

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    sim::VirtualTime::install();
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QCommandLineParser parser;
    parser.addOptions({{"seed", "The first schedule's seed.", "number", "1"},
                       {"count", "How many schedules.", "number", "1000"}});
    parser.addHelpOption();
    parser.addPositionalArgument("FILES", "Kept schedules, instead of seeds.");
    parser.process(application);
    QStringList files;
    for (const QString& file : parser.positionalArguments()) {
        files.append(QFileInfo(file).absoluteFilePath());
    }
    const QTemporaryDir folder;
    const QString here = QDir::currentPath();
    run::Session session(cellIn(folder));
    if (!session.prepare()) {
        return session.status();
    }
    Campaign campaign(&session, here);
    const int count = files.isEmpty() ? parser.value("count").toInt() : files.size();
    const int broken = files.isEmpty() ? campaign.runSeeds(parser.value("seed").toULongLong(), count)
                                       : campaign.runFiles(files);
    print(QString("%1 of %2 schedules broke a rule").arg(broken).arg(count));
    return broken == 0 && count > 0 ? 0 : 1;
}
