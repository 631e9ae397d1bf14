#pragma once

#include "executor/circle.h"
#include "module/host.h"

#include <QString>

#include <map>
#include <optional>

namespace lumo {

/// The taught points of a statement, to be compared.
[[nodiscard]] QString pointsOf(const ModuleObject* stmt);

/// The arcs and full circles that a run has queued, the one that a stop interrupted, and what is left of it
/// for the run that takes it up.
class Arcs {
public:
    /// An arc of which a part is done.
    struct Begun {
        QueuedArc queued;
        double reached = 0.0;  ///< angle on it
        QString points;        ///< the statement's points then
    };

    /// A run's end: what was stopped is kept.
    void endRun();

    void keep(int line, const prog::Pose& start, const ModuleObject* command);
    /// What is left of an arc is queued.
    void keepRest(int line, const Begun& rest);
    /// The arc that a line has queued; null for none.
    [[nodiscard]] const QueuedArc* queuedBy(int line) const;

    // --- Stops --------------------------------------------------------------------------------

    /// A stop interrupts a line `seconds` after its motion was awaited: keeps its arc, if it is one.
    void stopIn(int line, const ModuleObject* record, const prog::Position& tool, double seconds);
    void forgetStopped() { stopped_.reset(); }
    /// Angle on the stopped arc; 0 without one.
    [[nodiscard]] double stoppedAt() const { return stopped_ ? stopped_->reached : 0.0; }
    [[nodiscard]] bool hasStopped() const { return stopped_.has_value(); }
    /// A run begins at the line of the stopped arc. False where what is left of it cannot be run from where
    /// the tool stands.
    [[nodiscard]] bool takeUp(int line, const ModuleObject* record, const prog::Position& tool);

    // --- What is left -------------------------------------------------------------------------

    /// How far the run's line has been done, as an angle; 0 where nothing of it is.
    [[nodiscard]] double reachedOn(int line) const;
    /// A line is to be run from an angle on, or (nothing) from its beginning.
    void setRest(int line, const std::optional<Begun>& rest);
    /// What is left of a line's arc, once; nothing for any other line.
    [[nodiscard]] std::optional<Begun> takeRest(int line);

private:
    std::map<int, QueuedArc> queued_;  ///< by the line
    std::optional<Begun> rest_;        ///< of the arc of `restLine_`
    int restLine_ = -1;
    std::optional<Begun> stopped_;
};

}  // namespace lumo
