#include "conform/check.h"

#include <QJsonArray>

#include <algorithm>
#include <cmath>

namespace conform {

namespace {

using Point = std::array<double, 3>;

/// mm from the start.
Point placeOf(const Bench* bench, const Posture& posture) {
    Point place;
    for (size_t i = 0; i < place.size(); ++i) {
        place[i] = (posture.pose.trans[i] - bench->start().pose.trans[i]) * 1000;
    }
    return place;
}

Outcome within(const QString& what, double value, double most) {
    const QString text = QStringLiteral("%1 %2 mm").arg(what).arg(value, 0, 'f', 3);
    return value <= most ? passed(text) : failed(text);
}

bool endsWell(const Bench* bench, int count) {
    const std::vector<Event> results = bench->results();
    return int(results.size()) == count &&
           std::all_of(results.begin(), results.end(), [](const Event& e) { return e.value.toInt() == 0; });
}

Outcome endsAtTarget(const Subject& subject) {
    Bench* const bench = subject.bench;
    bench->line(30, 20, 10);
    bench->enough();
    bench->awaitResults(1);
    if (!endsWell(bench, 1)) {
        return failed(QStringLiteral("a motion to a place in reach: result %1").arg(bench->resultText()));
    }
    return within(QStringLiteral("missed by"), distanceMm(bench->posture().pose, bench->target(30, 20, 10)),
                  bench->tolerance().placeMm);
}

Outcome endsAtJoints(const Subject& subject) {
    Bench* const bench = subject.bench;
    bench->joint(2);
    bench->enough();
    bench->awaitResults(1);
    const Posture end = bench->posture();
    if (!endsWell(bench, 1) || end.joints.size() != bench->start().joints.size()) {
        return failed(
            QStringLiteral("result %1, %2 joint angles").arg(bench->resultText()).arg(end.joints.size()));
    }
    double worst = 0;
    for (size_t i = 0; i < end.joints.size(); ++i) {
        const double asked = bench->start().joints[i] + (i == 0 ? 2 * std::acos(-1) / 180 : 0);
        worst = std::max(worst, std::abs(end.joints[i] - asked) * 180 / std::acos(-1));
    }
    const QString text = QStringLiteral("an axis missed by %1 degrees").arg(worst, 0, 'f', 4);
    return worst <= 0.05 ? passed(text) : failed(text);
}

Outcome isStraight(const Subject& subject) {
    Bench* const bench = subject.bench;
    bench->line(40, 30);
    bench->enough();
    bench->awaitResults(1);
    double worst = 0;
    for (const Bench::Sample& sample : bench->samples()) {
        const Point at = placeOf(bench, sample.posture);
        worst = std::max(worst, std::hypot((at[0] * 30 - at[1] * 40) / 50, at[2]));
    }
    return endsWell(bench, 1)
               ? within(QStringLiteral("beside the line at most"), worst, bench->tolerance().pathMm)
               : failed(bench->resultText());
}

/// A half circle of 20 mm about (20, 0), in the plane y, z.
Outcome isRound(const Subject& subject) {
    Bench* const bench = subject.bench;
    constexpr double radius = 20;
    bench->arc({radius, 0, radius}, {2 * radius, 0, 0}, 50);
    bench->enough();
    bench->awaitResults(1);
    double worst = 0, highest = 0;
    for (const Bench::Sample& sample : bench->samples()) {
        const Point at = placeOf(bench, sample.posture);
        worst = std::max({worst, std::abs(std::hypot(at[0] - radius, at[2]) - radius), std::abs(at[1])});
        highest = std::max(highest, at[2]);
    }
    if (!endsWell(bench, 1) || highest < radius - bench->tolerance().pathMm) {
        return failed(
            QStringLiteral("result %1, rose %2 of %3 mm").arg(bench->resultText()).arg(highest).arg(radius));
    }
    return within(QStringLiteral("beside the arc at most"), worst, bench->tolerance().pathMm);
}

Outcome isTurnRight(const Subject& subject) {
    Bench* const bench = subject.bench;
    bench->line(10, 0, 0, 100, 0, 8);
    bench->enough();
    bench->awaitResults(1);
    const double turned = angleDeg(bench->posture().pose, bench->start().pose);
    const double missed = angleDeg(bench->posture().pose, bench->target(10, 0, 0, 8));
    const QString text =
        QStringLiteral("turned by %1 of 8 degrees, %2 beside").arg(turned, 0, 'f', 3).arg(missed, 0, 'f', 3);
    return endsWell(bench, 1) && missed <= bench->tolerance().turnDeg ? passed(text) : failed(text);
}

/// Between two samples in the middle of a line.
Outcome isSpeedRight(const Subject& subject) {
    constexpr double wayMm = 60, speedMmPerS = 50;
    Bench* const bench = subject.bench;
    bench->line(wayMm, 0, 0, speedMmPerS);
    bench->enough();
    bench->awaitResults(1);
    const Bench::Sample *first = nullptr, *last = nullptr;
    for (const Bench::Sample& sample : bench->samples()) {
        const double x = placeOf(bench, sample.posture)[0];
        if (x > wayMm * 0.2 && x < wayMm * 0.8) {
            first = first ? first : &sample;
            last = &sample;
        }
    }
    if (!first || last->ms - first->ms < 300) {
        return failed(QStringLiteral("too few postures on the way, result %1").arg(bench->resultText()));
    }
    const double speed = distanceMm(first->posture.pose, last->posture.pose) / (last->ms - first->ms) * 1000;
    const QString text = QStringLiteral("%1 mm/s of %2").arg(speed, 0, 'f', 2).arg(speedMmPerS);
    return std::abs(speed / speedMmPerS - 1) <= bench->tolerance().speedRatio ? passed(text) : failed(text);
}

struct Corner {
    double nearestMm = 1e9;  ///< to the corner
    double slowest = 1e9;    ///< mm/s, within 15 mm of it
};

Corner runCorner(Bench* bench, double zoneMm) {
    bench->line(40, 0, 0, 50, zoneMm);
    bench->line(40, 40, 0, 50);
    bench->enough();
    bench->awaitResults(2);
    Corner corner;
    const std::vector<Bench::Sample>& samples = bench->samples();
    for (size_t i = 0; i < samples.size(); ++i) {
        const double away = distanceMm(samples[i].posture.pose, bench->target(40, 0));
        corner.nearestMm = std::min(corner.nearestMm, away);
        if (away > 15 || i < 4) {
            continue;
        }
        const double took = samples[i].ms - samples[i - 4].ms;
        if (took > 0) {
            corner.slowest =
                std::min(corner.slowest,
                         distanceMm(samples[i].posture.pose, samples[i - 4].posture.pose) / took * 1000);
        }
    }
    return corner;
}

Outcome isBlended(const Subject& subject) {
    constexpr double zoneMm = 5;
    Bench* const bench = subject.bench;
    const Corner exact = runCorner(bench, 0);
    const bool isExactWell = endsWell(bench, 2);
    bench->goToStart();
    const Corner round = runCorner(bench, zoneMm);
    const std::vector<Event> results = bench->results();
    const QString text =
        QStringLiteral("zone 0: %1 mm from the corner; zone %2: %3 mm, not slower than %4 mm/s")
            .arg(exact.nearestMm, 0, 'f', 2)
            .arg(zoneMm)
            .arg(round.nearestMm, 0, 'f', 2)
            .arg(round.slowest, 0, 'f', 1);
    const bool isEarly = results.size() == 2 && results[0].ms < results[1].ms;
    const bool isRounded = round.nearestMm > 0.2 && round.nearestMm <= zoneMm && round.slowest > 10;
    return isExactWell && isEarly && exact.nearestMm <= bench->tolerance().pathMm && isRounded ? passed(text)
                                                                                               : failed(text);
}

/// Whether `near` of the posture takes the arm to where its pose is.
Outcome isNearTrue(const Subject& subject) {
    Bench* const bench = subject.bench;
    bench->line(25, 15);
    bench->enough();
    bench->awaitResults(1);
    const Posture taught = bench->posture();
    bench->goToStart();
    QJsonArray point;
    for (const double joint : taught.joints) {
        point.append(joint);
    }
    bench->command("move.j", {{"point", point}, {"traj", QJsonObject{{"speed", 0.1}, {"zone", 0}}}});
    bench->enough();
    bench->awaitResults(1);
    return endsWell(bench, 1)
               ? within(QStringLiteral("move.j to a posture's joints missed its place by"),
                        distanceMm(bench->posture().pose, taught.pose), bench->tolerance().pathMm)
               : failed(bench->resultText());
}

}  // namespace

std::vector<Check> pathChecks() {
    return {
        {"target", "a line ends at its target, with the result 0; lengths are metres", endsAtTarget},
        {"joints", "a joint motion ends at its angles; angles are radians", endsAtJoints},
        {"near", "the joints of a posture are those of its place", isNearTrue},
        {"line", "the tool moves on a straight line", isStraight},
        {"arc", "the tool moves on the arc through the auxiliary point", isRound},
        {"turn", "orientations are R = Rz*Ry*Rx", isTurnRight},
        {"speed", "the tool moves at the speed that was ordered (m/s)", isSpeedRight},
        {"blend", "a corner is exact without a zone, and rounded within one without a stop", isBlended},
    };
}

}  // namespace conform
