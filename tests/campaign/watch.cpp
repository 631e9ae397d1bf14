// The process that watches: it runs no schedule itself.

#include "campaign/casekeeper.h"
#include "campaign/options.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>
#include <cstdlib>

namespace campaign {

namespace {

void print(const QString& text) {
    std::printf("%s\n", qPrintable(text));
    std::fflush(stdout);
}

/// The first finding in full, as a process that runs this seed alone tells it.
void showInFull(quint64 seed, int limitMs) {
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--seed"), QString::number(seed),
                                                            QStringLiteral("--count"), QStringLiteral("1")});
    if (!process.waitForFinished(limitMs)) {
        process.kill();
        process.waitForFinished();
    }
}

void keepAll(const QList<Finding>& findings, const Options& options) {
    CaseKeeper keeper(options.keep, options.limitMs);
    for (const Finding& finding : findings) {
        print(QStringLiteral("%1: %2").arg(finding.seed).arg(keeper.keep(finding)));
    }
}

}  // namespace

QString onceMore(quint64 seed) {
    return QStringLiteral("Once more, with every event: campaign --seed %1 --count 1 --verbose").arg(seed);
}

int watch(const Options& options) {
    QElapsedTimer wall;
    wall.start();
    Supervisor supervisor(options.seeds, {options.jobs, options.limitMs, options.keepGoing, options.twice});
    QObject::connect(&supervisor, &Supervisor::found, &supervisor, [](quint64 seed, const QString& words) {
        print(QStringLiteral("%1: %2").arg(seed).arg(words));
    });
    supervisor.run();
    const QList<Finding> findings = supervisor.findings();
    const qint64 wallMs = wall.elapsed();
    if (!options.keep.isEmpty()) {
        keepAll(findings, options);
    }
    if (!options.keepGoing && !findings.isEmpty()) {
        showInFull(findings.first().seed, options.limitMs);
        print(onceMore(findings.first().seed));
    }
    if (options.report) {
        print(supervisor.statistics().toMarkdown());
    }
    print(QStringLiteral(
              "seeds %1 to %2: %3 of %4 schedules broke an invariant; %5 min of virtual time in %6 s, "
              "%7 at a time")
              .arg(options.seeds.first)
              .arg(options.seeds.first + static_cast<quint64>(options.seeds.count) - 1)
              .arg(findings.size())
              .arg(supervisor.done())
              .arg(supervisor.statistics().count(QStringLiteral("totals"), QStringLiteral("virtual ms")) /
                   60000)
              .arg(static_cast<double>(wallMs) / 1000.0, 0, 'f', 1)
              .arg(options.jobs));
    return findings.isEmpty() ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace campaign
