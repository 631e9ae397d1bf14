#pragma once

#include <QJsonArray>
#include <QJsonObject>

#include <initializer_list>
#include <numeric>
#include <random>

namespace campaign {

/// A source of numbers that are the same for a seed on every machine: the engine is standardised, the
/// standard library's distributions are not.
class Random {
public:
    explicit Random(quint64 seed) : engine_(seed) {}
    /// 0 to n - 1.
    int below(int n) { return int(engine_() % quint64(n)); }
    int between(int first, int last) { return first + below(last - first + 1); }
    bool chance(int percent) { return below(100) < percent; }
    template <typename T>
    T oneOf(std::initializer_list<T> choices) {
        return choices.begin()[below(int(choices.size()))];
    }
    /// The position of a weight, each as likely as its share of the sum.
    int weighted(const std::vector<int>& weights) {
        int left = below(std::accumulate(weights.begin(), weights.end(), 0));
        int position = 0;
        while (left >= weights[size_t(position)]) {
            left -= weights[size_t(position++)];
        }
        return position;
    }

private:
    std::mt19937_64 engine_;
};

/// A program of 1 to 25 lines: mostly what a welder would write, now and then what none should
/// (skipped lines, unknown types, impossible circles, welds that never end).
QJsonArray drawProgram(Random& random);

/// All that a schedule is made of; schedule.cpp and performer.h say what its members mean. What is left
/// out has the value that changes nothing. It follows from the seed alone.
QJsonObject drawScenario(quint64 seed);

}  // namespace campaign
