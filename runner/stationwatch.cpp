#include "runner/stationwatch.h"

namespace run {

StationWatch::StationWatch(std::function<qint64()> clock, std::function<qint64()> laserOn)
    : clock_(std::move(clock)), laserOn_(std::move(laserOn)) {}

void StationWatch::runBegun(bool byStation) {
    settleLaser();
    begun_ += byStation ? 1 : 0;
    byStation_ = byStation;
    unclaimed_ = byStation;
    row_ = -1;
    begunMs_ = clock_();
}

// The page shows the run at the notification that also brings it here, only later.
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
    const bool finished = reason == QLatin1String("finished");
    finished_ += byStation_ && finished ? 1 : 0;
    byStation_ = false;
    if (row_ < 0) {
        return;
    }
    StationFigures& station = figures_[std::size_t(row_)];
    station.busyMs += clock_() - begunMs_;
    if (finished) {
        ++station.finished;
    }
}

void StationWatch::settleLaser() {
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
