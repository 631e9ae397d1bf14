#pragma once

#include "program/check.h"
#include "program/collector.h"
#include "program/parameters.h"
#include "program/signalcheck.h"

#include <vector>

namespace prog {

/// The rules about lines that belong together, checked in one walk through a program as a run would take it:
/// pairs of open and close, what stands or is lost in a weld, arcs and circles.
class WeldCheck {
public:
    /// `elements`: where the lines stand in their document.
    WeldCheck(const RunProgram& program, const std::vector<int>& elements,
              const std::vector<LaserParams>& sets, const CellFacts& cell, PortNeeds* needs,
              Collector* found);

    void walk();

private:
    void lookAt(int line);
    void open(int line);
    void close(int line);
    void move(int line);
    void stand(int line);
    void checkArc(int line, bool executed);
    void checkZone();
    void takeSet(int set);
    void tellSwitchedOffPairs();
    [[nodiscard]] QString linesLit(int upTo) const;
    [[nodiscard]] double lengthInZoneM(const Statement& move) const;

    const RunProgram& program_;
    const std::vector<int>& elements_;
    const std::vector<LaserParams>& sets_;
    const CellFacts& cell_;
    PortNeeds& needs_;
    Collector& found_;

    int open_ = -1;                      ///< the line of the weld's start; -1: none is open
    int set_ = -1;                       ///< the weld's parameter set
    int lastMove_ = -1;                  ///< in the weld
    double movedM_ = 0.0;                ///< in the weld
    std::optional<Position> at_;         ///< where the tool is
    std::optional<Position> lastStart_;  ///< where the last move began
    std::vector<bool> pairTold_;
};

}  // namespace prog
