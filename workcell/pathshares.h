#pragma once

#include "workcell/seamtally.h"

#include <vector>

namespace workcell {

/// Shares the tool's path out to what happened on it.
///
/// A controller tells from time to time, and a little later, where the arm was. The path between two such
/// moments belongs to all that happened between them, in proportion to the time. So each piece of time waits
/// until the controller has told where the arm was at its end; of the simulated one that is known at once.
class PathShares {
public:
    /// A piece of time in which only the tool's place changed. The times are the host's clock's, ms.
    struct Piece {
        double fromMs = 0.0, toMs = 0.0;
        Stretch stretch;              ///< its time and path are filled in when they are known
        SeamTally* lit = nullptr;     ///< the emission belongs to it
        SeamTally* onPath = nullptr;  ///< the motion belongs to it
    };

    /// Nothing waits; the tool had travelled so far at that moment.
    void begin(double atMs, double travelledMm);
    /// The next piece, which follows on the one before.
    void add(const Piece& piece);
    /// How far the tool had travelled at a moment: what happened up to then is added to its seams.
    void tell(double atMs, double travelledMm);
    /// What still waits and ended by then is added: the tool stood.
    void settle(double untilMs);

    [[nodiscard]] bool isWaiting() const { return !pieces_.empty(); }
    /// Whether a piece that waits belongs to it.
    [[nodiscard]] bool concerns(const SeamTally* seam) const;

private:
    std::vector<Piece> pieces_;
    double toldMs_ = 0.0, toldMm_ = 0.0;
};

}  // namespace workcell
