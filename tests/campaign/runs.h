#pragma once

#include "campaign/event.h"

#include <QStringList>

#include <algorithm>
#include <optional>
#include <vector>

namespace campaign {

/// What the executor wrote last to each port.
struct Outputs {
    std::array<int, portCount> values{};
    bool emitting = false;  ///< the simulated source is on

    void on(const Event& event) {
        if (event.kind == Write) {
            values[event.port] = event.value;
        } else if (event.kind == Emission) {
            emitting = event.value != 0;
        }
    }

    /// Equipment that is on, by name.
    [[nodiscard]] QString on() const {
        QStringList names;
        for (const Port port : {GAS, WIRE, PULLBACK, LASER, POWER, FREQUENCY, DUTY_CYCLE}) {
            if (values[port] > 0) {
                names << nameOf(port);
            }
        }
        return names.join(' ');
    }
};

/// A walk or single step, as the executor's depth shows it.
struct Run {
    Event asked;             ///< the Start or Once that it answers
    int generation = 0;      ///< how often the hand program was replaced before
    bool disturbed = false;  ///< a pause, a motion error or a loss of power came into it
};

/// Follows which deeds of the schedule are on the stack, and which walks, steps and pauses.
struct Runs {
    std::optional<Run> begun, ended;  ///< the run that the last event shows to be accepted, or to be over
    std::optional<Event> refused;     ///< the start that it shows to have been refused

    void on(const Event& event) {
        begun.reset();
        ended.reset();
        refused.reset();
        if (event.kind <= Act) {
            deeds_.push_back({event, false});
        } else if (event.kind == Done) {
            close(event.action);
        } else if (event.kind == Activity) {
            while (int(units_.size()) < event[Depth]) {
                enter();
            }
            while (int(units_.size()) > event[Depth]) {
                ended = units_.back().isRun ? units_.back().run : ended;
                units_.pop_back();
            }
        }
        quit_ |= event.kind == Quit;
        generation_ += event.kind == Replace ? 1 : 0;
        if (event.kind == Pause || event.kind == Quit || isPowerLoss(event)) {
            disturb();
        }
    }

    /// The innermost run on the stack, null for none.
    [[nodiscard]] const Run* current() const {
        const auto found = std::find_if(units_.rbegin(), units_.rend(), isRun);
        return found == units_.rend() ? nullptr : &found->run;
    }
    [[nodiscard]] int count() const { return int(std::count_if(units_.begin(), units_.end(), isRun)); }
    /// A start or step that has neither been accepted nor returned is the innermost deed.
    [[nodiscard]] bool asking() const { return asksForRun() && !deeds_.back().counted; }
    /// A loss of power is on the stack, or the application ends, which is the same to the executor.
    [[nodiscard]] bool inPower() const {
        return quit_ || std::any_of(deeds_.begin(), deeds_.end(),
                                    [](const Deed& deed) { return isPowerLoss(deed.event); });
    }
    [[nodiscard]] static bool isPowerLoss(const Event& event) {
        return event.kind == Power && event.value == 0;
    }

private:
    struct Deed {
        Event event;
        bool counted;  ///< it made the depth grow
    };
    struct Unit {
        bool isRun;
        Run run;
    };
    static bool isRun(const Unit& unit) { return unit.isRun; }
    [[nodiscard]] bool asksForRun() const { return !deeds_.empty() && deeds_.back().event.kind <= Once; }

    /// The depth grew by one: a run or a pause that the innermost deed asked for, or the pause that a run
    /// does for itself after a motion error.
    void enter() {
        const bool answers = !deeds_.empty() && !deeds_.back().counted;
        if (asking()) {
            begun = Run{deeds_.back().event, generation_};
            units_.push_back({true, *begun});
        } else {
            disturb();
            units_.push_back({false, {}});
        }
        if (answers) {
            deeds_.back().counted = true;
        }
    }

    void disturb() {
        for (Unit& unit : units_) {
            unit.run.disturbed = true;
        }
    }

    void close(int action) {
        const auto isThis = [action](const Deed& deed) { return deed.event.action == action; };
        const auto found = std::find_if(deeds_.begin(), deeds_.end(), isThis);
        if (found != deeds_.end()) {
            if (found->event.kind <= Once && !found->counted) {
                refused = found->event;
            }
            deeds_.erase(found);
        }
    }

    std::vector<Deed> deeds_;
    std::vector<Unit> units_;
    int generation_ = 0;
    bool quit_ = false;
};

}  // namespace campaign
