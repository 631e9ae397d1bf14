#pragma once

#include "workcell/safety/event.h"

#include <QObject>

#include <array>
#include <optional>
#include <vector>

namespace sim {
class Controller;
}

namespace workcell::safety {

/// Records events with the state of the cell, for the rules to judge.
class EventRecorder {
public:
    /// Times count from now; what comes before is not recorded.
    void begin(QObject* executor);
    /// Adds an event with its time and state.
    void record(Event event);
    /// Something that somebody does begins; returned() belongs to the last one that has not returned.
    void acts(Event event);
    void returned();
    /// Records a fault of the course itself.
    void complain(const QString& text);
    /// Everything is over: records the outputs of the equipment that the controller still has on, and what
    /// the executor and the screen have left.
    void end(const sim::Controller* controller);

    [[nodiscard]] const std::vector<Event>& events() const { return events_; }
    [[nodiscard]] qint64 nowMs() const;

private:
    void readState(Event* event) const;
    [[nodiscard]] int objects() const;

    QObject* executor_ = nullptr;  ///< also: whether recording has begun
    std::vector<Event> events_;
    std::vector<int> open_;  ///< numbers of the actions that have not returned
    std::array<int, prog::portCount> byHand_{};
    qint64 startMs_ = 0;
    int actions_ = 0;
    int objectsBefore_ = 0;
};

/// The request of a start or single step at a line, as the tree is now. `kind`: Start or Once.
[[nodiscard]] Event requestOf(Kind kind, int line, int runMode);

}  // namespace workcell::safety
