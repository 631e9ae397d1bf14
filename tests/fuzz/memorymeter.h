#pragma once

#include <cstddef>

namespace fuzz {

/// Follows what this thread takes on the heap while an input is read: with AddressSanitizer's hooks, else
/// in front of the C library's own functions.
class MemoryMeter {
public:
    /// Counts from what is held now. More than `most` bytes above that abort the process, at the
    /// allocation that takes them.
    static void begin(std::size_t most);
    /// Ends the count. The largest share of what was allowed is told when the process ends.
    static void end(std::size_t inputBytes);
};

}  // namespace fuzz
