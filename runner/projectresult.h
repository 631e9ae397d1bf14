#pragma once

#include "workcell/limits.h"
#include "workcell/runrecord.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>
#include <vector>

namespace run {

/// A finding of the check, as it is written down.
struct ReportedFinding {
    QString rule;              ///< "weld-speed"
    QString severity;          ///< "error" or "warning"
    QString file;              ///< as named on the command line, or in a folder named there
    int line = 0, column = 0;  ///< in the file, from 1; 0: the file as a whole
    QString text;
};

/// What a station did.
struct StationResult {
    int row = 0;  ///< from 0, as in traces and scenarios
    QString name;
    QString project;  ///< its file
    int runs = 0;
    int finished = 0;  ///< runs that reached the end of their program
    double busyS = 0.0;

    [[nodiscard]] int failed() const { return runs - finished; }
};

/// Something that was not as the program says, though the run came to its end.
struct Departure {
    QString text;             ///< English, one line
    std::optional<int> seam;  ///< its place in the record, from 1
    QString project;          ///< file of the project that it belongs to; empty: that of the result
};

/// What came out of a run of the runner: of one project, or of the stations of a folder.
struct ProjectResult {
    QString name;            ///< of the file or the folder, without what is above it
    bool isFolder = false;   ///< of stations
    bool succeeded = false;  ///< the run, and every station's run, came to its end
    workcell::RunRecord record;
    std::vector<ReportedFinding> findings;
    QVector<workcell::Violation> violations;
    std::vector<StationResult> stations;
    std::vector<Departure> departures;  ///< found with --strict only
};

/// What was not as the program says, besides findings and violations: a dry run, writes that were rejected,
/// seams that stayed dark for more than 1 mm or never emitted, weld statements that were not permitted,
/// faults of the equipment while the laser was on, runs of stations that did not reach their end.
[[nodiscard]] std::vector<Departure> departuresOf(const ProjectResult& result);

/// What a station with failed runs did, in English.
[[nodiscard]] QString stationText(const StationResult& station);
/// "seam 2 (lines 9 to 11)".
[[nodiscard]] QString seamText(const workcell::RunRecord& record, int seam);
/// "welded_ratio is 0.8, allowed is 0.98 to 1.02": without the seam.
[[nodiscard]] QString violationText(const workcell::Violation& violation);
/// "seam.json:12:14: warning: [speed] …".
[[nodiscard]] QString findingText(const ReportedFinding& finding);

}  // namespace run
