#pragma once

// Included by force into the mutated copies that mutate.py writes; no part of the package.

#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>
#include <vector>

namespace mutation {

/// Which mutant is active, and, where asked for, which ones this process came past.
class Switch {
public:
    static Switch& instance() {
        static Switch* const only = new Switch;  // outlives the objects that are destroyed at exit
        return *only;
    }

    bool isActive(int id) {
        if (!reachedFile_.empty()) {
            if (reached_.size() <= static_cast<std::size_t>(id)) {
                reached_.resize(static_cast<std::size_t>(id) + 1);
            }
            reached_[static_cast<std::size_t>(id)] = true;
        }
        return id == active_;
    }

private:
    Switch() {
        const char* const active = std::getenv("LUMO_MUTANT");
        const char* const file = std::getenv("LUMO_MUTANTS_REACHED");
        active_ = active ? std::atoi(active) : -1;
        if (file) {
            reachedFile_ = std::string(file) + "." + std::to_string(getpid());
            std::atexit([] { instance().writeReached(); });
        }
    }
    void writeReached() const {
        std::FILE* const file = std::fopen(reachedFile_.c_str(), "a");
        for (std::size_t id = 0; file && id < reached_.size(); ++id) {
            if (reached_[id]) {
                std::fprintf(file, "%zu\n", id);
            }
        }
        if (file) {
            std::fclose(file);
        }
    }

    int active_ = -1;
    std::string reachedFile_;
    std::vector<bool> reached_;
};

}  // namespace mutation

inline bool lumoMutant(int id) {
    return mutation::Switch::instance().isActive(id);
}
