#pragma once

#include "stations/runningseam.h"
#include "stations/stationcards.h"
#include "stations/stationqueue.h"

#include <optional>

class QTableWidget;

namespace lumo {

class StationRows;

/// What the page of the stations shows live: lamps, turns, and the three cards. It also counts what became of
/// the projects that were asked for.
class StationView {
public:
    /// Table and cards are not owned.
    StationView(QTableWidget* table, StationCards* cards);

    /// The counts begin anew.
    void listen();
    void stopListening() { tally_.since.clear(); }
    void runBegan();
    /// A run is over: it came to its end, or was stopped.
    void runEnded(bool toItsEnd);
    /// A project was not started.
    void refused() { ++tally_.refused; }

    /// Shows all. `firstWaits`: the queue's first project is not being started yet; `runs`: it runs;
    /// `isHeld`: a stop input lets nothing start.
    void show(const StationQueue& queue, bool firstWaits, bool runs, bool isHeld);

private:
    void showLamps();
    [[nodiscard]] StationCards::Running running(const StationQueue::Entry& entry);

    StationRows* const rows_;
    StationCards* const cards_;
    StationTally tally_;
    std::optional<RunningSeam> seam_;  ///< of the run under way, made when it is shown
    qint64 runSinceMs_ = 0;            ///< host clock
};

/// The name of the station that asked first for a project.
[[nodiscard]] QString stationName(const StationQueue::Entry& entry);

}  // namespace lumo
