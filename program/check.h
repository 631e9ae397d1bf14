#pragma once

#include "program/armmodel.h"
#include "program/finding.h"
#include "program/record.h"
#include "program/runprogram.h"

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QString>

#include <cstddef>
#include <optional>
#include <vector>

namespace prog {

/// A register of the controller.
struct RegisterFacts {
    bool isDigital = true;  ///< its elements are bits
    bool isWritable = false;
    int length = 1;  ///< elements
};

/// What a check knows of the cell, and its thresholds. What is not known is not checked.
struct CellFacts {
    double highestSpeedMmPerS = 2000.0;
    int standingMs = 300;     ///< the laser may be on for so long while the tool stands
    double darkSeamMm = 1.0;  ///< so much of a seam's end may stay dark
    int axes = 0;             ///< of the robot; 0: not known

    /// Names of the controller's digital inputs and outputs.
    std::optional<QSet<QString>> inputs, outputs;
    std::optional<QHash<QString, RegisterFacts>> registers;

    /// What the host's tree tells of its controller.
    [[nodiscard]] static CellFacts ofHost();
};

// The documents are lists: a node of the tree, or the content of a file. Findings come in the order of their
// elements.

/// All rules of a program: its statements (and the tool set of a project file), then the ports that its welds
/// need, then, with an arm, its reach. The work is linear in the lines; the reach takes longest by far.
[[nodiscard]] Findings checkProgram(const Record& program, const Record& sets, const Record& ports,
                                    const CellFacts& cell, const ArmModel* arm = nullptr);
/// Parameter sets.
[[nodiscard]] Findings checkParameters(const Record& sets);
/// The assignment of the ports, whatever uses them.
[[nodiscard]] Findings checkPorts(const Record& ports, const CellFacts& cell);
/// Stations, without their projects.
[[nodiscard]] Findings checkStations(const Record& stations, const Record& ports, const CellFacts& cell);

/// A type that is missing or unknown; nothing when it is one that runs.
[[nodiscard]] std::optional<Fault> typeFault(const Record& statement);

/// The rule `reach`: whether an arm can make the moves of a program, from its home. It takes long for a long
/// program (some 0.2 ms a move), so that the work can be done in parts; what it found of moves that stay the
/// same, from the same posture, is kept from one check to the next.
class ReachCheck {
public:
    /// `arm` must outlive it.
    explicit ReachCheck(const ArmModel& arm) : arm_(arm) {}

    /// A program is to be checked. Moves whose points are not taught, or without a speed, are left out: other
    /// rules tell them.
    void begin(RunProgram program);
    /// Checks some moves. True when all are done.
    bool advance(int moves);
    /// Those so far, with the lines as elements.
    [[nodiscard]] const Findings& findings() const { return findings_; }

private:
    struct Result {
        std::optional<ReachFault> fault;
        ArmPosture end;
    };
    using Results = QHash<QByteArray, Result>;

    [[nodiscard]] Result resultOf(const Statement& move, double speedMmPerS);

    const ArmModel& arm_;
    std::optional<RunProgram> program_;  ///< until it is checked
    int next_ = 0;                       ///< line
    bool inWeld_ = false;                ///< at that line
    ArmPosture posture_;
    Findings findings_;
    Results results_, kept_;  ///< of this check and of the one before, by what was asked
};

/// The same at once, without keeping anything.
[[nodiscard]] Findings checkReach(const RunProgram& program, const ArmModel& arm);

}  // namespace prog
