#pragma once

#include "workcell/runrecord.h"

#include <vector>

namespace workcell {

/// What happened between two moments in which only time went on and the tool's place changed.
struct Stretch {
    double seconds = 0.0;
    double pathMm = 0.0;  ///< travelled by the tool
    bool emitting = false;
    bool betweenPulses = false;  ///< dark because the set pulses the laser
    double powerPct = 0.0;       ///< of the source
    bool atSetPower = false;     ///< the power is that of the set in force, or more
};

/// Adds up one seam from its opening on.
class SeamTally {
public:
    SeamTally(int openLine, const QString& set, const QString& project, double openedAtMm);
    /// The seam begins with that much path that is welded already.
    void setOverlap(double mm) { overlapLeftMm_ = mm; }

    /// The laser emits for this seam.
    void addEmission(const Stretch& stretch);
    /// The tool moves along the seam's programmed path; the laser may emit or not.
    void addPath(const Stretch& stretch);
    /// `gasOnS`: how long the gas has been on, 0: it is off.
    void beginEmission(const EmissionPoint& point, double gasOnS);
    void endEmission(const EmissionPoint& point, bool gasIsOn);
    void endGas(double atS);
    void addFault(const QString& name);
    /// What closes the seam: the "close" of a line, or something else.
    void close(std::optional<int> line);
    /// No "close" came up to the program's end.
    void setEndless() { record_.isEndless = true; }

    [[nodiscard]] bool isClosed() const { return isClosed_; }
    [[nodiscard]] bool isEmitting() const { return isEmitting_; }
    [[nodiscard]] bool hasEmitted() const { return record_.start.has_value(); }
    /// Whether the gas that followed the last emission is still on.
    [[nodiscard]] bool hasGas() const { return hasEmitted() && !gasEndS_; }

    /// The record at a moment, `now`, which is also the last emission so far while the laser emits. Without
    /// `ratedWatts` there is no heat.
    [[nodiscard]] SeamRecord record(const EmissionPoint& now, std::optional<double> ratedWatts) const;

private:
    enum class Kind { Lit, BetweenPulses, Dark };
    /// A part of the programmed path, from the end of the one before.
    struct Piece {
        Kind kind;
        double toMm;
    };
    [[nodiscard]] std::vector<DarkGap> gaps() const;

    SeamRecord record_;
    std::vector<Piece> pieces_;
    double overlapLeftMm_ = 0.0;    ///< path still to come that is welded already
    double overlapWeldedMm_ = 0.0;  ///< of the overlap, emitting
    bool isClosed_ = false;
    bool isEmitting_ = false;
    std::optional<double> gasEndS_;  ///< when the gas went off after the last emission
};

}  // namespace workcell
