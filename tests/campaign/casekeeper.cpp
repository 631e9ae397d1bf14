#include "campaign/casekeeper.h"

#include "campaign/casefolder.h"
#include "campaign/shrinker.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QRegularExpression>

namespace campaign {

namespace {

constexpr int trialLimit = 5000;
constexpr int budgetMs = 300000;

int countIn(const QJsonObject& scenario, const char* list) {
    return scenario[QLatin1String(list)].toArray().size();
}

QString sizeOf(const QJsonObject& scenario) {
    return QStringLiteral("%1 actions, %2 lines")
        .arg(countIn(scenario, "actions"))
        .arg(countIn(scenario, "program"));
}

}  // namespace

QString signatureOf(const QStringList& broken) {
    static const QRegularExpression number(QStringLiteral("-?\\d"));
    const QString words = broken.value(0);
    return words.left(words.indexOf(number)).trimmed();
}

CaseKeeper::CaseKeeper(const QString& folder, int limitMs)
    : folder_(folder),
      limitMs_(limitMs),
      trials_({QStringLiteral("--worker"), QStringLiteral("--replay"), QStringLiteral("-")}, limitMs) {}

QStringList CaseKeeper::tried(const QJsonObject& scenario) {
    writeCase(scratch_.path(), scenario, {}, {});
    return trials_.ask(scratch_.path());
}

QStringList CaseKeeper::triedAlone(const QJsonObject& scenario) const {
    writeCase(scratch_.path(), scenario, {}, {});
    ChildProcess child({QStringLiteral("--worker"), QStringLiteral("--replay"), scratch_.path()}, limitMs_);
    QStringList result;
    QObject::connect(&child, &ChildProcess::scheduleOver, &child,
                     [&result](quint64, const QStringList& broken) { result = broken; });
    child.runToEnd();
    // A file that is no schedule ends the process before anything begins.
    if (result.isEmpty() && child.ended() > 0 && !child.lastWords().isEmpty()) {
        result << child.lastWords();
    }
    return result;
}

QStringList CaseKeeper::eventsOf(const QString& caseFolder) const {
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(),
                  {QStringLiteral("--verbose"), QStringLiteral("--replay"), caseFolder});
    if (!process.waitForFinished(limitMs_)) {
        process.kill();
        process.waitForFinished();
    }
    static const QRegularExpression event(QStringLiteral("^ *\\d+  "));
    return QString::fromUtf8(process.readAllStandardOutput()).split(QLatin1Char('\n')).filter(event);
}

QString CaseKeeper::keep(const Finding& finding) {
    const QJsonObject drawn = drawScenario(finding.seed).toJson();
    const QString signature = signatureOf(finding.broken);
    const QString path = QDir(folder_).filePath(QStringLiteral("seed-%1").arg(finding.seed));
    QElapsedTimer wall;
    wall.start();
    QStringList broken = finding.broken;
    // What is told when a process ends (a leak) needs one for each trial.
    const bool alone = signature.startsWith(QLatin1String("the process ended"));
    const auto fails = [&](const QJsonObject& candidate) {
        QStringList words;
        if (wall.elapsed() < budgetMs) {
            words = alone ? triedAlone(candidate) : tried(candidate);
        }
        const bool same = !words.isEmpty() && signatureOf(words) == signature;
        broken = same ? words : broken;
        return same;
    };
    QString words;
    QJsonObject shrunk = drawn;
    if (fails(drawn)) {
        Shrinker shrinker(fails, trialLimit);
        shrunk = shrinker.shrunk(drawn);
        words = QStringLiteral("shrunk from %1 to %2 in %3 trials (%4 s)")
                    .arg(sizeOf(drawn), sizeOf(shrunk))
                    .arg(shrinker.trials())
                    .arg(wall.elapsed() / 1000);
    } else {
        words = QStringLiteral("fails together with the seeds before it only: not shrunk");
    }
    if (!writeCase(path, shrunk, broken, {}) || !writeCase(path, shrunk, broken, eventsOf(path))) {
        return QStringLiteral("cannot be written to %1").arg(path);
    }
    return QStringLiteral("%1; once more: campaign --replay %2").arg(words, path);
}

}  // namespace campaign
