#pragma once

// Included (-include) in the mutated copies that mutate.py writes; not part of the package.

#include <unistd.h>
#include <bitset>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace mutation {

/// The active mutant; -1 for none; -2 before it is known, and always while reached mutants are recorded.
inline int active = -2;

[[gnu::noinline]] inline bool look(int id) {
    static const char* const noted = std::getenv("LUMO_MUTANTS_REACHED");
    if (!noted) {
        const char* const asked = std::getenv("LUMO_MUTANT");
        active = asked ? std::atoi(asked) : -1;
        return id == active;
    }
    static std::FILE* const file = std::fopen((noted + ("." + std::to_string(getpid()))).c_str(), "a");
    static std::bitset<1 << 16> reached;  // usable at exit: it has a trivial destructor
    if (file && !reached.test(static_cast<std::size_t>(id))) {
        reached.set(static_cast<std::size_t>(id));
        std::fprintf(file, "%d\n", id);
        std::fflush(file);
    }
    return false;
}

}  // namespace mutation

// Called in nearly every expression, so it has to be fast.
[[gnu::always_inline]] inline bool lumoMutant(int id) {
    const int active = mutation::active;
    return active == -2 ? mutation::look(id) : active == id;
}
