#pragma once

#include "executor/arcs.h"
#include "executor/run.h"
#include "program/pathpiece.h"

#include <QString>

#include <optional>
#include <vector>

namespace lumo {

/// Where a resumed weld opens the laser so that it overlaps what is welded.
struct Overlap {
    int line = -1;                    ///< of the move in which it begins
    double weldedMm = 0.0;            ///< path from there on that is welded already
    std::vector<prog::WayBack> way;   ///< to there, along the path
    std::optional<Arcs::Begun> rest;  ///< what is left of that move, where it is an arc
};

/// The path of the weld that was opened last: its moves in the order in which runs queued them. It outlives
/// the runs, and goes with the next opening.
class WeldedPath {
public:
    /// A start of welding has opened the laser, or a weld is left as it is: nothing is welded of the next.
    void clear() {
        moves_.clear();
        furthestM_ = 0.0;
    }
    /// A move of the weld is queued from a place. `command`: of an arc. A move that was queued before keeps
    /// the place from which it was queued first; those behind it are forgotten.
    void queued(const Run& run, int line, const prog::Pose& start, const QueuedArc* arc);

    /// The overlap of a weld that a run takes up at a line. `tool`: where the tool stands. `reached`: angle
    /// on the arc of the line that is done. At most `mm` long; it ends early at the seam's start, at a joint
    /// move and at moves that were changed, removed or inserted since. Empty where nothing can be overlapped.
    [[nodiscard]] Overlap back(const Run& run, int line, const prog::Position& tool, double reached,
                               double mm);

    /// A move of the weld as far as it is welded.
    struct Piece {
        int line;
        prog::PathPiece path;
        double toM;
        std::optional<QueuedArc> arc;
    };
    struct Pieces {
        std::vector<Piece> list;  ///< from the stop back
        bool isWhole = false;     ///< to the seam's start
        [[nodiscard]] double lengthM() const;
    };
    /// What of the weld can be gone back, for a stop in a line. Arguments as back().
    [[nodiscard]] Pieces pieces(const Run& run, int line, const prog::Position& tool, double reached) const;

private:
    struct Move {
        QString name;  ///< of the statement
        uint points;   ///< a hash of its points
        prog::Pose start;
        std::optional<QueuedArc> arc;
    };
    [[nodiscard]] int find(const QString& name) const;
    [[nodiscard]] const Move* unchanged(const Run& run, int line, int at) const;
    [[nodiscard]] static std::optional<prog::PathPiece> pieceOf(const Move& move,
                                                                const prog::Statement& statement);

    std::vector<Move> moves_;
    double furthestM_ = 0.0;  ///< from the seam's start, where the weld came before it was overlapped
};

}  // namespace lumo
