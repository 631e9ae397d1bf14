#include "runner/alignment.h"

#include <algorithm>

namespace run {

namespace {

constexpr int mostDifferences = 2000;

/// The search for the shortest path from (0, 0) to (n, m) that goes right (an element of `a` is left alone),
/// down (one of `b`) or, through equal elements, along a diagonal. Diagonal k is x - y.
class Search {
public:
    Search(const Keys& a, int aFrom, int n, const Keys& b, int bFrom, int m)
        : a_(a), b_(b), aFrom_(aFrom), bFrom_(bFrom), n_(n), m_(m) {}

    /// Whether a path with few enough differences was found.
    bool run() {
        const int most = std::min(n_ + m_, mostDifferences);
        std::vector<int> reached{0, 0, 0};  // furthest x on the diagonals -1, 0, 1
        for (int d = 0; d <= most; ++d) {
            std::vector<int> furthest(std::size_t(2 * d + 3), 0);  // on the diagonals -d-1 to d+1
            for (int k = -d; k <= d; k += 2) {
                const auto before = [&](int diagonal) { return reached[std::size_t(diagonal + d)]; };
                const bool down = k == -d || (k != d && before(k - 1) < before(k + 1));
                int x = d == 0 ? 0 : down ? before(k + 1) : before(k - 1) + 1;
                while (x < n_ && x - k < m_ && same(x, x - k)) {
                    ++x;
                }
                furthest[std::size_t(k + d + 1)] = x;
                if (x >= n_ && x - k >= m_) {
                    rounds_.push_back(std::move(furthest));
                    return true;
                }
            }
            rounds_.push_back(furthest);
            reached = std::move(furthest);
        }
        return false;
    }

    /// The pairs of the path that run() found, in order.
    Pairs pairs() const {
        Pairs found;
        int x = n_, y = m_;
        for (int d = int(rounds_.size()) - 1; d >= 0; --d) {
            const int k = x - y;
            int fromX = 0, fromY = 0;
            if (d > 0) {
                const auto before = [&](int diagonal) {
                    return rounds_[std::size_t(d - 1)][std::size_t(diagonal + d)];
                };
                const bool down = k == -d || (k != d && before(k - 1) < before(k + 1));
                fromX = down ? before(k + 1) : before(k - 1);
                fromY = fromX - (down ? k + 1 : k - 1);
            }
            while (x > fromX && y > fromY) {
                found.emplace_back(aFrom_ + --x, bFrom_ + --y);
            }
            if (x > fromX) {
                found.emplace_back(aFrom_ + --x, -1);
            } else if (y > fromY) {
                found.emplace_back(-1, bFrom_ + --y);
            }
        }
        std::reverse(found.begin(), found.end());
        return found;
    }

private:
    bool same(int x, int y) const { return a_[std::size_t(aFrom_ + x)] == b_[std::size_t(bFrom_ + y)]; }

    const Keys& a_;
    const Keys& b_;
    int aFrom_, bFrom_, n_, m_;
    std::vector<std::vector<int>> rounds_;  ///< after d differences: furthest x on the diagonals -d-1 to d+1
};

}  // namespace

Pairs align(const Keys& a, const Keys& b) {
    const int shorter = int(std::min(a.size(), b.size()));
    int head = 0;
    while (head < shorter && a[std::size_t(head)] == b[std::size_t(head)]) {
        ++head;
    }
    int tail = 0;
    while (tail < shorter - head &&
           a[a.size() - 1 - std::size_t(tail)] == b[b.size() - 1 - std::size_t(tail)]) {
        ++tail;
    }
    const int n = int(a.size()) - head - tail, m = int(b.size()) - head - tail;
    Pairs pairs;
    for (int i = 0; i < head; ++i) {
        pairs.emplace_back(i, i);
    }
    Search search(a, head, n, b, head, m);
    if (search.run()) {
        const Pairs middle = search.pairs();
        pairs.insert(pairs.end(), middle.begin(), middle.end());
    } else {
        for (int i = 0; i < n; ++i) {
            pairs.emplace_back(head + i, -1);
        }
        for (int i = 0; i < m; ++i) {
            pairs.emplace_back(-1, head + i);
        }
    }
    for (int i = 0; i < tail; ++i) {
        pairs.emplace_back(head + n + i, head + m + i);
    }
    return pairs;
}

}  // namespace run
