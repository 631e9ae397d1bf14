#pragma once

#include "program/geometry.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace workcell {

/// A moment of emission: when and where. Lengths of a record are in mm, times in s since the run began.
struct EmissionPoint {
    double atS = 0.0;
    prog::Position transMm;
};

/// A part of a seam's programmed path on which the laser did not emit.
struct DarkGap {
    double fromMm = 0.0, toMm = 0.0;
};

/// What was welded from an opening of the laser to its closing. A resumed weld is a seam of its own.
struct SeamRecord {
    int openLine = 0;  ///< of the "open" statement, from 1
    std::optional<int>
        closeLine;  ///< from 1; none when a pause, a lost permission or the program's end closed it
    QString set;    ///< name of the parameter set at the opening
    std::optional<EmissionPoint> start, end;  ///< first and last emission; none when it stayed dark
    double programmedMm = 0.0;  ///< path length of the moves from open to close, as far as the tool came
    double weldedMm = 0.0;      ///< path travelled with the laser emitting
    double fullPowerMm = 0.0;   ///< of it, at the set's power or more
    double laserOnS = 0.0;
    double standingS = 0.0;                 ///< emitting while the tool stands
    double energyPctS = 0.0;                ///< integral of the power in % over the time of emission
    std::optional<double> heatJPerMm;       ///< over weldedMm; none without the source's rated power
    std::optional<double> meanSpeedMmPerS;  ///< over the time of emission in which the tool moves
    double gasLeadS = 0.0;                  ///< gas on before the first emission
    double gasTailS = 0.0;                  ///< gas on after the last emission
    std::vector<DarkGap> darkGaps;          ///< along the programmed path; pauses between pulses are none
    QStringList faults;                     ///< equipment that was faulty while the laser was on: "chiller"
};

/// What a run did.
struct RunRecord {
    QString project;  ///< the file's name without its folder
    QString reason;   ///< "finished", "paused", "error", "power", "refused", "stalled", "until", "quit"
    int lines = 0;    ///< statements executed
    double seconds = 0.0;
    double pathMm = 0.0;
    double laserOnS = 0.0;
    double gasS = 0.0;
    double wireS = 0.0;
    int rejected = 0;  ///< writes that a register or output did not accept
    std::vector<SeamRecord> seams;
};

}  // namespace workcell
