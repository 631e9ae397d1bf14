#pragma once

#include "bridge/linkreason.h"

#include <QStringList>
#include <QVector>

#include <optional>

namespace app {

/// Why an output needed for welding does not work.
struct PortProblem {
    enum Kind { OutOfUse, NotAssigned, NoSuchSignal };

    Kind kind = OutOfUse;
    QString port;    ///< the port's name in the panel's language
    QString signal;  ///< the assigned signal that the controller does not have
};

/// How the last run ended, from its end to the next start.
struct EndedRun {
    QString reason;   ///< a word of a run's record: "finished"
    QString words;    ///< for the reason, in the panel's language
    QString station;  ///< the project's name, when a station ran it
    qint64 ms = 0;
    QString welded;      ///< "300.0 of 300.0 mm welded"; empty without welds
    int violations = 0;  ///< limits that were not kept
};

/// State of cell, welding permission, run and editing, as values.
struct CellStatus {
    /// What has switched the laser on.
    enum class Laser { Off, ByProgram, ByStation, ByHand, WithoutProgram };

    // The cell.
    bool emergencyStop = false;
    bool linked = true;  ///< the robot controller, and a device beside it, can be reached
    bridge::LinkEnd lostEnd = bridge::LinkEnd::Robot;  ///< the one that cannot
    bridge::LinkReason linkReason;                     ///< why not
    Laser laser = Laser::Off;
    QStringList faults;  ///< names of the inputs that report a fault, in the panel's language

    // Welding.
    bool power = true;
    bool automatic = true;
    bool weldSwitch = true;
    bool handWeldSwitch = false;
    bool dry = false;                 ///< the run under way is a dry run, or the next one will be
    QVector<PortProblem> laserPorts;  ///< problems that keep the laser off
    QVector<PortProblem> gasPorts;    ///< problems that leave the weld without shielding gas

    // The run.
    int lastError = 0;  ///< result of the failed motion in the last run; 0 for none
    bool busy = false;
    bool station = false;  ///< a station's program runs, not the edited one
    bool step = false;     ///< a single step runs
    QString project;       ///< its name: of the station's one that runs, else of the open one
    int line = -1;         ///< from 0; -1 for none
    QString waiting;       ///< the executor's kind of wait; empty for none
    QString input;         ///< the input waited for
    QString awaited;       ///< the state waited for; empty when not known
    qint64 waitedMs = 0;
    qint64 leftMs = -1;         ///< -1: unlimited
    bool switchingOff = false;  ///< the run has ended, its equipment is still being switched off
    int pausedLine = -1;        ///< where Start continues, from 0; -1 for none
    bool pausedInWeld = false;
    std::optional<EndedRun> ended;  ///< none while something runs
    bool listening = false;         ///< the stations' inputs are watched
    int waitingStations = 0;

    // Editing.
    bool projectOpen = true;
    bool hasLines = true;  ///< the program in the editor is not empty
    int lines = 0;         ///< of the program that runs, else of that in the editor
    int errors = 0;        ///< of the program in the editor; 0 while something runs
    int warnings = 0;      ///< likewise

    /// Whether mode and switches permit welding.
    bool isSwitchedOn() const { return weldSwitch && (automatic || handWeldSwitch); }
    /// Whether the laser would come on.
    bool isPermitted() const { return isSwitchedOn() && power && laserPorts.isEmpty(); }
    /// Whether something is wrong: emergency stop, a fault, a port, the last run, the program, or a laser
    /// that is on without a program.
    bool isWrong() const;
    /// Whether all that a weld needs is well: nothing is wrong, drives and switches are on, and there is a
    /// program.
    bool isWell() const { return !isWrong() && isPermitted() && !dry && hasLines; }
    /// Whether a sentence contains a running time.
    bool hasTime() const;
};

/// The sentences for the operator in the panel's language, the most important first: emergency stop, laser
/// on, equipment faults, error of the last run, the run, welding permission, a paused program, errors and
/// warnings of the program in the editor, stations, and why editing is locked.
QStringList statusText(const CellStatus& state);

/// "80 ms", "12 s" or "2:05 min".
QString durationText(qint64 ms);

}  // namespace app
