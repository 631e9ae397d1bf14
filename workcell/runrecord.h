#pragma once

#include "program/geometry.h"

#include <QMetaType>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace workcell {

// Lengths of a record are in mm, times in s since it was begun. All numbers are rounded to a millionth, so
// that the noise of sums does not show.

/// A number rounded to a millionth.
[[nodiscard]] double rounded(double number);

/// A moment of emission: when and where.
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
    int openLine = 0;              ///< of the "open" statement, from 1
    std::optional<int> closeLine;  ///< of the "close", from 1; none when something else closed the laser
    QString set;                   ///< name of the parameter set at the opening
    double openedAtMm = 0.0;       ///< where on the run's path it begins
    QString project;               ///< that ran then: its file's name without the folder
    std::optional<EmissionPoint> start, end;  ///< first and last emission; none when it stayed dark
    /// Path length of the moves between "open" and "close" as they were carried out, corners blended, the
    /// last one to its end. Where a stop interrupted it, as far as the tool came; where the permission was
    /// lost, the moves that were made dark as well.
    double programmedMm = 0.0;
    double weldedMm = 0.0;  ///< path travelled with the laser emitting, also beyond the programmed one
    /// In front of both: path that the weld before had welded, where a resumed weld overlaps it.
    double overlapMm = 0.0;
    double fullPowerMm = 0.0;               ///< of weldedMm, at the power of the set in force, or more
    double laserOnS = 0.0;                  ///< emitting
    double standingS = 0.0;                 ///< emitting while the tool stands
    double energyPctS = 0.0;                ///< integral of the power in % over the time of emission
    std::optional<double> heatJPerMm;       ///< over weldedMm; none without the source's rated power
    std::optional<double> meanSpeedMmPerS;  ///< over the time of emission in which the tool moves
    double gasLeadS = 0.0;                  ///< gas on before the first emission
    double gasTailS = 0.0;                  ///< gas on after the last emission
    /// No "close" came before the program's end: what is programmed of the seam is not known.
    bool isEndless = false;
    std::vector<DarkGap> darkGaps;  ///< along the programmed path; pauses between pulses are none
    QStringList faults;             ///< equipment that was faulty while the laser was on: "chiller"

    /// The sum of the gaps.
    [[nodiscard]] double darkMm() const;
    /// weldedMm over programmedMm: above 1 where more was welded than programmed. None without a path, and
    /// for a seam without an end.
    [[nodiscard]] std::optional<double> weldedRatio() const;
};

/// An "open" or "close" that mode or weld switches did not permit, or that a dry run passed.
struct RefusedStatement {
    int line = 0;  ///< from 1
    QString type;
    QString project;     ///< that ran then, as in a seam
    bool isDry = false;  ///< a dry run passed it
};

/// Equipment that was faulty while the laser was on, in a seam or switched on by hand.
struct LitFault {
    QString name;  ///< "laser", "head", "chiller", "gas" or "temperature"
    double atS = 0.0;
    int line = 0;     ///< under way then, from 1; 0: none
    QString project;  ///< that ran then; empty where nothing ran
};

/// Writes to a register or output that it does not accept.
struct Rejection {
    QString name, reason;
    int count = 0;
};

/// What a run did.
struct RunRecord {
    QString project;  ///< the file's name without its folder
    QString reason;   ///< "finished", "paused", "error", "power", "refused", "stalled", "until", "quit"
    int lines = 0;    ///< statements executed
    double seconds = 0.0;
    double pathMm = 0.0;
    double laserOnS = 0.0;  ///< emitting
    double gasS = 0.0;
    double wireS = 0.0;  ///< fed or pulled back
    bool isDry = false;  ///< it was a dry run, or one was under way: nothing was to be welded
    int rejected = 0;    ///< sum of `rejections`
    std::vector<Rejection> rejections;
    std::vector<RefusedStatement> refused;
    std::vector<LitFault> faults;
    std::vector<SeamRecord> seams;  ///< in the order of their openings
};

}  // namespace workcell

Q_DECLARE_METATYPE(workcell::RunRecord)
