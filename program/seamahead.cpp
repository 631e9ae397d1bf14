#include "program/seamahead.h"

namespace prog {

namespace {

Pose poseOf(const TaughtPoint& point) {
    return {point.trans, point.rot};
}

PathPiece pieceOf(const Statement& move, const Pose& start) {
    const Pose first = poseOf(move.point), second = poseOf(move.point1);
    if (move.type == StatementType::MoveC) {
        const std::optional<Arc> arc = Arc::through(start.trans, first.trans, second.trans);
        return arc ? PathPiece::arc(*arc, {start.rot, second.rot}) : PathPiece::line(start, second);
    }
    if (move.type == StatementType::MoveCC) {
        const std::optional<Arc> arc = Arc::circle(start.trans, first.trans, second.trans);
        return arc ? PathPiece::arc(*arc, {start.rot, first.rot, second.rot, start.rot})
                   : PathPiece::line(start, start);
    }
    return PathPiece::line(start, first);
}

}  // namespace

std::vector<PathPiece> seamAhead(const RunProgram& program, int line, Pose start) {
    std::vector<PathPiece> pieces;
    for (int i = line; i < program.lineCount(); ++i) {
        const Statement statement = program.statement(i);
        if (!statement.executed) {
            continue;
        }
        if (statement.type == StatementType::Open || statement.type == StatementType::Close) {
            break;
        }
        if (statement.moves) {
            pieces.push_back(pieceOf(statement, start));
            start = pieces.back().at(pieces.back().lengthM());
        }
    }
    return pieces;
}

}  // namespace prog
