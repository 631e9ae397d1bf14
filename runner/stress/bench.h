#pragma once

#include "runner/stress/children.h"
#include "runner/stress/trial.h"

#include <functional>

namespace run {
class Session;
}

namespace run::stress {

/// Tries trials on a prepared session, each in a process of its own, and judges them by the rules of
/// docs/safety.md. A process that crashes or hangs breaks the rule "process".
class Bench {
public:
    /// `session` was prepared, records for the rules, and is never played itself. It must outlive the bench.
    explicit Bench(Session* session);

    [[nodiscard]] Verdict judge(const Trial& trial) const;
    /// Tries `count` trials, several at a time. `take` gets the verdicts in the order of their numbers.
    void judgeAll(int count, const std::function<Trial(int)>& trialOf,
                  const std::function<void(int, const Verdict&)>& take) const;

    /// The same rule broken in the same way with less: removes halves, quarters … single entries of the
    /// scenario while it stays broken; with `lines`, of the program, too.
    [[nodiscard]] Trial shrunk(const Trial& trial, const Verdict& verdict, bool lines) const;

private:
    Session* session_;
    Children children_;
};

}  // namespace run::stress
