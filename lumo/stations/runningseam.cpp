#include "stations/runningseam.h"

#include "program/runprogram.h"
#include "program/seamahead.h"

#include <algorithm>

using namespace prog;

namespace lumo {

RunningSeam::RunningSeam(const Record& record) {
    const RunProgram program(record);
    for (int line = 0; line < program.lineCount(); ++line) {
        const Statement statement = program.statement(line);
        if (!statement.executed || statement.type != StatementType::Open) {
            continue;
        }
        Seam seam;
        seam.first = seam.last = line;
        Pose start;
        if (const std::optional<RunProgram::Target> target = program.targetBefore(line)) {
            const TaughtPoint point = program.point(*target);
            start = {point.trans, point.rot};
        }
        seam.pieces = seamAhead(program, line + 1, start);
        for (int move = line + 1; seam.lines.size() < seam.pieces.size(); ++move) {
            if (program.isMove(move) && program.isExecuted(move)) {
                seam.lines.push_back(move);
            }
        }
        for (const PathPiece& piece : seam.pieces) {
            seam.lengthM += piece.lengthM();
        }
        seam.last = seam.lines.empty() ? line : seam.lines.back();
        seams_.push_back(seam);
    }
}

SeamProgress RunningSeam::at(int line, const Position& tool) const {
    SeamProgress progress;
    progress.seams = static_cast<int>(seams_.size());
    if (seams_.empty()) {
        return progress;
    }
    // Behind its last move a seam is whole, until the next one begins.
    const auto next =
        std::find_if(seams_.begin(), seams_.end(), [line](const Seam& seam) { return seam.first > line; });
    const auto shown = next == seams_.begin() ? next : next - 1;
    progress.seam = static_cast<int>(shown - seams_.begin()) + 1;
    progress.isInside = line >= shown->first && line <= shown->last;
    if (line > shown->last) {
        progress.share = 1.0;
    } else if (progress.isInside && shown->lengthM > 0) {
        progress.share = weldedM(*shown, line, tool) / shown->lengthM;
    }
    return progress;
}

double RunningSeam::weldedM(const Seam& seam, int line, const Position& tool) {
    double welded = 0.0;
    for (std::size_t i = 0; i < seam.lines.size() && seam.lines[i] <= line; ++i) {
        welded += seam.lines[i] < line ? seam.pieces[i].lengthM() : seam.pieces[i].nearestM(tool);
    }
    return welded;
}

}  // namespace lumo
