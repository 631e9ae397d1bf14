#include "runner/stationwatch.h"

#include <utility>

namespace run {

StationWatch::StationWatch(std::function<qint64()> clock, std::function<qint64()> laserOn)
    : clock_(std::move(clock)), laserOn_(std::move(laserOn)) {}

void StationWatch::runBegun(bool byStation) {
    addLaserTime();
    begun_ += byStation ? 1 : 0;
    byStation_ = byStation;
    unclaimed_ = byStation;
    row_ = -1;
    begunMs_ = clock_();
}

// The page shows a new run after runBegun(): the first row to change is that of the run.
void StationWatch::stateChanged(int row) {
    if (!unclaimed_) {
        return;
    }
    unclaimed_ = false;
    row_ = row;
    if (figures_.size() <= std::size_t(row)) {
        figures_.resize(std::size_t(row) + 1);
    }
    ++figures_[std::size_t(row)].runs;
}

void StationWatch::runEnded(const QString& reason) {
    unclaimed_ = false;
    const bool isFinished = reason == QLatin1String("finished");
    finished_ += byStation_ && isFinished ? 1 : 0;
    byStation_ = false;
    if (row_ < 0) {
        return;
    }
    StationFigures& station = figures_[std::size_t(row_)];
    station.busyMs += clock_() - begunMs_;
    if (isFinished) {
        ++station.finished;
    }
}

void StationWatch::addLaserTime() {
    const qint64 now = laserOn_();
    if (row_ >= 0) {
        figures_[std::size_t(row_)].laserMs += now - laserBeforeMs_;
    }
    laserBeforeMs_ = now;
}

std::vector<StationFigures> StationWatch::figures() const {
    std::vector<StationFigures> figures = figures_;
    if (row_ >= 0) {
        figures[std::size_t(row_)].laserMs += laserOn_() - laserBeforeMs_;
    }
    return figures;
}

}  // namespace run
