#include "conform/latency.h"

#include <algorithm>
#include <cmath>

namespace conform {

namespace {

constexpr int patienceMs = 3000;
constexpr double leastMm = 0.02;  // of a movement

Figure commandToMotion(const Subject& subject) {
    Bench* const bench = subject.bench;
    Figure figure{QStringLiteral("command to motion"), {}};
    for (int i = 0; i < subject.repeats; ++i) {
        const Pose before = bench->posture().pose;
        bench->forget();
        bench->line(i % 2 == 0 ? 5 : 0, 0);
        const double ordered = bench->nowMs();
        bench->enough();
        const auto hasMoved = [&] {
            return std::any_of(bench->samples().begin(), bench->samples().end(), [&](const Bench::Sample& s) {
                return distanceMm(s.posture.pose, before) > leastMm;
            });
        };
        if (bench->waitFor(hasMoved, patienceMs)) {
            const auto first = std::find_if(
                bench->samples().begin(), bench->samples().end(),
                [&](const Bench::Sample& s) { return distanceMm(s.posture.pose, before) > leastMm; });
            figure.ms.push_back(first->ms - ordered);
        }
        bench->awaitResults(1);
    }
    return figure;
}

Figure postureInterval(const Subject& subject) {
    Bench* const bench = subject.bench;
    Figure figure{QStringLiteral("between two postures of a movement"), {}};
    bench->goToStart();
    bench->line(60, 0, 0, 50);
    bench->enough();
    bench->awaitResults(1);
    for (size_t i = 1; i < bench->samples().size(); ++i) {
        figure.ms.push_back(bench->samples()[i].ms - bench->samples()[i - 1].ms);
    }
    return figure;
}

Figure stopToRest(const Subject& subject) {
    Bench* const bench = subject.bench;
    Figure figure{QStringLiteral("stop at 100 mm/s to standstill"), {}};
    for (int i = 0; i < std::min(subject.repeats, 10); ++i) {
        bench->goToStart();
        bench->line(60, 0);
        bench->enough();
        bench->waitFor([bench] { return distanceMm(bench->posture().pose, bench->start().pose) > 20; },
                       patienceMs);
        const double ordered = bench->nowMs();
        bench->stop();
        if (bench->awaitIdle()) {
            figure.ms.push_back(bench->nowMs() - ordered);
        }
    }
    return figure;
}

Figure writeToAnswer(const Subject& subject) {
    Bench* const bench = subject.bench;
    Figure figure{QStringLiteral("write to answer"), {}};
    for (int i = 0; i < 2 * subject.repeats && !subject.bits.isEmpty(); ++i) {
        bench->forget();
        const double ordered = bench->nowMs();
        bench->write(subject.bits, "bit", 0, 1 - i % 2);
        bench->waitFor([bench] { return !bench->of(Event::Kind::Answer).empty(); }, patienceMs);
        if (!bench->of(Event::Kind::Answer).empty()) {
            figure.ms.push_back(bench->of(Event::Kind::Answer).front().ms - ordered);
        }
    }
    return figure;
}

/// Of a wired pair: write to input, and from there to the next posture of the moving arm.
std::vector<Figure> loops(const Subject& subject) {
    Bench* const bench = subject.bench;
    Figure edge{QStringLiteral("write to output to input"), {}},
        posture{QStringLiteral("edge to posture"), {}};
    const QString name = subject.loopOutput.section(QLatin1Char('.'), 0, 0);
    const int bit = subject.loopOutput.section(QLatin1Char('#'), 1).toInt();
    bench->goToStart();
    bench->line(60, 0, 0, 10);
    bench->enough();
    for (int i = 0; i < 2 * subject.repeats; ++i) {
        bench->wait(20);
        bench->forget();
        const double ordered = bench->nowMs();
        bench->write(name, "bit", bit, 1 - i % 2);
        if (!bench->waitFor([bench] { return !bench->of(Event::Kind::Input).empty(); }, patienceMs)) {
            continue;
        }
        const double came = bench->of(Event::Kind::Input).front().ms;
        edge.ms.push_back(came - ordered);
        const auto isLater = [came](const Bench::Sample& s) { return s.ms >= came; };
        const auto hasLater = [&] {
            return std::any_of(bench->samples().begin(), bench->samples().end(), isLater);
        };
        if (bench->state() == QLatin1String("moving") && bench->waitFor(hasLater, 200)) {
            posture.ms.push_back(std::find_if(bench->samples().begin(), bench->samples().end(), isLater)->ms -
                                 came);
        }
    }
    bench->goToStart();
    return {edge, posture};
}

}  // namespace

std::vector<Figure> measure(const Subject& subject) {
    std::vector<Figure> figures = {commandToMotion(subject), postureInterval(subject), stopToRest(subject),
                                   writeToAnswer(subject)};
    if (!subject.loopOutput.isEmpty() && subject.loopOutput.contains(QLatin1Char('#'))) {
        const std::vector<Figure> more = loops(subject);
        figures.insert(figures.end(), more.begin(), more.end());
    }
    figures.erase(
        std::remove_if(figures.begin(), figures.end(), [](const Figure& f) { return f.ms.empty(); }),
        figures.end());
    return figures;
}

QString figureText(const Figure& figure) {
    std::vector<double> sorted = figure.ms;
    std::sort(sorted.begin(), sorted.end());
    const auto at = [&sorted](double part) {
        const auto index = size_t(std::ceil(part * double(sorted.size()))) - 1;
        return QString::number(sorted[std::min(index, sorted.size() - 1)], 'f', 1);
    };
    return QStringLiteral("%1: min %2, p50 %3, p99 %4, worst %5 ms (%6)")
        .arg(figure.name, QString::number(sorted.front(), 'f', 1), at(0.5), at(0.99),
             QString::number(sorted.back(), 'f', 1))
        .arg(sorted.size());
}

}  // namespace conform
