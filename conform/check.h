#pragma once

#include "conform/bench.h"

#include <QString>

#include <functional>
#include <vector>

namespace conform {

/// What the checks are made on.
struct Subject {
    Bench* bench = nullptr;
    /// Of a backend that can be cut off; cuts (true) or restores (false).
    std::function<void(bool)> cutLink;
    QString bits;    ///< a writable register of at least two bits; empty if the backend has none
    QString number;  ///< a writable int16 register; empty if the backend has none
    QString loopOutput, loopInput;  ///< an output that is wired to an input; empty if none is
    int repeats = 20;               ///< of each time that is measured
};

struct Outcome {
    enum class Kind { Pass, Fail, Skip };

    Kind kind = Kind::Pass;
    QString text;  ///< what was seen; of a skipped one why
};

inline Outcome passed(const QString& text = {}) {
    return {Outcome::Kind::Pass, text};
}
inline Outcome failed(const QString& text) {
    return {Outcome::Kind::Fail, text};
}
inline Outcome skipped(const QString& text) {
    return {Outcome::Kind::Skip, text};
}

/// A rule that a package relies on, and how it is judged.
struct Check {
    const char* id;
    const char* rule;
    Outcome (*judge)(const Subject& subject);
    bool moves = true;  ///< begins at the start, with the drives on
};

std::vector<Check> resultChecks();
std::vector<Check> pathChecks();
std::vector<Check> stopChecks();
std::vector<Check> signalChecks();
std::vector<Check> linkChecks();
/// All, in the order in which they are made.
std::vector<Check> allChecks();

}  // namespace conform
