#include "workcell/seamtally.h"

#include <algorithm>

namespace workcell {

namespace {

constexpr double stillMm = 1e-6;  // what the sums of a standing tool's path differ by
constexpr double leastGapMm = 0.05;

void roundPoint(std::optional<EmissionPoint>& point) {
    if (point) {
        point->atS = rounded(point->atS);
        point->transMm = {rounded(point->transMm.x), rounded(point->transMm.y), rounded(point->transMm.z)};
    }
}

void roundAll(SeamRecord& record) {
    roundPoint(record.start);
    roundPoint(record.end);
    for (double* number :
         {&record.programmedMm, &record.weldedMm, &record.overlapMm, &record.fullPowerMm, &record.laserOnS,
          &record.standingS, &record.energyPctS, &record.gasLeadS, &record.gasTailS}) {
        *number = rounded(*number);
    }
    for (DarkGap& gap : record.darkGaps) {
        gap = {rounded(gap.fromMm), rounded(gap.toMm)};
    }
}

}  // namespace

SeamTally::SeamTally(int openLine, const QString& set, const QString& project, double openedAtMm) {
    record_.openedAtMm = openedAtMm;
    record_.openLine = openLine;
    record_.set = set;
    record_.project = project;
}

void SeamTally::addEmission(const Stretch& stretch) {
    record_.laserOnS += stretch.seconds;
    record_.energyPctS += stretch.powerPct * stretch.seconds;
    if (stretch.pathMm <= stillMm) {
        record_.standingS += stretch.seconds;
        return;
    }
    const double overlapMm = std::min(stretch.pathMm, overlapLeftMm_);
    overlapWeldedMm_ += overlapMm;
    record_.weldedMm += stretch.pathMm - overlapMm;
    if (stretch.atSetPower) {
        record_.fullPowerMm += stretch.pathMm - overlapMm;
    }
}

void SeamTally::addPath(const Stretch& stretch) {
    if (stretch.pathMm <= stillMm) {
        return;
    }
    const double overlapMm = std::min(stretch.pathMm, overlapLeftMm_);
    overlapLeftMm_ -= overlapMm;
    record_.overlapMm += overlapMm;
    record_.programmedMm += stretch.pathMm - overlapMm;
    if (stretch.pathMm - overlapMm <= stillMm) {
        return;
    }
    const Kind kind = stretch.emitting ? Kind::Lit : stretch.betweenPulses ? Kind::BetweenPulses : Kind::Dark;
    if (pieces_.empty() || pieces_.back().kind != kind) {
        pieces_.push_back({kind, record_.programmedMm});
    }
    pieces_.back().toMm = record_.programmedMm;
}

void SeamTally::beginEmission(const EmissionPoint& point, double gasOnS) {
    if (!record_.start) {
        record_.start = point;
        record_.gasLeadS = gasOnS;
    }
    isEmitting_ = true;
    gasEndS_.reset();
}

void SeamTally::endEmission(const EmissionPoint& point, bool gasIsOn) {
    record_.end = point;
    isEmitting_ = false;
    if (!gasIsOn) {
        gasEndS_ = point.atS;
    }
}

void SeamTally::endGas(double atS) {
    if (!isEmitting_ && !gasEndS_) {
        gasEndS_ = atS;
    }
}

void SeamTally::addFault(const QString& name) {
    if (!record_.faults.contains(name)) {
        record_.faults.append(name);
    }
}

void SeamTally::close(std::optional<int> line) {
    record_.closeLine = line;
    isClosed_ = true;
}

/// The parts without emission; those between two emissions that consist of nothing but pauses of the pulses
/// are none.
std::vector<DarkGap> SeamTally::gaps() const {
    std::vector<DarkGap> found;
    double fromMm = 0.0;
    for (std::size_t i = 0; i < pieces_.size();) {
        bool onlyPauses = i > 0;
        const double beginMm = fromMm;
        for (; i < pieces_.size() && pieces_[i].kind != Kind::Lit; ++i) {
            onlyPauses = onlyPauses && pieces_[i].kind == Kind::BetweenPulses;
            fromMm = pieces_[i].toMm;
        }
        const bool isPause = onlyPauses && i < pieces_.size();
        if (!isPause && rounded(fromMm - beginMm) >= leastGapMm) {
            found.push_back({beginMm, fromMm});
        }
        for (; i < pieces_.size() && pieces_[i].kind == Kind::Lit; ++i) {
            fromMm = pieces_[i].toMm;
        }
    }
    return found;
}

SeamRecord SeamTally::record(const EmissionPoint& now, std::optional<double> ratedWatts) const {
    constexpr double percent = 100.0;
    SeamRecord record = record_;
    if (isEmitting_) {
        record.end = now;
    }
    if (record.end) {
        record.gasTailS = gasEndS_.value_or(now.atS) - record.end->atS;
    }
    record.darkGaps = gaps();
    roundAll(record);
    const double litMm = record.weldedMm + overlapWeldedMm_;
    const double movingS = record.laserOnS - record.standingS;
    if (movingS > 0.0) {
        record.meanSpeedMmPerS = rounded(litMm / movingS);
    }
    if (ratedWatts && litMm > 0.0) {
        record.heatJPerMm = rounded(record.energyPctS / percent * *ratedWatts / litMm);
    }
    return record;
}

}  // namespace workcell
