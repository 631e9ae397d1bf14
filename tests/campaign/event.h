#pragma once

#include <QString>

namespace campaign {

/// How things stood when an event was recorded, before anybody else heard of it.
struct Facts {
    bool idle = true;       ///< lumo.execute.state is "idle"
    bool powered = true;    ///< kord.r.power is "on"
    bool robotIdle = true;  ///< kord.r.state is "idle"
    bool permitted = true;  ///< operating mode and weld switches allow welding
    bool weldOpen = false;  ///< the flag of the resume data
    int depth = 0;          ///< the executor's walks, steps and pauses
    int pending = 0;        ///< its pending steps
    bool gasUsed = true;    ///< the port of the gas is in use
    int decreaseMs = 0;     ///< power ramp-down of the parameter set in force
    int postFlowMs = 0;     ///< its gas post-flow
    int resumeLine = 0;     ///< lumo.current.line
    int boxes = 0;          ///< messages on the screen; counted for Done only
    QString wait;           ///< kind of the innermost wait, empty for none
};

/// One thing that happened in a schedule, in the words of the invariants.
struct Event {
    enum class Kind {
        Start,       ///< the start trigger is about to be written
        Once,        ///< the once trigger is about to be written
        Pause,       ///< the pause trigger is about to be fired
        Power,       ///< robot power is about to be written; value: on
        Replace,     ///< the hand program is about to be replaced, or all of it was removed
        Quit,        ///< the application is about to be asked to quit
        Quirk,       ///< the robot begins to deliver results that belong to no motion
        Act,         ///< anything else that the schedule does
        Done,        ///< what the schedule did has returned
        Activity,    ///< what the executor does has changed; value: a wait has begun
        State,       ///< lumo.execute.state is written
        Line,        ///< lumo.current.line is written by the executor
        Statement,   ///< a statement of type `text` is begun
        WeldFlag,    ///< the weld flag is written by the executor
        Param,       ///< a parameter set is taken over
        Node,        ///< another node of the resume data is written
        Write,       ///< the executor writes a logical port
        Foreign,     ///< somebody else does
        Output,      ///< a statement sets an output
        Command,     ///< the executor gives the robot another command
        Result,      ///< a result arrives on a motion command's node
        Dropped,     ///< the executor says why it passes over a result
        Zone,        ///< the executor says that the tool has entered the zone
        Permission,  ///< operating mode or a weld switch was written
        Robot,       ///< the robot's state was written
        Emission,    ///< the simulated laser source begins or ends to emit
        Complaint,   ///< Qt, the controller or the course of the schedule shows that something is wrong
    };

    Kind kind = Kind::Act;
    qint64 ms = 0;  ///< since the schedule began
    QString text;
    int port = -1;   ///< logical port of a Write
    int value = 0;   ///< a register value, a line, a code; of a Zone: how far outside, µm
    int action = 0;  ///< number of the scheduled action that begins or is Done
    Facts facts;

    // Of a Start or a Once: what was asked for.
    int mode = 0;
    bool lineExists = true;
    bool mayBeRefused = false;  ///< by a check of the program's content

    [[nodiscard]] QString toText() const;
};

QString nameOfPort(int port);

}  // namespace campaign
