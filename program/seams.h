#pragma once

#include "program/pathpiece.h"
#include "program/runprogram.h"

#include <vector>

namespace prog {

/// A seam of a program: its executed moves between an executed start of welding and the executed start or
/// stop that ends it. Lines count from 0.
struct Seam {
    int open = -1;
    int close = -1;                 ///< line that ends it; the number of lines where none does
    std::vector<int> lines;         ///< of its moves
    std::vector<PathPiece> pieces;  ///< their paths, one a line

    [[nodiscard]] double lengthM() const;
};

/// The seams in their order. The path of a joint move, which only the robot knows, and of an arc through
/// points that make none, counts as the line to its end.
[[nodiscard]] std::vector<Seam> seamsOf(const RunProgram& program);

/// How far a run has come along the seams of a program, told by the line that runs and the place of the tool.
class SeamProgress {
public:
    /// Of another program: nothing is done of it.
    void setSeams(std::vector<Seam> seams);
    /// A run begins. `goesOn`: it goes on with the part that was stopped; else a new part begins at `line`.
    void begin(int line, bool goesOn);
    /// A line of the run is under way, and the tool is here. `lit`: a weld is open.
    void follow(int line, const Position& tool, bool lit);
    /// The run came to its end.
    void finish();

    [[nodiscard]] const std::vector<Seam>& seams() const { return seams_; }
    /// The seam in which a line lies, its start and end included, or the next one behind it; -1: none.
    [[nodiscard]] int seamAt(int line) const;
    /// How far the tool has come along a seam, m.
    [[nodiscard]] double alongM(int seam) const { return along_[static_cast<std::size_t>(seam)]; }
    /// Whether the seam was welded as far as the tool came, not passed with the laser off.
    [[nodiscard]] bool isLit(int seam) const { return lit_[static_cast<std::size_t>(seam)]; }
    /// Whether all of it is welded.
    [[nodiscard]] bool isWelded(int seam) const;

private:
    void passUpTo(int line);

    std::vector<Seam> seams_;
    std::vector<double> along_;
    std::vector<bool> lit_;
    int begun_ = 0;         ///< line at which the part began
    int line_ = -1;         ///< followed last
    double ofLineM_ = 0.0;  ///< along the path of that line
};

}  // namespace prog
