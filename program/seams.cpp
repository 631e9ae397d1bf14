#include "program/seams.h"

#include "program/seamahead.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace prog {

namespace {

bool switches(const Statement& statement) {
    return statement.executed &&
           (statement.type == StatementType::Open || statement.type == StatementType::Close);
}

/// Where the tool stands at a start of welding: at the end of its first move where nothing comes before.
Pose startOf(const RunProgram& program, const Seam& seam) {
    std::optional<RunProgram::Target> target = program.targetBefore(seam.open);
    if (!target && !seam.lines.empty()) {
        target = RunProgram::Target{seam.lines.front(), false};
    }
    if (!target) {
        return {};
    }
    const TaughtPoint point = program.point(*target);
    return {point.trans, point.rot};
}

}  // namespace

double Seam::lengthM() const {
    return std::accumulate(pieces.begin(), pieces.end(), 0.0,
                           [](double sum, const PathPiece& piece) { return sum + piece.lengthM(); });
}

std::vector<Seam> seamsOf(const RunProgram& program) {
    std::vector<Seam> seams;
    bool isOpen = false;
    for (int line = 0; line < program.lineCount(); ++line) {
        const Statement statement = program.statement(line);
        if (switches(statement)) {
            if (isOpen) {
                seams.back().close = line;
            }
            isOpen = statement.type == StatementType::Open;
            if (isOpen) {
                seams.push_back({line, program.lineCount(), {}, {}});
            }
        } else if (isOpen && statement.executed && statement.moves) {
            seams.back().lines.push_back(line);
        }
    }
    for (Seam& seam : seams) {
        seam.pieces = seamAhead(program, seam.open + 1, startOf(program, seam));
    }
    return seams;
}

void SeamProgress::setSeams(std::vector<Seam> seams) {
    seams_ = std::move(seams);
    begin(0, false);
}

void SeamProgress::begin(int line, bool goesOn) {
    if (!goesOn) {
        along_.assign(seams_.size(), 0.0);
        lit_.assign(seams_.size(), false);
        begun_ = line;
    }
    line_ = -1;
}

/// What ends before a line is passed, unless the part began behind it.
void SeamProgress::passUpTo(int line) {
    for (std::size_t i = 0; i < seams_.size(); ++i) {
        if (seams_[i].open >= begun_ && seams_[i].close <= line) {
            along_[i] = seams_[i].lengthM();
        }
    }
}

void SeamProgress::follow(int line, const Position& tool, bool lit) {
    passUpTo(line);
    const int at = seamAt(line);
    if (at < 0 || line < seams_[static_cast<std::size_t>(at)].open) {
        return;
    }
    const auto index = static_cast<std::size_t>(at);
    const Seam& seam = seams_[index];
    lit_[index] = lit_[index] || lit;
    double sum = 0.0;
    for (std::size_t i = 0; i < seam.lines.size() && seam.lines[i] <= line; ++i) {
        if (seam.lines[i] < line) {
            sum += seam.pieces[i].lengthM();
        } else {
            // A tool at the start of a circle is at its end, too: the hint decides.
            const double reached = line == line_ ? ofLineM_ : 0.0;
            ofLineM_ = std::max(reached, seam.pieces[i].nearestM(tool, reached));
            sum += ofLineM_;
        }
    }
    line_ = line;
    along_[index] = std::max(along_[index], std::min(sum, seam.lengthM()));
}

void SeamProgress::finish() {
    passUpTo(seams_.empty() ? 0 : seams_.back().close);
}

bool SeamProgress::isWelded(int seam) const {
    constexpr double nearM = 0.0005;
    const double whole = seams_[static_cast<std::size_t>(seam)].lengthM();
    return isLit(seam) && whole > 0.0 && alongM(seam) > whole - nearM;
}

int SeamProgress::seamAt(int line) const {
    const auto found =
        std::find_if(seams_.begin(), seams_.end(), [line](const Seam& seam) { return line <= seam.close; });
    return found == seams_.end() ? -1 : static_cast<int>(found - seams_.begin());
}

}  // namespace prog
