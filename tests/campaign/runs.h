#pragma once

#include "campaign/event.h"

#include <optional>
#include <vector>

namespace campaign {

/// A walk or single step, as the executor's depth shows it.
struct Run {
    Event asked;             ///< the Start or Once that it answers
    int generation = 0;      ///< of the hand program when it was accepted
    bool disturbed = false;  ///< a pause, a motion error or a loss of power came into it
};

/// Follows which scheduled actions are on the stack, and which walks, steps and pauses.
class Runs {
public:
    void on(const Event& event);

    /// The run that this event shows to be accepted.
    [[nodiscard]] const std::optional<Run>& begun() const { return begun_; }
    /// The run that this event shows to be over.
    [[nodiscard]] const std::optional<Run>& ended() const { return ended_; }
    /// The Start or Once that this event, its Done, shows to have been refused.
    [[nodiscard]] const std::optional<Event>& refused() const { return refused_; }
    /// The innermost run on the stack, null for none.
    [[nodiscard]] const Run* current() const;
    [[nodiscard]] int count() const;
    /// A start or step that has neither been accepted nor returned is the innermost action.
    [[nodiscard]] bool asking() const;
    /// A loss of power is on the stack, or the application ends, which is the same to the executor.
    [[nodiscard]] bool inPower() const;
    /// How often the hand program was replaced.
    [[nodiscard]] int generation() const { return generation_; }

private:
    struct Action {
        Event event;
        bool counted = false;  ///< it made the depth grow
    };
    struct Unit {
        bool isRun;
        Run run;
    };

    void enter();
    void leave();
    void disturb();
    void close(const Event& done);

    std::vector<Action> actions_;
    std::vector<Unit> units_;
    std::optional<Run> begun_, ended_;
    std::optional<Event> refused_;
    int generation_ = 0;
    bool quit_ = false;
};

}  // namespace campaign
