#pragma once

#include <vector>

namespace app {

class Scene;

/// One picture: its name, and how a hand gets there from a panel that was reset. `go` ends with the
/// shot, or has armed it.
struct Stop {
    const char* name;
    void (*go)(Scene&);
};

/// Every page, dialog and message of the panel. Those before a project is open come first.
const std::vector<Stop>& stops();

}  // namespace app
