#pragma once

#include <QString>

#include <functional>
#include <vector>

namespace run {

/// What a station did.
struct StationFigures {
    int runs = 0;      ///< accepted by the executor
    int finished = 0;  ///< runs that reached the end of their program
    qint64 busyMs = 0;
    qint64 laserMs = 0;  ///< from the start of each of its runs to the start of the next run
};

/// Assigns the executor's runs to the stations that started them.
class StationWatch {
public:
    /// `clock` returns the time and `laserOn` how long the laser was on so far, both in ms.
    StationWatch(std::function<qint64()> clock, std::function<qint64()> laserOn);

    /// A run was accepted; `byStation`: by a station, not by hand.
    void runBegun(bool byStation);
    void runEnded(const QString& reason);
    /// The state text of a station changed.
    void stateChanged(int row);

    /// Whether every run of a station reached the end of its program.
    bool allFinished() const { return begun_ == finished_; }

    /// Up to now. The last rows may be missing where they had no run.
    std::vector<StationFigures> figures() const;

private:
    /// Adds the laser's time since the last call to the station of the last run.
    void addLaserTime();

    std::function<qint64()> clock_, laserOn_;
    std::vector<StationFigures> figures_;
    int begun_ = 0, finished_ = 0;  ///< runs of stations
    bool byStation_ = false;        ///< the last run
    bool unclaimed_ = false;        ///< a run of a station has begun, its row is not known yet
    int row_ = -1;                  ///< of the last run; -1: started by hand
    qint64 begunMs_ = 0;
    qint64 laserBeforeMs_ = 0;
};

}  // namespace run
