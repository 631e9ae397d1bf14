#include "executor/weldedpath.h"

#include <QtGlobal>

#include <algorithm>
#include <cmath>
#include <numeric>

using namespace prog;

namespace lumo {

namespace {

uint hashOf(const TaughtPoint& point, uint seed) {
    for (const double number :
         {point.trans.x, point.trans.y, point.trans.z, point.rot[0], point.rot[1], point.rot[2]}) {
        seed = qHash(number, seed);
    }
    return seed;
}

uint hashOf(const Statement& move) {
    return hashOf(move.point1, hashOf(move.point, uint(move.type)));
}

/// The executed move before a line in the same weld; -1 for none.
int moveBefore(const RunProgram& program, int line, int open) {
    int before = line - 1;
    while (before > open && !(program.isMove(before) && program.isExecuted(before))) {
        --before;
    }
    return before > open ? before : -1;
}

}  // namespace

int WeldedPath::find(const QString& name) const {
    const auto found =
        std::find_if(moves_.rbegin(), moves_.rend(), [&name](const Move& move) { return move.name == name; });
    return int(moves_.rend() - found) - 1;
}

void WeldedPath::queued(const Run& run, int line, const Pose& start, const QueuedArc* arc) {
    const QString name = run.name(line);
    const uint points = hashOf(run.program.statement(line));
    const int known = find(name);
    if (known >= 0) {
        moves_.resize(std::size_t(known) + 1);
        if (moves_.back().points == points) {
            return;
        }
        moves_.pop_back();
    }
    moves_.push_back({name, points, start, arc ? std::make_optional(*arc) : std::nullopt});
}

/// The move at a position of the list, where it is that of a line, as it was welded.
const WeldedPath::Move* WeldedPath::unchanged(const Run& run, int line, int at) const {
    if (line < 0 || at < 0) {
        return nullptr;
    }
    const Move& move = moves_[std::size_t(at)];
    const bool isSame = move.name == run.name(line) && move.points == hashOf(run.program.statement(line));
    return isSame ? &move : nullptr;
}

std::optional<PathPiece> WeldedPath::pieceOf(const Move& move, const Statement& statement) {
    if (statement.type == StatementType::MoveL) {
        return PathPiece::line(move.start, {statement.point.trans, statement.point.rot});
    }
    const std::optional<Arc> arc = move.arc ? move.arc->arc() : std::nullopt;
    if (!arc) {
        return std::nullopt;
    }
    if (statement.type == StatementType::MoveC) {
        return PathPiece::arc(*arc, {move.start.rot, statement.point1.rot});
    }
    return PathPiece::arc(*arc, {move.start.rot, statement.point.rot, statement.point1.rot, move.start.rot});
}

WeldedPath::Pieces WeldedPath::pieces(const Run& run, int line, const Position& tool, double reached) const {
    const RunProgram& program = run.program;
    const int open = program.weldOf(line);
    Pieces found;
    // A stop in a statement that moves nothing: all of the move before it is welded.
    int at = program.isMove(line) ? line : moveBefore(program, line, open);
    int index = at < 0 ? -1 : find(run.name(at));
    for (const Move* move = unchanged(run, at, index); move; move = unchanged(run, at, --index)) {
        const std::optional<PathPiece> piece = pieceOf(*move, program.statement(at));
        if (!piece) {
            break;
        }
        const double toM = at != line     ? piece->lengthM()
                           : piece->arc() ? reached * piece->arc()->radiusM()
                                          : piece->nearestM(tool);
        found.list.push_back({at, *piece, toM, move->arc});
        at = moveBefore(program, at, open);
    }
    found.isWhole = index < 0;
    return found;
}

double WeldedPath::Pieces::lengthM() const {
    return std::accumulate(list.begin(), list.end(), 0.0,
                           [](double sum, const Piece& piece) { return sum + piece.toM; });
}

Overlap WeldedPath::back(const Run& run, int line, const Position& tool, double reached, double mm) {
    Overlap overlap;
    if (mm <= 0.0 && furthestM_ <= 0.0) {
        return overlap;
    }
    const Pieces welded = pieces(run, line, tool, reached);
    double leftM = mm / mmPerM;
    for (const Piece& piece : welded.list) {
        const double toM = std::max(0.0, piece.toM - leftM);
        constexpr double leastM = 1e-5;
        if (piece.toM - toM > leastM) {
            const std::vector<WayBack> way = wayBack(piece.path, piece.toM, toM);
            overlap.way.insert(overlap.way.end(), way.begin(), way.end());
            overlap.line = piece.line;
            overlap.rest.reset();
            if (piece.arc) {
                overlap.rest = Arcs::Begun{*piece.arc, toM / piece.path.arc()->radiusM(),
                                           pointsOf(run.record(piece.line))};
            }
        }
        leftM -= piece.toM - toM;
    }
    const double mmBack = mm - leftM * mmPerM;
    double ahead = 0.0;
    if (welded.isWhole) {
        furthestM_ = std::max(furthestM_, welded.lengthM());
        ahead = (furthestM_ - welded.lengthM()) * mmPerM;
    }
    constexpr double parts = 1e6;  // the noise of the sum does not show
    overlap.weldedMm = std::round((mmBack + ahead) * parts) / parts;
    return overlap;
}

}  // namespace lumo
