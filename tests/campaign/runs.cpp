#include "campaign/runs.h"

#include <algorithm>

namespace campaign {

namespace {

bool asksForRun(const Event& event) {
    return event.kind == Event::Kind::Start || event.kind == Event::Kind::Once;
}

bool isAction(const Event& event) {
    switch (event.kind) {
        case Event::Kind::Start:
        case Event::Kind::Once:
        case Event::Kind::Pause:
        case Event::Kind::Power:
        case Event::Kind::Quit:
        case Event::Kind::Replace:
        case Event::Kind::Quirk:
        case Event::Kind::Act:
            return true;
        default:
            return false;
    }
}

}  // namespace

void Runs::on(const Event& event) {
    begun_.reset();
    ended_.reset();
    refused_.reset();
    if (isAction(event)) {
        actions_.push_back({event});
    } else if (event.kind == Event::Kind::Done) {
        close(event);
    } else if (event.kind == Event::Kind::Activity) {
        while (static_cast<int>(units_.size()) < event.facts.depth) {
            enter();
        }
        while (static_cast<int>(units_.size()) > event.facts.depth) {
            leave();
        }
    }
    quit_ |= event.kind == Event::Kind::Quit;
    if (event.kind == Event::Kind::Replace) {
        ++generation_;
    }
    if (event.kind == Event::Kind::Pause || event.kind == Event::Kind::Quit ||
        (event.kind == Event::Kind::Power && event.value == 0)) {
        disturb();
    }
}

/// The depth grew by one: a run or a pause that the innermost action asked for, or the pause that a
/// run does for itself after a motion error.
void Runs::enter() {
    const bool answers = !actions_.empty() && !actions_.back().counted;
    if (answers && asksForRun(actions_.back().event)) {
        begun_ = Run{actions_.back().event, generation_};
        units_.push_back({true, *begun_});
    } else {
        disturb();
        units_.push_back({false, {}});
    }
    if (answers) {
        actions_.back().counted = true;
    }
}

void Runs::leave() {
    if (units_.back().isRun) {
        ended_ = units_.back().run;
    }
    units_.pop_back();
}

void Runs::disturb() {
    for (Unit& unit : units_) {
        unit.run.disturbed = true;
    }
}

void Runs::close(const Event& done) {
    const auto found = std::find_if(actions_.rbegin(), actions_.rend(), [&done](const Action& action) {
        return action.event.action == done.action;
    });
    if (found == actions_.rend()) {
        return;
    }
    if (asksForRun(found->event) && !found->counted) {
        refused_ = found->event;
    }
    actions_.erase(std::next(found).base());
}

const Run* Runs::current() const {
    const auto found =
        std::find_if(units_.rbegin(), units_.rend(), [](const Unit& unit) { return unit.isRun; });
    return found == units_.rend() ? nullptr : &found->run;
}

int Runs::count() const {
    return static_cast<int>(
        std::count_if(units_.begin(), units_.end(), [](const Unit& unit) { return unit.isRun; }));
}

bool Runs::asking() const {
    return !actions_.empty() && !actions_.back().counted && asksForRun(actions_.back().event);
}

bool Runs::inPower() const {
    return quit_ || std::any_of(actions_.begin(), actions_.end(), [](const Action& action) {
               return action.event.kind == Event::Kind::Power && action.event.value == 0;
           });
}

}  // namespace campaign
