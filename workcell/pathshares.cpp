#include "workcell/pathshares.h"

#include <algorithm>
#include <utility>

namespace workcell {

namespace {

constexpr double msPerS = 1000.0;
/// A moving arm's place is told at least every 50 ms, and once or twice a little late: what lies longer back
/// was standstill.
constexpr double longestMs = 100.0;

PathShares::Piece partOf(const PathShares::Piece& piece, double fromMs, double toMs, double pathMm) {
    PathShares::Piece part = piece;
    part.fromMs = fromMs;
    part.toMs = toMs;
    part.stretch.seconds = (toMs - fromMs) / msPerS;
    part.stretch.pathMm = pathMm;
    return part;
}

void addPart(const PathShares::Piece& piece) {
    if (piece.lit) {
        piece.lit->addEmission(piece.stretch);
    }
    if (piece.onPath) {
        piece.onPath->addPath(piece.stretch);
    }
}

}  // namespace

void PathShares::begin(double atMs, double travelledMm) {
    pieces_.clear();
    toldMs_ = atMs;
    toldMm_ = travelledMm;
}

void PathShares::add(const Piece& piece) {
    pieces_.push_back(piece);
}

void PathShares::tell(double atMs, double travelledMm) {
    if (pieces_.empty() || (atMs <= toldMs_ && atMs < pieces_.front().toMs)) {
        return;
    }
    const double pathMm = travelledMm - toldMm_;
    const double movedFromMs = pathMm > 0.0 ? std::max(toldMs_, atMs - longestMs) : toldMs_;
    const double spanMs = atMs - movedFromMs;
    toldMs_ = atMs;
    toldMm_ = travelledMm;
    const std::vector<Piece> waiting = std::exchange(pieces_, {});
    for (const Piece& piece : waiting) {
        const double standsUntilMs = std::clamp(movedFromMs, piece.fromMs, piece.toMs);
        const double untilMs = std::clamp(atMs, piece.fromMs, piece.toMs);
        if (standsUntilMs > piece.fromMs) {
            addPart(partOf(piece, piece.fromMs, standsUntilMs, 0.0));
        }
        if (untilMs > standsUntilMs || piece.toMs == piece.fromMs) {
            const double share = spanMs > 0.0 ? (untilMs - standsUntilMs) / spanMs : 1.0;
            addPart(partOf(piece, standsUntilMs, untilMs, pathMm * share));
        }
        if (piece.toMs > untilMs) {
            pieces_.push_back(partOf(piece, untilMs, piece.toMs, 0.0));
        }
    }
}

void PathShares::settle(double untilMs) {
    const auto first = std::find_if(pieces_.begin(), pieces_.end(),
                                    [untilMs](const Piece& piece) { return piece.toMs > untilMs; });
    const std::vector<Piece> settled(pieces_.begin(), first);
    pieces_.erase(pieces_.begin(), first);
    // cppcheck-suppress invalidContainer  ; these are copies
    for (const Piece& piece : settled) {
        toldMs_ = std::max(toldMs_, piece.toMs);
        addPart(partOf(piece, piece.fromMs, piece.toMs, 0.0));
    }
}

bool PathShares::concerns(const SeamTally* seam) const {
    return std::any_of(pieces_.begin(), pieces_.end(),
                       [seam](const Piece& piece) { return piece.lit == seam || piece.onPath == seam; });
}

}  // namespace workcell
