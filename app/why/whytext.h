#pragma once

#include <QStringList>

namespace app {

/// What the panel knows of permission, run and editing at one moment.
struct WhyState {
    // Welding.
    bool power = true;
    bool automatic = true;
    bool weldSwitch = true;
    bool handWeldSwitch = false;
    QStringList disabledPorts;  ///< names, in the panel's language, of those the laser needs

    // The run.
    bool busy = false;
    bool station = false;  ///< a station's program, not the one that is edited
    int line = -1;         ///< counted from 0; -1 for none
    QString waiting;       ///< kind of wait, as the executor names it; empty for none
    QString input;         ///< the one that is awaited
    QString awaited;       ///< the state it is awaited in; empty when not known
    qint64 waitedMs = 0;
    qint64 leftMs = -1;     ///< -1: open-ended
    bool settling = false;  ///< a run has ended and its equipment is still being switched off

    // Editing.
    bool projectOpen = true;

    /// Whether mode and switches let the package weld.
    bool isSwitchedOn() const { return weldSwitch && (automatic || handWeldSwitch); }
    /// Whether the laser would come on.
    bool isPermitted() const { return isSwitchedOn() && power && disabledPorts.isEmpty(); }
    /// Whether a time is told that goes on.
    bool hasTime() const;
};

/// What the operator is told, in the panel's language: a sentence about the run, whether welding is
/// permitted or why not, and why editing is locked, if it is.
QStringList whyText(const WhyState& state);

/// A length of time as it is told: "80 ms", "12 s", "2:05 min".
QString durationText(qint64 ms);

}  // namespace app
