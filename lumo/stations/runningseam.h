#pragma once

#include "program/pathpiece.h"
#include "program/record.h"

#include <vector>

namespace lumo {

/// How far a run has come in the seams of its program.
struct SeamProgress {
    int seam = 0;           ///< from 1: the one being welded, else the next; 0 in a program without seams
    int seams = 0;          ///< of the program
    double share = 0.0;     ///< of the seam that is welded
    bool isInside = false;  ///< the line lies in the seam
};

/// The seams of a program that runs: starts of welding that are executed, with the paths behind them.
class RunningSeam {
public:
    explicit RunningSeam(const prog::Record& program);

    /// For a run at a line, with its tool there.
    [[nodiscard]] SeamProgress at(int line, const prog::Position& tool) const;

private:
    struct Seam {
        int first = -1, last = -1;  ///< lines: its start of welding, and its last move
        std::vector<int> lines;     ///< of its moves
        std::vector<prog::PathPiece> pieces;
        double lengthM = 0.0;
    };
    [[nodiscard]] static double weldedM(const Seam& seam, int line, const prog::Position& tool);

    std::vector<Seam> seams_;
};

}  // namespace lumo
