#include "conform/check.h"

#include <QtMath>

#include <algorithm>
#include <cmath>

namespace conform {

namespace {

constexpr double speedMmPerS = 100;
/// mm/s²: an arm that brakes with less runs on for longer than a weld's end may bear.
constexpr double leastBraking = 500;

QString onOff(bool on) {
    return on ? QStringLiteral("on") : QStringLiteral("off");
}

/// Begins a long motion and waits until it is under way.
bool beginLong(Bench* bench) {
    bench->line(60, 0, 0, speedMmPerS);
    bench->line(60, 60, 0, speedMmPerS);
    bench->enough();
    return bench->waitFor([bench] { return distanceMm(bench->posture().pose, bench->start().pose) > 20; },
                          5000);
}

/// After an order that must stop the arm: no result, a standstill in a bearable way.
Outcome standsWithoutResult(Bench* bench, const Pose& where) {
    const double began = bench->nowMs();
    const bool isIdle = bench->awaitIdle(3000);
    const double took = bench->nowMs() - began;
    const Pose stand = bench->posture().pose;
    bench->wait(bench->tolerance().quietMs);
    const double way = distanceMm(where, stand);
    const double creep = distanceMm(stand, bench->posture().pose);
    const QString text = QStringLiteral("idle after %1 ms, %2 mm further, results %3")
                             .arg(took, 0, 'f', 0)
                             .arg(way, 0, 'f', 2)
                             .arg(bench->resultText());
    const double allowed = speedMmPerS * speedMmPerS / (2 * leastBraking) + speedMmPerS * 0.1;
    const bool stands = isIdle && way <= allowed && creep < bench->tolerance().placeMm;
    return stands && bench->results().empty() ? passed(text) : failed(text);
}

/// Whether motions have their results again.
Outcome movesAgain(Bench* bench, const Outcome& before) {
    if (before.kind != Outcome::Kind::Pass) {
        return before;
    }
    bench->forget();
    bench->line(10, 10);
    bench->line(0, 0);
    bench->enough();
    bench->awaitResults(2);
    return bench->results().size() == 2 ? before
                                        : failed(QStringLiteral("afterwards %1").arg(bench->resultText()));
}

Outcome stops(const Subject& subject) {
    Bench* const bench = subject.bench;
    if (!beginLong(bench)) {
        return failed(QStringLiteral("the arm did not begin to move"));
    }
    const Pose where = bench->posture().pose;
    bench->stop();
    return movesAgain(bench, standsWithoutResult(bench, where));
}

Outcome resets(const Subject& subject) {
    Bench* const bench = subject.bench;
    bench->line(30, 0);
    bench->command("move.reset", {});
    bench->enough();
    bench->wait(bench->tolerance().quietMs);
    const double moved = distanceMm(bench->posture().pose, bench->start().pose);
    if (!bench->results().empty() || moved > 0.1 || bench->state() != QLatin1String("idle")) {
        return failed(QStringLiteral("a motion before move.reset: results %1, moved %2 mm, state %3")
                          .arg(bench->resultText())
                          .arg(moved)
                          .arg(bench->state()));
    }
    return movesAgain(bench, passed());
}

/// A new batch while the arm brakes.
Outcome goesOnWhileBraking(const Subject& subject) {
    Bench* const bench = subject.bench;
    if (!beginLong(bench)) {
        return failed(QStringLiteral("the arm did not begin to move"));
    }
    bench->stop();
    bench->line(0, 0);
    bench->enough();
    bench->awaitResults(1);
    bench->wait(bench->tolerance().quietMs);
    const double missed = distanceMm(bench->posture().pose, bench->start().pose);
    const QString text =
        QStringLiteral("results %1, %2 mm from the target").arg(bench->resultText()).arg(missed, 0, 'f', 2);
    return bench->results().size() == 1 && missed <= bench->tolerance().placeMm ? passed(text) : failed(text);
}

bool switchPower(Bench* bench, bool on) {
    bench->adapter()->setPower(on);
    return bench->waitFor([&] { return (bench->power() == QLatin1String("on")) == on; }, 5000);
}

Outcome losesPower(const Subject& subject) {
    Bench* const bench = subject.bench;
    if (!bench->adapter()->abilities().power) {
        return skipped(QStringLiteral("the drives cannot be switched from here"));
    }
    if (!beginLong(bench)) {
        return failed(QStringLiteral("the arm did not begin to move"));
    }
    const Pose where = bench->posture().pose;
    if (!switchPower(bench, false)) {
        return failed(QStringLiteral("power is \"%1\" after it was switched off").arg(bench->power()));
    }
    const Outcome stand = standsWithoutResult(bench, where);
    if (!switchPower(bench, true)) {
        return failed(QStringLiteral("power does not come on again"));
    }
    return movesAgain(bench, stand);
}

Outcome refusesWithoutPower(const Subject& subject) {
    Bench* const bench = subject.bench;
    if (!bench->adapter()->abilities().power) {
        return skipped(QStringLiteral("the drives cannot be switched from here"));
    }
    if (!switchPower(bench, false)) {
        return failed(QStringLiteral("power stays %1").arg(onOff(true)));
    }
    bench->forget();
    bench->line(10, 0);
    bench->line(0, 0);
    bench->enough();
    bench->waitFor([bench] { return !bench->results().empty(); }, 5000);
    bench->wait(bench->tolerance().quietMs);
    const std::vector<Event> results = bench->results();
    const bool isOne = results.size() == 1 && results[0].value.toInt() == bridge::DriveOff;
    const QString text = QStringLiteral("results %1").arg(bench->resultText());
    if (!switchPower(bench, true)) {
        return failed(QStringLiteral("power does not come on again"));
    }
    return isOne ? passed(text) : failed(text);
}

Outcome jogs(const Subject& subject) {
    Bench* const bench = subject.bench;
    if (!bench->adapter()->abilities().jog) {
        return skipped(QStringLiteral("it cannot be jogged from here"));
    }
    const bridge::JogMove move{bridge::JogFrame::Base, int(bridge::JogAxis::X), 1, 0.02};
    if (bench->adapter()->startJog(move) != bridge::JogAnswer::Moves) {
        return failed(QStringLiteral("the jog was refused"));
    }
    bench->waitFor([bench] { return distanceMm(bench->posture().pose, bench->start().pose) > 5; }, 5000);
    const bool isMoving = bench->state() == QLatin1String("moving");
    bench->adapter()->stopJog();
    const bool isIdle = bench->awaitIdle(3000);
    const double x = (bench->posture().pose.trans[0] - bench->start().pose.trans[0]) * 1000;
    const QString text =
        QStringLiteral("%1 mm along x, results %2").arg(x, 0, 'f', 2).arg(bench->resultText());
    return isMoving && isIdle && x > 4 && x < 15 && bench->results().empty() ? passed(text) : failed(text);
}

/// Steps along an axis of the base, about one of the tool and of a joint; each is 10 mm or some degrees.
Outcome jogsInSteps(const Subject& subject) {
    Bench* const bench = subject.bench;
    if (!bench->adapter()->abilities().jog) {
        return skipped(QStringLiteral("it cannot be jogged from here"));
    }
    using bridge::JogAxis;
    using bridge::JogFrame;
    const bridge::JogMove steps[] = {{JogFrame::Base, int(JogAxis::Y), 0.01, 0.02},
                                     {JogFrame::Tool, int(JogAxis::Rz), 0.1, 0.2},
                                     {JogFrame::Joint, 0, -0.02, 0.1}};
    QStringList seen;
    bool areRight = true;
    for (const bridge::JogMove& step : steps) {
        const Posture from = bench->posture();
        if (bench->adapter()->jog(step) != bridge::JogAnswer::Moves) {
            return failed(QStringLiteral("a step was refused"));
        }
        bench->waitFor([bench] { return bench->state() == QLatin1String("moving"); }, 2000);
        const bool isIdle = bench->awaitIdle(5000);
        const Posture to = bench->posture();
        const double wantedMm = step.frame == JogFrame::Base ? step.distance * 1000 : 0;
        const double wantedDeg = step.frame == JogFrame::Tool ? qRadiansToDegrees(step.distance) : 0;
        const double mm = distanceMm(from.pose, to.pose), deg = angleDeg(from.pose, to.pose);
        const double joint = to.joints.at(0) - from.joints.at(0);
        const bool isThere =
            step.frame == JogFrame::Joint
                ? std::abs(joint - step.distance) < qDegreesToRadians(bench->tolerance().turnDeg)
                : std::abs(mm - wantedMm) <= bench->tolerance().placeMm &&
                      std::abs(deg - wantedDeg) <= bench->tolerance().turnDeg;
        areRight = areRight && isIdle && isThere;
        seen << QStringLiteral("%1 mm, %2 deg").arg(mm, 0, 'f', 2).arg(deg, 0, 'f', 2);
    }
    const QString text = seen.join(QStringLiteral("; ")) + QStringLiteral("; results ") + bench->resultText();
    return areRight && bench->results().empty() ? passed(text) : failed(text);
}

Outcome switchesMode(const Subject& subject) {
    Bench* const bench = subject.bench;
    if (!bench->adapter()->abilities().mode) {
        return bench->mode() == QLatin1String("auto") || bench->mode() == QLatin1String("manual")
                   ? skipped(
                         QStringLiteral("the mode cannot be set from here; it is \"%1\"").arg(bench->mode()))
                   : failed(QStringLiteral("the mode is \"%1\"").arg(bench->mode()));
    }
    for (const bridge::Mode mode : {bridge::Mode::Manual, bridge::Mode::Auto}) {
        const QString word = mode == bridge::Mode::Auto ? QStringLiteral("auto") : QStringLiteral("manual");
        bench->adapter()->setMode(mode);
        if (!bench->waitFor([&] { return bench->mode() == word; }, 3000)) {
            return failed(QStringLiteral("the mode is \"%1\" instead of \"%2\"").arg(bench->mode(), word));
        }
    }
    return passed();
}

}  // namespace

std::vector<Check> stopChecks() {
    return {
        {"stop", "move.stop brakes the arm; a stopped motion has no result, also later", stops},
        {"stop-and-go", "a batch that is ordered while the arm brakes is made", goesOnWhileBraking},
        {"reset", "move.reset forgets the motions that wait", resets},
        {"jog", "a jog moves the tool, ends with the hand and has no result", jogs},
        {"jog-step", "a jog step ends where it should, by axis, tool or joint", jogsInSteps},
        {"mode", "the mode is told", switchesMode},
        {"power-loss", "a loss of power brakes the arm; its motions have no result", losesPower},
        {"drive-off", "motions without power: -4 for the first, none for the others", refusesWithoutPower},
    };
}

}  // namespace conform
