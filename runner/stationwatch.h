#pragma once

#include <QString>

#include <functional>
#include <vector>

namespace run {

/// What a station did.
struct StationFigures {
    int runs = 0;      ///< accepted by the executor
    int finished = 0;  ///< of them, those that came to the end of their program
    qint64 busyMs = 0;
    qint64 laserMs = 0;  ///< from the start of its runs to the start of the next one, whoever's that is
};

/// Assigns the executor's runs to the stations that they belong to.
class StationWatch {
public:
    /// `clock` and `laserOn` tell ms: the time, and how long the laser was on so far.
    StationWatch(std::function<qint64()> clock, std::function<qint64()> laserOn);

    /// A run was accepted; `byStation`: not by the operator's hand.
    void runBegun(bool byStation);
    void runEnded(const QString& reason);
    /// The state text of a station changed.
    void stateChanged(int row);

    /// Whether every run that a station began came to the end of its program.
    bool allFinished() const { return begun_ == finished_; }

    /// Up to now. Rows that had no run may be missing at the end.
    std::vector<StationFigures> figures() const;

private:
    void settleLaser();

    std::function<qint64()> clock_, laserOn_;
    std::vector<StationFigures> figures_;
    int begun_ = 0, finished_ = 0;  ///< runs of stations
    bool byStation_ = false;        ///< the last run
    bool unclaimed_ = false;        ///< a station's run has begun, the first row to change is its own
    int row_ = -1;                  ///< of the last run, -1: the hand's
    qint64 begunMs_ = 0;
    qint64 laserBeforeMs_ = 0;
};

}  // namespace run
