#include "fuzz/memorymeter.h"

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define FUZZ_MEASURES_MEMORY 1
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define FUZZ_MEASURES_MEMORY 1
#endif

#ifdef FUZZ_MEASURES_MEMORY

#include <cstdio>
#include <cstdlib>

// Of the sanitizers' allocator interface, whose header comes with Clang only.
extern "C" {
int __sanitizer_install_malloc_and_free_hooks(void (*onAllocation)(const volatile void*, std::size_t),
                                              void (*onRelease)(const volatile void*));
std::size_t __sanitizer_get_allocated_size(const volatile void* block);
}

namespace fuzz {

namespace {

bool counting = false;
std::ptrdiff_t held = 0;
std::ptrdiff_t peak = 0;
std::ptrdiff_t allowed = 0;

/// The largest part of its allowance that an input took.
struct Worst {
    double share = 0.0;
    std::ptrdiff_t bytes = 0;
    std::size_t inputBytes = 0;

    ~Worst() {
        std::fprintf(stderr, "memory: at most %td bytes for an input of %zu, %.1f %% of what it may take\n",
                     bytes, inputBytes, 100.0 * share);
    }
};
Worst worst;

void onAllocation(const volatile void*, std::size_t bytes) {
    if (!counting) {
        return;
    }
    held += static_cast<std::ptrdiff_t>(bytes);
    if (held <= peak) {
        return;
    }
    peak = held;
    if (peak > allowed) {
        counting = false;
        std::fprintf(stderr, "does not hold: %td bytes are held for an input that may take %td\n", peak,
                     allowed);
        std::abort();
    }
}

void onRelease(const volatile void* block) {
    if (counting && block) {
        held -= static_cast<std::ptrdiff_t>(__sanitizer_get_allocated_size(block));
    }
}

}  // namespace

void MemoryMeter::begin(std::size_t most) {
    static const bool installed = __sanitizer_install_malloc_and_free_hooks(onAllocation, onRelease) != 0;
    held = peak = 0;
    allowed = static_cast<std::ptrdiff_t>(most);
    counting = installed;
}

void MemoryMeter::end(std::size_t inputBytes) {
    counting = false;
    const double share = static_cast<double>(peak) / static_cast<double>(allowed);
    if (share > worst.share) {
        worst.share = share;
        worst.bytes = peak;
        worst.inputBytes = inputBytes;
    }
}

}  // namespace fuzz

#else

namespace fuzz {

void MemoryMeter::begin(std::size_t) {}
void MemoryMeter::end(std::size_t) {}

}  // namespace fuzz

#endif
