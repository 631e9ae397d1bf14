#include "sidebyside.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <utility>
#include <vector>

namespace bench {

namespace {

/// The clock's time in seconds.
double now(Clock clock) {
    timespec time{};
    clock_gettime(clock == Clock::Processor ? CLOCK_PROCESS_CPUTIME_ID : CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

/// Seconds for `count` operations.
double block(const Side& side, int count, Clock clock) {
    if (side.prepare) {
        side.prepare();
    }
    const double begin = now(clock);
    side.run(count);
    return now(clock) - begin;
}

/// Seconds for one unit of the side's work.
double unitTime(const Side& side, int count, Clock clock) {
    return block(side, count, clock) / (count * side.units);
}

/// The ratios of the faster half of the rounds (sum of both sides). Other load lengthens a round, and rarely
/// both sides alike.
std::vector<double> quietRatios(const std::vector<double>& ratios, const std::vector<double>& times,
                                const std::vector<double>& referenceTimes) {
    const double usual = median(times);
    const double usualReference = median(referenceTimes);
    std::vector<double> lengths;
    for (std::size_t round = 0; round < ratios.size(); ++round) {
        lengths.push_back(times[round] / usual + referenceTimes[round] / usualReference);
    }
    const double longest = median(lengths);
    std::vector<double> quiet;
    for (std::size_t round = 0; round < ratios.size(); ++round) {
        if (lengths[round] <= longest) {
            quiet.push_back(ratios[round]);
        }
    }
    return quiet;
}

/// Number of operations in a block of the planned length. Also warms the side up.
int countFor(const Side& side, const Plan& plan) {
    int count = 1;
    while (count < side.mostCount && block(side, count, plan.clock) < 1e-3 * plan.blockMs) {
        count = count > side.mostCount / 2 ? side.mostCount : count * 2;
    }
    return count;
}

}  // namespace

Side once(std::function<void()> operation, std::function<void()> prepare) {
    Side side;
    side.run = [operation = std::move(operation)](int) { operation(); };
    side.prepare = std::move(prepare);
    side.mostCount = 1;
    return side;
}

double quantile(std::vector<double> values, double p) {
    const auto place = std::lround(p * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), values.begin() + place, values.end());
    return values[static_cast<std::size_t>(place)];
}

double median(std::vector<double> values) {
    return quantile(std::move(values), 0.5);
}

void sideBySide(benchmark::State& state, const Side& work, const Side& reference, const Plan& plan) {
    for ([[maybe_unused]] auto iteration : state) {
        const int workCount = countFor(work, plan);
        const int referenceCount = countFor(reference, plan);
        std::vector<double> workTimes, referenceTimes, ratios;
        for (int round = 0; round < plan.rounds; ++round) {
            double workTime = 0.0;
            double referenceTime = 0.0;
            const auto measureWork = [&] { workTime = unitTime(work, workCount, plan.clock); };
            // The order alternates, so that cache effects hit both sides.
            if (round % 2 == 0) {
                measureWork();
            }
            referenceTime = unitTime(reference, referenceCount, plan.clock);
            if (round % 2 != 0) {
                measureWork();
            }
            workTimes.push_back(workTime);
            referenceTimes.push_back(referenceTime);
            ratios.push_back(workTime / referenceTime);
        }
        for (auto* times : {&workTimes, &referenceTimes}) {
            for (double& time : *times) {
                time *= 1e9;
            }
        }
        reportRatios(state, ratios, workTimes, referenceTimes, plan.target);
    }
}

void reportRatios(benchmark::State& state, const std::vector<double>& ratios,
                  const std::vector<double>& timesNs, const std::vector<double>& referenceNs, double target) {
    state.SetIterationTime(1e-9 * median(timesNs));
    const std::vector<double> quiet = quietRatios(ratios, timesNs, referenceNs);
    state.counters["ratio"] = median(quiet);
    state.counters["lower"] = quantile(quiet, 0.25);
    state.counters["upper"] = quantile(quiet, 0.75);
    state.counters["ns"] = median(timesNs);
    state.counters["reference_ns"] = median(referenceNs);
    state.counters["target"] = target;
}

void report(benchmark::State& state, double value, const char* unit, double target, Bound bound) {
    state.counters["value"] = value;
    state.SetLabel(unit);
    if (bound != Bound::None) {
        state.counters["target"] = target;
        state.counters["at_least"] = bound == Bound::AtLeast ? 1 : 0;
    }
    state.SetIterationTime(1e-9);  // not used: the counter has the value
}

void add(const char* name, std::function<void(benchmark::State&)> measure) {
    benchmark::RegisterBenchmark(name, std::move(measure))->UseManualTime()->Iterations(1);
}

int runFigures(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

}  // namespace bench
