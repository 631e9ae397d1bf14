#pragma once

#include <benchmark/benchmark.h>

#include <climits>
#include <functional>
#include <vector>

/// Figures that hold on a noisy machine: two pieces of work are measured in turn, in small blocks in one
/// process, and compared round by round. What slows the machine slows both sides of a round.
///
/// A figure is a benchmark whose name says it in words ("tree: write by dotted path / bare signal"), with
/// the counters `ratio` or `value`, and `target` where it has one; `benchmarks/figures` makes the table.
namespace bench {

/// One side of a comparison.
struct Side {
    /// Does the operation `count` times.
    std::function<void(int count)> run;
    /// Done before each block, not measured; may be empty.
    std::function<void()> prepare;
    /// How many operations one preparation lasts for.
    int mostCount = INT_MAX;
    /// An operation handles so many things; times are for one of them.
    double units = 1.0;
};

/// The operation repeated. For short operations: the call is resolved where the loop is compiled.
template <typename Operation>
Side each(Operation operation) {
    Side side;
    side.run = [operation](int count) mutable {
        for (int i = 0; i < count; ++i) {
            operation();
        }
    };
    return side;
}

/// An operation that needs its preparation each time.
Side once(std::function<void()> operation, std::function<void()> prepare);

enum class Clock {
    Processor,  ///< processor time of the process, which other programs do not lengthen
    Wall        ///< monotonic time, for work that waits
};

struct Plan {
    /// The ratio is to be at most this.
    double target = 1.0;
    Clock clock = Clock::Processor;
    int rounds = 31;
    /// A block repeats its operation until it takes this long.
    double blockMs = 2.0;
};

/// Measures `work` against `reference` and reports the median of the ratios of the quieter half of the rounds
/// (`ratio`, with its quartiles `lower` and `upper`) and the medians in nanoseconds (`ns`, `reference_ns`).
void sideBySide(benchmark::State& state, const Side& work, const Side& reference, const Plan& plan);

/// Reports rounds that were measured otherwise, as sideBySide does.
void reportRatios(benchmark::State& state, const std::vector<double>& ratios,
                  const std::vector<double>& timesNs, const std::vector<double>& referenceNs, double target);

enum class Bound { AtMost, AtLeast, None };

/// Reports a figure that is no ratio of times: `value` in `unit` and its target (`at_least` 1 for a lower
/// bound). To be called once in the benchmark's loop.
void report(benchmark::State& state, double value, const char* unit, double target,
            Bound bound = Bound::AtMost);

double median(std::vector<double> values);
/// The value below which `share` (0 to 1) of the values lie.
double quantile(std::vector<double> values, double share);

/// Registers a figure; to be called before runFigures.
void add(const char* name, std::function<void(benchmark::State&)> measure);
/// The rest of main(): reads Google Benchmark's options, runs what was added and gives the exit status.
int runFigures(int argc, char** argv);

}  // namespace bench
