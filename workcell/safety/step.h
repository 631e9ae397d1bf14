#pragma once

#include "workcell/safety/event.h"

#include <array>
#include <optional>
#include <vector>

namespace workcell::safety {

/// A walk or single step, seen from the executor's depth.
struct Run {
    Event asked;             ///< the Start or Once that caused it; other kinds are not runs
    bool disturbed = false;  ///< by a pause, a motion error or a loss of power

    [[nodiscard]] bool isWalk() const { return asked.kind == Kind::Start; }
};

/// An event with what came before it.
struct Step : Event {
    std::array<int, prog::portCount> outputs{};  ///< the executor's last writes
    std::array<int, prog::portCount> byHand{};   ///< what a page has switched on and nobody off
    bool inPower = false;                 ///< a loss of power has not returned, or the application quits
    bool asking = false;                  ///< the innermost action is a start, not yet accepted or returned
    std::optional<Run> current{};         ///< the innermost run that is under way
    std::optional<Run> begun{}, ended{};  ///< the run that begins or ends with this event
    std::optional<Event> refused{};       ///< the start that was refused with this event

    [[nodiscard]] bool isOn(I_PORT which) const { return outputs[which] != 0; }
    [[nodiscard]] bool laserOn() const { return isOn(DO_LASER_ENABLE); }
    [[nodiscard]] bool isPowerLoss() const { return kind == Kind::Power && value == 0; }
    [[nodiscard]] bool writes(I_PORT which) const { return kind == Kind::Write && port == which; }
    [[nodiscard]] bool switchesOn(I_PORT which) const { return writes(which) && value != 0; }
    [[nodiscard]] bool commands(QLatin1String which) const { return kind == Kind::Command && text == which; }
    /// Whether the executor is idle, with nothing on its stack and no step pending.
    [[nodiscard]] bool rests() const { return idle && depth == 0 && pending == 0; }
    /// Equipment that the executor has on, by name; empty when everything is off.
    [[nodiscard]] QString on() const;
};

using Steps = std::vector<Step>;

[[nodiscard]] Steps stepsOf(const std::vector<Event>& events);

}  // namespace workcell::safety
