#pragma once

#include <benchmark/benchmark.h>

#include <climits>
#include <functional>
#include <vector>

/// Comparisons that are reliable on a noisy machine: two operations are measured alternately in small blocks
/// of one process and compared round by round, so that other load affects both sides.
///
/// A figure is a benchmark with a descriptive name ("tree: write by dotted path / bare signal"), a counter
/// `ratio` or `value`, and optionally `target`. `benchmarks/figures` makes the table.
namespace bench {

/// One side of a comparison.
struct Side {
    /// Carries out the operation `count` times.
    std::function<void(int count)> run;
    /// Called before each block, not measured; may be empty.
    std::function<void()> prepare;
    /// Number of operations after one preparation.
    int mostCount = INT_MAX;
    /// Number of units in an operation; times are for one unit.
    double units = 1.0;
};

/// Repeats a short operation; a template, so that the compiler can inline it in the loop.
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

/// An operation that needs a preparation each time.
Side once(std::function<void()> operation, std::function<void()> prepare);

enum class Clock {
    Processor,  ///< processor time of the process, independent of other programs
    Wall        ///< monotonic time, for operations that wait
};

struct Plan {
    /// Upper bound of the ratio.
    double target = 1.0;
    Clock clock = Clock::Processor;
    int rounds = 31;
    /// Length of a block.
    double blockMs = 2.0;
};

/// Compares `work` with `reference`. Reports the median of the ratios of the faster half of the rounds
/// (`ratio`, with the quartiles `lower` and `upper`) and the medians in nanoseconds (`ns`, `reference_ns`).
void sideBySide(benchmark::State& state, const Side& work, const Side& reference, const Plan& plan);

/// Reports rounds measured by the caller as sideBySide() does.
void reportRatios(benchmark::State& state, const std::vector<double>& ratios,
                  const std::vector<double>& timesNs, const std::vector<double>& referenceNs, double target);

enum class Bound { AtMost, AtLeast, None };

/// Reports a figure that is not a ratio: `value` in `unit` and its target (`at_least` 1 for a lower bound).
/// Call it once in the benchmark's loop.
void report(benchmark::State& state, double value, const char* unit, double target,
            Bound bound = Bound::AtMost);

double median(std::vector<double> values);
/// The value below which the fraction `p` of the values lie.
double quantile(std::vector<double> values, double p);

/// Registers a figure; call it before runFigures().
void add(const char* name, std::function<void(benchmark::State&)> measure);
/// Reads Google Benchmark's options, runs the registered figures and returns the exit status of main().
int runFigures(int argc, char** argv);

}  // namespace bench
