#pragma once

#include <cstdint>
#include <utility>
#include <vector>

namespace run {

using Keys = std::vector<std::uint64_t>;

/// A position in one list and that of the equal element in another; -1: the other list has none.
using Pairs = std::vector<std::pair<int, int>>;

/// Aligns two lists so that as few elements as possible are left alone, in the order of both (the greedy
/// algorithm of E. W. Myers, "An O(ND) difference algorithm and its variations", 1986). Time and memory grow
/// with the differences; lists with more than 2,000 are aligned from their beginnings and ends only.
Pairs align(const Keys& a, const Keys& b);

}  // namespace run
