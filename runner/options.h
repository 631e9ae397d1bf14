#pragma once

#include "runner/problem.h"
#include "simulator/latency.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace run {

/// The command line. File names are absolute, the `…Name` members as the caller typed them.
struct Options {
    QString project, projectName;    ///< empty with `stations`
    QString stations, stationsName;  ///< folder of the stations to be monitored; empty: a project is run
    QString settings;  ///< working directory of the package; by default the project's or the stations' folder
    QString settingsName;
    QString language = QStringLiteral("en");
    QString mode = QStringLiteral("auto");
    bool power = true;
    bool weld = true;
    bool handWeld = false;
    double overlapMm = 0.0;            ///< of a weld that goes on after a stop
    std::optional<double> dryPercent;  ///< of the weld speed; none: no dry run
    int line = 1;                      ///< start line, from 1
    bool lineGiven = false;            ///< whether the caller named it
    std::optional<int> once;           ///< a single step of this line, from 1
    int axes = 6;
    QString controller, io;  ///< robot and I/O from outside, by their names; empty: simulated
    bool noWriteMulti = false;
    sim::Latency latency;
    QString scenario, scenarioName;
    qint64 repeat = 1;              ///< how often the scenario is played
    std::optional<qint64> everyMs;  ///< from the beginning of one round to that of the next
    qint64 ackMs = 0;
    qint64 untilMs = 3600000;
    bool realtime = false;
    QString trace, traceName;  ///< "-" for standard output; empty: none
    bool posture = false;
    QString vcd, vcdName;
    QString summary, summaryName;  ///< "-" for standard output; empty: none
    QString junit, junitName;      ///< the same
    QString limits, limitsName;
    QString wiring, wiringName;  ///< port file of the cell; empty: that of the settings
    QString mqtt, mqttName;      ///< settings of the telemetry; empty: none
    std::optional<double> ratedWatts;
    bool strict = false;
    bool quiet = false;
    bool check = false;               ///< run nothing, print what is wrong with the input
    bool force = false;               ///< run in spite of errors
    bool rules = false;               ///< judge the run by the rules of docs/safety.md
    std::optional<int> stress;        ///< number of schedules; none: a run
    quint64 seed = 1;                 ///< of the first schedule
    QString stressOut;                ///< folder of the scenarios that are found; by default the caller's
    std::vector<double> point;        ///< six numbers, mm and degrees; empty: not asked for
    std::optional<QStringList> diff;  ///< the two traces to be compared, as the caller typed them
    QString flight, flightName;       ///< file of the flight recorder; empty: none
    int flightMb = 64;                ///< its size, MiB
    QString replay, replayName;       ///< a recording of it, of which a run is repeated; empty: none
    std::optional<int> replayRun;     ///< from 1; none: the last one
    bool replayList = false;          ///< only list its runs
    QString library;    ///< folder whose projects are run one after the other; empty: a single run
    QStringList given;  ///< the options as "--name=value", in the caller's order
    bool help = false;
    bool version = false;

    /// Whether the run is recorded as evidence.
    bool isJudged() const { return strict || !summary.isEmpty() || !junit.isEmpty() || !limits.isEmpty(); }
    /// Whether something other than progress and table goes to standard output.
    bool takesStandardOutput() const;
    /// The value of an option; nothing when the caller did not give it.
    std::optional<QString> valueOf(const QString& name) const;

    /// The folder in which the scenario's projects are looked for.
    QString folder() const;
};

/// Reads the arguments (without the program's name). Nothing, with one line in `problem`, when they are
/// wrong. Relative file names are resolved against the current directory.
std::optional<Options> parseOptions(const QStringList& arguments, Problem* problem);

/// The value of --latency.
QString latencyText(const sim::Latency& latency);
/// The line that --version prints.
QString versionText();
/// The text that --help prints.
QString usage();

}  // namespace run
