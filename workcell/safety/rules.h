#pragma once

#include "workcell/safety/event.h"

#include <vector>

namespace workcell::safety {

/// A rule of docs/safety.md that was broken.
struct Breach {
    std::size_t event = 0;  ///< its index
    const char* rule = "";  ///< the name of the rule's function
    QString text;           ///< what happened, in plain English
};

/// Judges everything that happened by the rules, in the order of the events.
[[nodiscard]] std::vector<Breach> judge(const std::vector<Event>& events);

}  // namespace workcell::safety
