#include "runner/stress/stress.h"

#include "mendo/modulemanager.h"
#include "program/words.h"
#include "runner/session.h"
#include "runner/stress/bench.h"
#include "runner/stress/course.h"
#include "simulator/controller.h"
#include "workcell/commandline.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>

#include <limits>

namespace run {

using stress::Bench;
using stress::Course;
using stress::Dice;
using stress::Ground;
using stress::Trial;
using stress::Verdict;

namespace {

constexpr int failed = 1;
constexpr int longestMs = 1000000000;

/// One line for each entry, as scenarios are written by hand.
QByteArray scenarioText(const QJsonArray& scenario) {
    QByteArray text = "[";
    for (const QJsonValue entry : scenario) {
        text += text.size() > 1 ? ",\n  " : "\n  ";
        text += QJsonDocument(entry.toObject()).toJson(QJsonDocument::Compact);
    }
    return text + "\n]\n";
}

/// Words of a command line; those with spaces in quotes.
QString quoted(const QString& word) {
    return word.contains(QLatin1Char(' ')) ? QLatin1Char('"') + word + QLatin1Char('"') : word;
}

/// The options that a schedule was run with, as the caller would type them.
QString optionWords(const Options& options) {
    QString words = QStringLiteral(" --settings ") + quoted(options.settings);
    const auto add = [&words](bool given, const QString& text) {
        words += given ? QLatin1Char(' ') + text : QString();
    };
    add(options.mode != QLatin1String("auto"), QStringLiteral("--mode ") + options.mode);
    add(!options.power, QStringLiteral("--power off"));
    add(!options.weld, QStringLiteral("--weld off"));
    add(options.handWeld, QStringLiteral("--hand-weld on"));
    add(options.overlapMm > 0.0, QStringLiteral("--overlap %1").arg(options.overlapMm));
    add(options.dryPercent.has_value(), QStringLiteral("--dry-run=%1").arg(options.dryPercent.value_or(0.0)));
    add(options.lineGiven, QStringLiteral("--line %1").arg(options.line));
    add(options.once.has_value(), QStringLiteral("--once %1").arg(options.once.value_or(1)));
    add(options.axes != Options().axes, QStringLiteral("--axes %1").arg(options.axes));
    add(options.noWriteMulti, QStringLiteral("--no-write-multi"));
    add(options.latency.isAny(), QStringLiteral("--latency ") + latencyText(options.latency));
    add(options.untilMs != Options().untilMs, QStringLiteral("--until %1").arg(options.untilMs));
    add(options.ackMs != 0, QStringLiteral("--ack %1").arg(options.ackMs));
    return words;
}

/// One call of --stress.
class Stress {
public:
    explicit Stress(const Options& options);
    int run();

private:
    bool runUndisturbed();
    Trial trialOf(int number) const;
    void take(int number, const Verdict& verdict);
    void report(const QString& seed, const Trial& trial, const Verdict& verdict);
    bool write(const QString& name, const QByteArray& text) const;
    void say(const QString& text) const;

    Options options_;
    Session session_;
    std::optional<Bench> bench_;
    QJsonArray project_;
    Ground ground_;
    int untilMs_ = 0;
    int tried_ = 0, broken_ = 0;
    bool written_ = true;
};

Options quietly(Options options) {
    options.rules = true;
    options.quiet = true;
    return options;
}

Stress::Stress(const Options& options) : options_(options), session_(quietly(options)) {}

void Stress::say(const QString& text) const {
    if (!options_.quiet) {
        workcell::print(text + QLatin1Char('\n'));
    }
}

int Stress::run() {
    if (!session_.prepare()) {
        return session_.status();
    }
    bench_.emplace(&session_);
    project_ = session_.project()->content();
    ground_ = Ground::of(project_, QFileInfo(options_.project).fileName(), session_.setCount(),
                         session_.controller()->inputNames());
    if (runUndisturbed()) {
        bench_->judgeAll(
            *options_.stress, [this](int number) { return trialOf(number); },
            [this](int number, const Verdict& verdict) { take(number, verdict); });
    }
    workcell::print(QStringLiteral("%1 of %2 schedules broke a rule\n").arg(broken_).arg(tried_));
    return broken_ == 0 && written_ ? 0 : failed;
}

/// False when the run breaks a rule by itself: its schedules would only tell this again.
bool Stress::runUndisturbed() {
    Trial trial;
    trial.scenario = stress::supplies(ground_.inputs);
    const Verdict verdict = bench_->judge(trial);
    ground_.runMs = verdict.ms;
    constexpr int times = 4;
    constexpr int moreMs = 120000;
    untilMs_ = int(std::min<qint64>({verdict.ms * times + moreMs, longestMs, options_.untilMs}));
    if (verdict.isBroken()) {
        ++tried_;
        report(QStringLiteral("undisturbed"), trial, verdict);
    }
    return !verdict.isBroken();
}

Trial Stress::trialOf(int number) const {
    Dice dice(options_.seed + quint64(number));
    Trial trial;
    trial.scenario = Course(ground_, &dice).draw();
    trial.untilMs = untilMs_;
    return trial;
}

void Stress::take(int number, const Verdict& verdict) {
    ++tried_;
    if (verdict.isBroken()) {
        report(QString::number(options_.seed + quint64(number)), trialOf(number), verdict);
    }
    constexpr int progressEvery = 100;
    if (tried_ % progressEvery == 0 && tried_ < *options_.stress) {
        say(QStringLiteral("%1 of %2 schedules").arg(tried_).arg(*options_.stress));
    }
}

/// Writes the least scenario that breaks the rule with the project as it is, and, where fewer lines do, too,
/// a project of these lines with its scenario.
void Stress::report(const QString& seed, const Trial& trial, const Verdict& verdict) {
    ++broken_;
    workcell::print(QStringLiteral("seed %1: %2 at %3 ms: %4\n")
                        .arg(seed, verdict.rule)
                        .arg(verdict.atMs)
                        .arg(verdict.text));
    const QString base = QFileInfo(options_.project).completeBaseName() + QStringLiteral(".stress-") + seed;
    const QString options = optionWords(options_) + QStringLiteral(" --rules");
    const Trial least = bench_->shrunk(trial, verdict, false);
    const QString scenario = base + QStringLiteral(".scenario.json");
    written_ = write(scenario, scenarioText(least.scenario)) && written_;
    say(QStringLiteral("  %1 entries: lumo-run %2%3 --scenario %4")
            .arg(least.scenario.size())
            .arg(quoted(options_.projectName), options, quoted(QDir(options_.stressOut).filePath(scenario))));
    Trial whole = least;
    whole.program = project_;
    const Trial shorter = bench_->shrunk(whole, verdict, true);
    if (shorter.program->size() == project_.size()) {
        return;
    }
    const QString project = base + QStringLiteral(".short.json");
    const QString shortScenario = base + QStringLiteral(".short.scenario.json");
    written_ = write(project, QJsonDocument(*shorter.program).toJson()) &&
               write(shortScenario, scenarioText(shorter.scenario)) && written_;
    say(QStringLiteral("  %1 lines: lumo-run %2%3 --scenario %4")
            .arg(shorter.program->size())
            .arg(quoted(QDir(options_.stressOut).filePath(project)), options + QStringLiteral(" --force"),
                 quoted(QDir(options_.stressOut).filePath(shortScenario))));
}

bool Stress::write(const QString& name, const QByteArray& text) const {
    const QString path = QDir(options_.stressOut).filePath(name);
    const bool isWritten = mendo::ModuleManager::writeText(path, text);
    if (!isWritten) {
        printError(QStringLiteral("%1 cannot be written").arg(path));
    }
    return isWritten;
}

}  // namespace

int runStress(const Options& options) {
    return Stress(options).run();
}

}  // namespace run
