#include "workcell/safety/step.h"

#include <algorithm>
#include <utility>

namespace workcell::safety {

namespace {

bool isRequest(const Event& event) {
    return event.kind == Kind::Start || event.kind == Kind::Once;
}

/// Adds to each event which actions, walks, steps and pauses are under way.
class Walk {
public:
    Step next(const Event& event);

private:
    struct Action {
        Event event;
        bool counted;  ///< it has increased the depth
    };

    void carryOutputs(Step* step);
    void carryActions(Step* step);
    bool carryDepth(Step* step);

    std::optional<Step> last_;
    std::vector<Action> actions_;
    std::vector<Run> units_;  ///< one for each level of the depth
    bool quits_ = false;
};

Step Walk::next(const Event& event) {
    Step step{event};
    carryOutputs(&step);
    carryActions(&step);
    bool disturbs = event.kind == Kind::Pause || event.kind == Kind::Quit || step.isPowerLoss();
    disturbs |= carryDepth(&step);
    for (Run& unit : units_) {
        unit.disturbed |= disturbs;
        if (isRequest(unit.asked)) {
            step.current = unit;
        }
    }
    quits_ |= event.kind == Kind::Quit;
    const bool inLoss = std::any_of(actions_.begin(), actions_.end(), [](const Action& action) {
        return action.event.kind == Kind::Power && action.event.value == 0;
    });
    step.inPower = quits_ || inLoss;
    step.asking = !actions_.empty() && !actions_.back().counted && isRequest(actions_.back().event);
    last_ = step;
    return step;
}

void Walk::carryOutputs(Step* step) {
    if (!last_) {
        return;
    }
    step->outputs = last_->outputs;
    step->byHand = last_->byHand;
    const auto port = std::size_t(std::max(0, last_->port));
    if (last_->kind == Kind::Write) {
        step->outputs[port] = last_->value;
        step->byHand[port] = last_->value == 0 ? 0 : step->byHand[port];
    } else if (last_->kind == Kind::ByHand) {
        step->outputs[port] = last_->value == 0 ? 0 : step->outputs[port];
        step->byHand[port] = last_->value;
    }
}

void Walk::carryActions(Step* step) {
    if (step->kind == Kind::Done && !actions_.empty()) {  // of the innermost action
        if (isRequest(actions_.back().event) && !actions_.back().counted) {
            step->refused = actions_.back().event;
        }
        actions_.pop_back();
    } else if (step->kind <= Kind::Act) {
        actions_.push_back({*step, false});
    }
}

/// Returns whether a pause, or the end of a run after a motion error, has begun.
bool Walk::carryDepth(Step* step) {
    bool pauses = false;
    while (step->kind == Kind::Wait && int(units_.size()) < step->depth) {
        const bool answers = !actions_.empty() && !std::exchange(actions_.back().counted, true);
        Event pause;
        pause.kind = Kind::Pause;
        units_.push_back({answers ? actions_.back().event : pause});
        if (isRequest(units_.back().asked)) {
            step->begun = units_.back();
        } else {
            pauses = true;
        }
    }
    while (step->kind == Kind::Wait && int(units_.size()) > step->depth) {
        if (isRequest(units_.back().asked)) {
            step->ended = units_.back();
        }
        units_.pop_back();
    }
    return pauses;
}

}  // namespace

QString Step::on() const {
    QString names;
    for (const I_PORT which : {DO_GAS, DO_WIRE_ENABLE, DO_WIRE_PULLBACK, DO_LASER_ENABLE, AO_LASER_POWER,
                               AO_LASER_FREQUENCY, AO_LASER_DUTY_CYCLE}) {
        names += outputs[which] > 0 ? QLatin1Char(' ') + prog::portInfo(which).word : QString();
    }
    return names;
}

Steps stepsOf(const std::vector<Event>& events) {
    Walk walk;
    Steps steps;
    steps.reserve(events.size());
    for (const Event& event : events) {
        steps.push_back(walk.next(event));
    }
    return steps;
}

}  // namespace workcell::safety
