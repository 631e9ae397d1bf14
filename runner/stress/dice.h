#pragma once

#include <QtGlobal>

#include <numeric>
#include <random>
#include <vector>

namespace run::stress {

/// Random choices. The numbers of a seed are the same on every machine: the engine is standardised, and the
/// standard library's distributions, which are not, are not used.
class Dice {
public:
    explicit Dice(quint64 seed) : engine_(seed) {}

    /// 0 to n - 1.
    int below(int n) { return int(engine_() % quint64(n)); }
    int between(int first, int last) { return first + below(last - first + 1); }
    bool chance(int percent) { return below(100) < percent; }
    template <typename T>
    T oneOf(std::initializer_list<T> choices) {
        return choices.begin()[below(int(choices.size()))];
    }
    template <typename List>
    auto anyOf(const List& choices) {
        return choices[below(int(choices.size()))];
    }
    /// The index of a weight, with a probability in proportion to it.
    int weighted(const std::vector<int>& weights) {
        int left = below(std::accumulate(weights.begin(), weights.end(), 0));
        int position = 0;
        while (left >= weights[std::size_t(position)]) {
            left -= weights[std::size_t(position++)];
        }
        return position;
    }

private:
    std::mt19937_64 engine_;
};

}  // namespace run::stress
