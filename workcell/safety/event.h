#pragma once

#include "program/ports.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace workcell::safety {

/// Kinds of events. The rules compare them, so the order of the groups matters.
enum class Kind {
    // Just before somebody does it.
    Start,    ///< the start trigger; value: the line
    Once,     ///< the trigger of a single step; value: the line
    Pause,    ///< the pause trigger
    Power,    ///< drive power; value: on
    Replace,  ///< another program is loaded
    Edit,     ///< a line of the program is inserted, removed, moved or switched
    Quit,     ///< the application is asked to quit
    Act,      ///< anything else
    // Caused only by a run or by stopping one.
    State,       ///< lumo.execute.state is written
    Line,        ///< the executor writes lumo.current.line
    Statement,   ///< a statement of type `text` begins
    WeldFlag,    ///< the executor writes whether the weld is open
    Set,         ///< the executor uses a parameter set
    PausePoint,  ///< the executor writes the point of a stop
    Write,       ///< the executor writes a port
    Output,      ///< a statement sets an output
    Command,     ///< the executor gives the robot another command
    // Others.
    Done,        ///< what somebody did has returned
    Wait,        ///< depth, wait or pending steps have changed; text: kind of a wait that has begun
    Result,      ///< a result is written to a motion command's node; value: its code
    Dropped,     ///< the executor logs why it ignores a result
    Zone,        ///< the executor logs that the tool has entered the zone
    Permission,  ///< operating mode or a weld switch was written
    Robot,       ///< the robot's state was written
    ByHand,      ///< a page writes a port
    Complaint,   ///< a message of Qt, or a fault in the course or at the end
    End,         ///< everything is over
};

/// The kind's word in documents and files.
[[nodiscard]] QString wordOf(Kind kind);
/// The words of the kinds that a scenario's entry can be tied to ("on"): what the executor and the robot do.
[[nodiscard]] QStringList cueWords();

/// Something that happened in the cell, with the state at that moment, before the package reacts.
struct Event {
    Kind kind = Kind::Act;
    QString text;    ///< a port's word, a command, a statement's type, or what was done
    int value = 0;   ///< register value, line or code
    int port = -1;   ///< of a Write or ByHand: an I_PORT
    int action = 0;  ///< number of the action that begins or is Done
    qint64 ms = 0;   ///< since the start

    bool idle = true;       ///< the executor is idle
    bool powered = true;    ///< the robot has drive power
    bool robotIdle = true;  ///< the robot is idle
    bool permitted = true;  ///< operating mode and weld switches permit welding
    bool weldOpen = false;  ///< the flag of the resume data
    bool gasUsed = true;    ///< the gas port is in use
    int depth = 0;          ///< the executor's walks, steps and pauses
    int pending = 0;        ///< the executor's pending steps
    int decreaseMs = 0;     ///< power ramp-down of the parameter set used
    int postFlowMs = 0;     ///< gas post-flow of the parameter set used
    int resumeLine = -1;    ///< lumo.current.line
    bool dry = false;       ///< a dry run is under way
    bool overlaps = false;  ///< the weld that was taken up last overlaps the one before
    int boxes = 0;          ///< of a Done: number of visible messages

    // Only of a Start or Once: the request.
    int mode = 0;               ///< one of prog::runmode
    int lineCount = 0;          ///< of the program that it starts
    bool mayBeRefused = false;  ///< because of the program's content

    /// One line: time, kind, text and value, and what is under way.
    [[nodiscard]] QString toText() const;
};

}  // namespace workcell::safety
