#pragma once

#include <QtGlobal>

#include <initializer_list>
#include <random>

namespace campaign {

/// A source of numbers that are the same for a seed on every machine: the engine is standardised, the
/// standard library's distributions are not.
class Random {
public:
    explicit Random(quint64 seed) : engine_(seed) {}

    /// 0 to n - 1.
    int below(int n) { return static_cast<int>(engine_() % static_cast<quint64>(n)); }
    int between(int first, int last) { return first + below(last - first + 1); }
    bool chance(int percent) { return below(100) < percent; }

    template <typename T>
    T oneOf(std::initializer_list<T> choices) {
        return choices.begin()[below(static_cast<int>(choices.size()))];
    }

    /// The position of a weight, each as likely as its share of the sum.
    int weighted(std::initializer_list<int> weights) {
        int sum = 0;
        for (const int weight : weights) {
            sum += weight;
        }
        int left = below(sum);
        int position = 0;
        for (const int weight : weights) {
            if (left < weight) {
                break;
            }
            left -= weight;
            ++position;
        }
        return position;
    }

private:
    std::mt19937_64 engine_;
};

}  // namespace campaign
