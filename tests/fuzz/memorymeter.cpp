#include "fuzz/memorymeter.h"

#include <cstdio>
#include <cstdlib>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define FUZZ_UNDER_ADDRESS_SANITIZER 1
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define FUZZ_UNDER_ADDRESS_SANITIZER 1
#endif

namespace fuzz {

namespace {

// Of this thread only: the fuzzer's own threads allocate as well.
thread_local bool counting = false;
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

void noteAllocation(std::size_t bytes) {
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

void noteRelease(std::size_t bytes) {
    if (counting) {
        held -= static_cast<std::ptrdiff_t>(bytes);
    }
}

}  // namespace

}  // namespace fuzz

#ifdef FUZZ_UNDER_ADDRESS_SANITIZER

// Of the sanitizers' allocator interface, whose header comes with Clang only.
extern "C" {
int __sanitizer_install_malloc_and_free_hooks(void (*onAllocation)(const volatile void*, std::size_t),
                                              void (*onRelease)(const volatile void*));
std::size_t __sanitizer_get_allocated_size(const volatile void* block);
}

namespace fuzz {

namespace {

void onAllocation(const volatile void*, std::size_t bytes) {
    noteAllocation(bytes);
}

void onRelease(const volatile void* block) {
    if (counting && block) {
        noteRelease(__sanitizer_get_allocated_size(block));
    }
}

bool follow() {
    static const bool installed = __sanitizer_install_malloc_and_free_hooks(onAllocation, onRelease) != 0;
    return installed;
}

}  // namespace

}  // namespace fuzz

#elif defined(__GLIBC__)

#include <malloc.h>

// In front of the library's own, for everything that is loaded.
extern "C" {
void* __libc_malloc(std::size_t bytes);
void* __libc_calloc(std::size_t count, std::size_t bytes);
void* __libc_realloc(void* block, std::size_t bytes);
void __libc_free(void* block);

void* malloc(std::size_t bytes) noexcept {
    void* const block = __libc_malloc(bytes);
    fuzz::noteAllocation(malloc_usable_size(block));
    return block;
}

void* calloc(std::size_t count, std::size_t bytes) noexcept {
    void* const block = __libc_calloc(count, bytes);
    fuzz::noteAllocation(malloc_usable_size(block));
    return block;
}

void* realloc(void* block, std::size_t bytes) noexcept {
    const std::size_t before = malloc_usable_size(block);
    void* const moved = __libc_realloc(block, bytes);
    if (moved || bytes == 0) {
        fuzz::noteRelease(before);
        fuzz::noteAllocation(malloc_usable_size(moved));
    }
    return moved;
}

void free(void* block) noexcept {
    fuzz::noteRelease(malloc_usable_size(block));
    __libc_free(block);
}
}

namespace fuzz {

namespace {

bool follow() {
    return true;
}

}  // namespace

}  // namespace fuzz

#else

namespace fuzz {

namespace {

bool follow() {
    return false;
}

}  // namespace

}  // namespace fuzz

#endif

namespace fuzz {

void MemoryMeter::begin(std::size_t most) {
    held = peak = 0;
    allowed = static_cast<std::ptrdiff_t>(most);
    counting = follow();
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
