#pragma once

#include "program/pathpiece.h"

#include <optional>
#include <vector>

namespace lumo {

/// What an operator has to know before a weld goes on that was stopped.
struct ResumeView {
    /// A part of the seam's path, in the order of travel.
    struct Part {
        prog::PathPiece path;
        double fromM = 0.0, toM = 0.0;
    };

    int line = -1;              ///< of the statement that was stopped, from 0
    std::vector<Part> welded;   ///< what is known of it: nothing of moves that were changed since
    std::vector<Part> ahead;    ///< what is left, to the weld's end
    prog::Position stop, tool;  ///< m

    /// From the place of the stop to the tool.
    [[nodiscard]] double awayMm() const { return prog::distance(stop, tool) * prog::mmPerM; }
    /// Sums of the parts, mm.
    [[nodiscard]] double weldedMm() const;
    [[nodiscard]] double leftMm() const;
};

}  // namespace lumo
