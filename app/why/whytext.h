#pragma once

#include <QStringList>
#include <QVector>

namespace app {

/// Why an output that a weld needs does nothing.
struct PortTrouble {
    enum Kind { OutOfUse, NotAssigned, NoSuchSignal };

    Kind kind = OutOfUse;
    QString port;    ///< its name in the panel's language
    QString signal;  ///< the controller's, which it does not have
};

/// What the panel knows of the cell, permission, run and editing at one moment.
struct WhyState {
    /// By whom the laser is enabled.
    enum class Laser { Off, ByProgram, ByStation, ByHand, ByNobody };

    // The cell.
    bool emergencyStop = false;
    Laser laser = Laser::Off;
    QStringList faults;  ///< equipment, in the panel's language, that does not say it is well

    // Welding.
    bool power = true;
    bool automatic = true;
    bool weldSwitch = true;
    bool handWeldSwitch = false;
    QVector<PortTrouble> laserPorts;  ///< without which the laser stays dark
    QVector<PortTrouble> gasPorts;    ///< without which it burns unprotected

    // The run.
    int lastError = 0;  ///< of the last run, as a motion's result; 0 for none
    bool busy = false;
    bool station = false;  ///< a station's program, not the one that is edited
    int line = -1;         ///< counted from 0; -1 for none
    QString waiting;       ///< kind of wait, as the executor names it; empty for none
    QString input;         ///< the one that is awaited
    QString awaited;       ///< the state it is awaited in; empty when not known
    qint64 waitedMs = 0;
    qint64 leftMs = -1;     ///< -1: open-ended
    bool settling = false;  ///< a run has ended and its equipment is still being switched off
    int pausedLine = -1;    ///< where a start goes on; counted from 0, -1 for none
    bool pausedInWeld = false;
    bool listening = false;  ///< to the stations' inputs
    int waitingStations = 0;

    // Editing.
    bool projectOpen = true;

    /// Whether mode and switches let the package weld.
    bool isSwitchedOn() const { return weldSwitch && (automatic || handWeldSwitch); }
    /// Whether the laser would come on.
    bool isPermitted() const { return isSwitchedOn() && power && laserPorts.isEmpty(); }
    /// Whether a weld would have all it needs, the last one went well, and nothing is on that should not be.
    bool isWell() const;
    /// Whether a time is told that goes on.
    bool hasTime() const;
};

/// What the operator is told, in the panel's language, one sentence each, the weightiest first: an
/// emergency stop, a laser that is on, equipment that is not well, how the last run failed, the run, whether
/// welding is permitted or why not, a program that was paused, stations, and why editing is locked.
QStringList whyText(const WhyState& state);

/// A length of time as it is told: "80 ms", "12 s", "2:05 min".
QString durationText(qint64 ms);

}  // namespace app
