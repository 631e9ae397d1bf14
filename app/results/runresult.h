#pragma once

#include "app/path/pathlayout.h"
#include "app/results/seamprofile.h"
#include "app/results/signalband.h"
#include "app/results/tooltrack.h"
#include "workcell/limits.h"
#include "workcell/runrecord.h"

#include <QDateTime>
#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

namespace app {

/// A file that a run was made with, as it was when the run began.
struct FileDigest {
    QString name;    ///< without its folder
    QString sha256;  ///< in hexadecimal digits; empty: there was no such file, or it could not be read
};

/// A parameter set as it was when the run began.
struct SetValues {
    QString name;
    QVector<double> values;  ///< in the order of prog::parameterRows(), in % and ms
};

/// A line of the program that ran, without words of a language, so that it can be shown in any.
struct ProgramLine {
    QString type;  ///< the statement's word
    bool executed = true;
    QString target;   ///< of a move: x, y, z in mm
    QString speed;    ///< mm/s
    QString zone;     ///< mm
    QString details;  ///< set, signal, time or note
};

/// What the panel keeps of a run: its record and all that a report of it needs, whatever happens to the
/// project afterwards.
struct RunResult {
    static constexpr int mostLines = 2000;

    workcell::RunRecord record;
    QDateTime begun;
    QString projectFile;  ///< absolute; empty when no project was open
    bool byStation = false;
    bool isSaved = true;    ///< the project file held the program that ran
    bool hasWelds = false;  ///< the program has a start of welding that is executed
    QString version;        ///< of the panel
    QVector<FileDigest> files;
    QVector<SetValues> sets;  ///< those that the program names

    QString limitsFile;                      ///< without its folder; empty when there was none
    std::optional<workcell::Limits> limits;  ///< none without a file, or when it was faulty

    QVector<ProgramLine> lines;   ///< the first mostLines
    int lineCount = 0;            ///< of the whole program
    std::vector<PathMove> moves;  ///< the path as programmed; empty for very long programs
    ToolTrack track;
    QVector<SignalBand> bands;
    QVector<SeamProfile> profiles;  ///< of the seams of the record, in their order; fewer in older files

    /// Takes over the limits file of a project, when it has one. False, with what is wrong in `problem`, for
    /// a faulty file.
    bool readLimits(const QString& project, mendo::FileProblem* problem);
    [[nodiscard]] QVector<workcell::Violation> violations() const;
    /// The parts of the programmed path of the seams that stayed dark.
    [[nodiscard]] std::vector<Polyline> gapPieces() const;
    /// Of all seams.
    [[nodiscard]] double weldedMm() const;
    [[nodiscard]] double programmedMm() const;
    /// The name that people know the project by: that of the file without its ending.
    [[nodiscard]] QString title() const;

    [[nodiscard]] QJsonObject json() const;
    /// Nothing for what json() has not written.
    [[nodiscard]] static std::optional<RunResult> from(const QJsonObject& json);
};

}  // namespace app
