#include "campaign/supervisor.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdio>

namespace campaign {

namespace {

constexpr int chunkSize = 250;

QStringList argumentsFor(const Range& seeds, bool twice) {
    QStringList arguments{QStringLiteral("--worker"), QStringLiteral("--seed"), QString::number(seeds.first),
                          QStringLiteral("--count"), QString::number(seeds.count)};
    if (twice) {
        arguments << QStringLiteral("--twice");
    }
    return arguments;
}

}  // namespace

Supervisor::Supervisor(const Range& seeds, const Options& options) : options_(options) {
    for (int i = 0; i < seeds.count; i += chunkSize) {
        waiting_.append(
            {{seeds.first + static_cast<quint64>(i), std::min(chunkSize, seeds.count - i)}, false});
    }
}

void Supervisor::run() {
    while (!waiting_.isEmpty() || !running_.isEmpty()) {
        while (!waiting_.isEmpty() && running_.size() < options_.jobs) {
            startNext();
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        if (!findings_.isEmpty() && !options_.keepGoing) {
            waiting_.clear();
            qDeleteAll(std::exchange(running_, {}));
        }
    }
}

void Supervisor::startNext() {
    const Chunk chunk = waiting_.takeFirst();
    auto* const child = new ChildProcess(argumentsFor(chunk.seeds, options_.twice), options_.limitMs, this);
    running_.append(child);
    connect(child, &ChildProcess::scheduleOver, this,
            [this, chunk](quint64 seed, const QStringList& broken, const QJsonObject& statistics) {
                if (!chunk.counted) {
                    ++done_;
                    statistics_.add(statistics);
                    add({seed, broken});
                }
            });
    connect(child, &ChildProcess::over, this, [this, child, chunk] { onOver(child, chunk); });
    child->start();
}

void Supervisor::onOver(ChildProcess* child, const Chunk& chunk) {
    const Range seeds = chunk.seeds;
    const int ended = std::min(child->ended(), seeds.count);
    if (!child->lastWords().isEmpty() || ended < seeds.count) {
        std::fputs(child->errors().constData(), stderr);
    }
    if (ended < seeds.count) {
        // What is behind the schedule that the process did not survive. One that does not even begin is
        // passed over too, or there would be no end.
        const int from = std::max(ended, 1);
        if (ended == 0) {
            add({seeds.first, {QStringLiteral("the process did not begin: ") + child->lastWords()}});
        }
        if (from < seeds.count) {
            waiting_.prepend({{seeds.first + static_cast<quint64>(from), seeds.count - from}, chunk.counted});
        }
    } else if (!child->lastWords().isEmpty() && ended == 1) {
        add({seeds.first, {child->lastWords()}});
    } else if (!child->lastWords().isEmpty()) {
        const int half = seeds.count / 2;
        waiting_.prepend({{seeds.first + static_cast<quint64>(half), seeds.count - half}, true});
        waiting_.prepend({{seeds.first, half}, true});
    }
    running_.removeOne(child);
    child->deleteLater();
}

void Supervisor::add(const Finding& finding) {
    if (!finding.broken.isEmpty() && !findings_.contains(finding.seed)) {
        findings_.insert(finding.seed, finding);
        emit found(finding.seed, finding.broken.first());
    }
}

}  // namespace campaign
