#include "conform/check.h"

#include <QStringList>

namespace conform {

namespace {

constexpr double stepMm = 10;

QString ms(double value) {
    return QStringLiteral("%1 ms").arg(value, 0, 'f', 1);
}

/// Orders a zigzag of lines and releases it.
void zigzag(Bench* bench, int count, double zoneMm = 0) {
    for (int i = 1; i <= count; ++i) {
        bench->line(stepMm * (i % 2), stepMm * (i % 4 / 2), 0, 100, zoneMm);
    }
    bench->enough();
}

Outcome isOneEach(const Subject& subject) {
    constexpr int count = 5;
    Bench* const bench = subject.bench;
    zigzag(bench, count);
    bench->awaitResults(count, 10000);
    bench->wait(bench->tolerance().quietMs);
    const int came = int(bench->results().size());
    return came == count ? passed()
                         : failed(QStringLiteral("%1 motions, %2 results: %3")
                                      .arg(count)
                                      .arg(came)
                                      .arg(bench->resultText()));
}

Outcome isAtItsCommand(const Subject& subject) {
    Bench* const bench = subject.bench;
    bench->line(stepMm, 0);
    bench->joint(1);
    bench->arc({stepMm, stepMm, 0}, {2 * stepMm, 0, 0});
    bench->line(0, 0);
    bench->enough();
    bench->awaitResults(4);
    const QStringList expected = {QStringLiteral("move.l"), QStringLiteral("move.j"),
                                  QStringLiteral("move.c"), QStringLiteral("move.l")};
    QStringList seen;
    for (const Event& result : bench->results()) {
        seen << result.name;
    }
    return seen == expected ? passed()
                            : failed(QStringLiteral("ordered %1; results of %2")
                                         .arg(expected.join(QStringLiteral(", ")), bench->resultText()));
}

Outcome isApart(const Subject& subject) {
    constexpr int count = 8;
    Bench* const bench = subject.bench;
    zigzag(bench, count);
    bench->awaitResults(count);
    const std::vector<Event> results = bench->results();
    for (size_t i = 1; i < results.size(); ++i) {
        if (results[i].pass == results[i - 1].pass) {
            return failed(
                QStringLiteral("results %1 and %2 in one pass of the event loop").arg(i).arg(i + 1));
        }
    }
    return int(results.size()) >= count ? passed() : failed(bench->resultText());
}

Outcome isNotEarly(const Subject& subject) {
    Bench* const bench = subject.bench;
    bench->line(stepMm, 0);
    bench->line(0, 0);
    bench->wait(bench->tolerance().quietMs / 2);
    if (!bench->results().empty() || distanceMm(bench->posture().pose, bench->start().pose) > 0.1) {
        return failed(QStringLiteral("before move.opr.enough: results %1, moved %2 mm")
                          .arg(bench->resultText())
                          .arg(distanceMm(bench->posture().pose, bench->start().pose)));
    }
    bench->enough();
    bench->awaitResults(2);
    for (const Event& result : bench->results()) {
        if (result.inCall) {
            return failed(QStringLiteral("a result inside a command"));
        }
    }
    return bench->results().size() == 2 ? passed() : failed(bench->resultText());
}

/// Each result at an exact target: the posture that is shown then is the target.
Outcome isPostureFirst(const Subject& subject) {
    constexpr int count = 6;
    Bench* const bench = subject.bench;
    zigzag(bench, count);
    bench->awaitResults(count);
    const std::vector<Event> results = bench->results();
    double worst = 0;
    for (size_t i = 0; i < results.size() && i < count; ++i) {
        const int n = int(i) + 1;
        const Pose target = bench->target(stepMm * (n % 2), stepMm * (n % 4 / 2));
        worst = std::max(worst, distanceMm(results[i].posture.pose, target));
    }
    const QString text =
        QStringLiteral("at a result the posture was up to %1 mm from the target").arg(worst, 0, 'f', 3);
    return worst <= bench->tolerance().placeMm && results.size() >= count ? passed(text) : failed(text);
}

Outcome isStateRight(const Subject& subject) {
    Bench* const bench = subject.bench;
    zigzag(bench, 3);
    const QString atOnce = bench->state();
    bench->awaitResults(3);
    bench->wait(bench->tolerance().quietMs / 2);
    if (atOnce != QLatin1String("moving")) {
        return failed(QStringLiteral("behind move.opr.enough the state is \"%1\"").arg(atOnce));
    }
    const std::vector<Event> results = bench->results();
    for (size_t i = 0; i < results.size(); ++i) {
        const bool last = i + 1 == results.size();
        if ((results[i].state == QLatin1String("idle")) != last) {
            return failed(QStringLiteral("at result %1 of %2 the state is \"%3\"")
                              .arg(i + 1)
                              .arg(results.size())
                              .arg(results[i].state));
        }
    }
    const int changes = int(bench->of(Event::Kind::State).size());
    return results.size() == 3 && changes == 2
               ? passed()
               : failed(QStringLiteral("the state changed %1 times, results %2")
                            .arg(changes)
                            .arg(bench->resultText()));
}

Outcome areManyCounted(const Subject& subject) {
    constexpr int count = 200;
    Bench* const bench = subject.bench;
    for (int i = 1; i <= count; ++i) {
        bench->line(0.3 * (i % 100), 0.3 * i / 100, 0, 100, 0.2);
    }
    bench->enough();
    bench->awaitResults(count, 60000);
    const int came = int(bench->results().size());
    return came == count ? passed() : failed(QStringLiteral("%1 of %2 results").arg(came).arg(count));
}

/// Released while the first moves: behind it, from standstill, without blending.
Outcome areBatchesInOrder(const Subject& subject) {
    Bench* const bench = subject.bench;
    bench->line(40, 0, 0, 100, 10);
    bench->enough();
    bench->wait(100);
    bench->line(40, 40, 0, 100);
    bench->enough();
    bench->awaitResults(2);
    double nearest = 1e9;
    for (const Bench::Sample& sample : bench->samples()) {
        nearest = std::min(nearest, distanceMm(sample.posture.pose, bench->target(40, 0)));
    }
    const QString text = QStringLiteral("passed the end of the first batch in %1 mm, results %2")
                             .arg(nearest, 0, 'f', 2)
                             .arg(bench->resultText());
    const bool isEnd = distanceMm(bench->posture().pose, bench->target(40, 40)) <= bench->tolerance().placeMm;
    return nearest <= bench->tolerance().pathMm && isEnd && bench->results().size() == 2 ? passed(text)
                                                                                         : failed(text);
}

/// The motions before one that cannot be made are carried out, it has its code, and those behind it are
/// dropped.
Outcome isFailureTold(const Subject& subject, const std::function<void(Bench*)>& orderBad, int code) {
    Bench* const bench = subject.bench;
    bench->line(20, 0);
    orderBad(bench);
    bench->line(20, 20);
    bench->enough();
    bench->awaitResults(2);
    bench->wait(bench->tolerance().quietMs);
    const std::vector<Event> results = bench->results();
    const double missed = distanceMm(bench->posture().pose, bench->target(20, 0));
    const QString text = QStringLiteral("results %1; %2 mm from the last target before it")
                             .arg(bench->resultText())
                             .arg(missed, 0, 'f', 2);
    const bool areCodes =
        results.size() == 2 && results[0].value.toInt() == 0 && results[1].value.toInt() == code;
    return areCodes && missed <= bench->tolerance().placeMm ? passed(text) : failed(text);
}

Outcome isReachTold(const Subject& subject) {
    return isFailureTold(
        subject, [](Bench* bench) { bench->line(9000, 0); }, bridge::OutOfReach);
}

Outcome isCircleTold(const Subject& subject) {
    return isFailureTold(
        subject,
        [](Bench* bench) {
            bench->arc({30, 0, 0}, {40, 0, 0});
        },
        bridge::NoCircle);
}

Outcome isSpeedTold(const Subject& subject) {
    return isFailureTold(
        subject, [](Bench* bench) { bench->line(20, 10, 0, 0); }, bridge::NoSpeed);
}

Outcome isTargetTold(const Subject& subject) {
    return isFailureTold(
        subject,
        [](Bench* bench) {
            bench->command("move.l", {{"traj", QJsonObject{{"speed", 0.1}}}});
        },
        bridge::NoTarget);
}

Outcome isStillReady(const Subject& subject) {
    Bench* const bench = subject.bench;
    bench->line(0, 0);
    bench->enough();
    const double began = bench->nowMs();
    bench->awaitResults(1, 5000);
    return bench->results().size() == 1 && bench->state() == QLatin1String("idle")
               ? passed(QStringLiteral("after %1").arg(ms(bench->results().front().ms - began)))
               : failed(QStringLiteral("results %1, state %2").arg(bench->resultText(), bench->state()));
}

}  // namespace

std::vector<Check> resultChecks() {
    return {
        {"one-result", "each motion of a batch has one result", isOneEach},
        {"own-command", "a result stands at the node of its command, in the order of the motions",
         isAtItsCommand},
        {"apart", "no two results come in one pass of the event loop", isApart},
        {"not-early", "nothing moves and no result comes before move.opr.enough, none inside a command",
         isNotEarly},
        {"posture-first", "the posture at a result is that of the motion's end", isPostureFirst},
        {"state", "\"moving\" from move.opr.enough on, \"idle\" just before the last result", isStateRight},
        {"already-there", "a motion without any way has its result, too", isStillReady},
        {"many", "200 short motions have 200 results", areManyCounted},
        {"batches", "a batch that is released in a motion follows it without blending", areBatchesInOrder},
        {"out-of-reach", "a target out of reach: -1, the motions before are made, those behind dropped",
         isReachTold},
        {"no-circle", "three points on a line: -3, likewise", isCircleTold},
        {"no-speed", "a speed of 0: -5, likewise", isSpeedTold},
        {"no-target", "a missing target: -6, likewise", isTargetTold},
    };
}

}  // namespace conform
