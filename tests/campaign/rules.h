#pragma once

#include "campaign/event.h"

#include <QStringList>

#include <map>
#include <optional>
#include <vector>

namespace campaign {

/// A walk or single step, as the executor's depth shows it.
struct Run {
    Event asked;             ///< the Start or Once that it answers; a Pause's or another's is no run
    int generation = 0;      ///< how often the hand program was replaced before
    bool disturbed = false;  ///< a pause, a motion error or a loss of power came into it
};

/// An event, and how things were before it.
struct Step {
    Event event;
    std::array<int, portCount> outputs{};  ///< what the executor wrote last
    bool emitting = false;                 ///< the simulated laser source is on
    bool inPower = false;                  ///< a loss of power is on the stack, or the end of the application
    bool asking = false;                   ///< the innermost deed is a start neither accepted nor returned
    int runs = 0;                          ///< on the stack
    std::optional<Run> current{};          ///< the innermost one
    std::optional<Run> begun{}, ended{};   ///< the run that the event shows to be accepted, or to be over
    std::optional<Event> refused{};        ///< the start that it shows to have been refused

    [[nodiscard]] bool laserOn() const { return outputs[LASER] != 0; }
    [[nodiscard]] bool isPowerLoss() const { return event.kind == Power && event.value == 0; }
    [[nodiscard]] bool writes(int port) const { return event.kind == Write && event.port == port; }
    [[nodiscard]] bool switchesOn(int port) const { return writes(port) && event.value != 0; }
    /// Equipment that is on, by name.
    [[nodiscard]] QString on() const;
};

/// What does not hold, in words, and at which event.
struct Findings {
    std::multimap<std::size_t, QString> all;
    std::size_t at = 0;  ///< the event that the rule looks at

    void forbid(bool happens, const QString& words) {
        if (happens) {
            all.emplace(at, words);
        }
    }
};

void checkLaser(const std::vector<Step>& steps, Findings& found);
/// Holds what the safety rules promise against what happened.
Findings check(const std::vector<Event>& events);
/// Which of its own courses, right and wrong ones, the rules judge otherwise.
QStringList checkRules();

}  // namespace campaign
