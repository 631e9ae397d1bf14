#pragma once

#include "devices/ports.h"

#include <QMetaEnum>
#include <QObject>
#include <QString>

#include <array>

namespace campaign {

Q_NAMESPACE

/// What can happen in a schedule. The order matters: see the groups.
enum Kind {
    // What the schedule does, about to be done.
    Start,    ///< the start trigger; value: the line
    Once,     ///< the once trigger; value: the line
    Pause,    ///< the pause trigger
    Power,    ///< robot power; value: on
    Replace,  ///< another hand program, or all of its lines are removed
    Quit,     ///< the application is asked to quit
    Quirk,    ///< results will be delivered that belong to no motion
    Act,      ///< anything else
    // What only a run, or what stops one, causes.
    State,      ///< lumo.execute.state is written
    Line,       ///< lumo.current.line is written by the executor
    Statement,  ///< a statement of type `text` is begun
    WeldFlag,   ///< the weld flag is written by the executor
    Param,      ///< a parameter set is taken over
    Node,       ///< another node of the resume data is written
    Write,      ///< the executor writes a port
    Output,     ///< a statement sets an output
    Command,    ///< the executor gives the robot another command
    // All the rest.
    Done,        ///< what the schedule did has returned
    Activity,    ///< what the executor does has changed; value: a wait has begun
    Result,      ///< a result arrives on a motion command's node; value: its code
    Dropped,     ///< the executor says why it passes over a result
    Zone,        ///< the executor says that the tool has entered the zone; value: µm outside
    Permission,  ///< operating mode or a weld switch was written
    Robot,       ///< the robot's state was written
    Emission,    ///< the laser source begins or ends to emit
    Complaint,   ///< Qt, the course of the schedule or what is left of it shows that something is wrong
    End,         ///< the schedule is over
};
Q_ENUM_NS(Kind)

/// How things stood when an event was recorded, before anybody else heard of it.
enum Fact {
    Idle,        ///< lumo.execute.state is "idle"
    Powered,     ///< kord.r.power is "on"
    RobotIdle,   ///< kord.r.state is "idle"
    Permitted,   ///< operating mode and weld switches allow welding
    WeldOpen,    ///< the flag of the resume data
    Depth,       ///< the executor's walks, steps and pauses
    Pending,     ///< its pending steps
    GasUsed,     ///< the port of the gas is in use
    DecreaseMs,  ///< power ramp-down of the parameter set in force
    PostFlowMs,  ///< its gas post-flow
    ResumeLine,  ///< lumo.current.line
    Boxes,       ///< messages on the screen; of Done only
    // Of a Start or a Once: what was asked for.
    Mode,
    LineExists,
    MayBeRefused,  ///< by a check of the program's content
    LineCount,     ///< most lines of the program in which the resume line stands, -1: it never was written
    FactCount
};
Q_ENUM_NS(Fact)

/// The ports that the rules know.
enum Port {
    GAS = DO_GAS,
    WIRE = DO_WIRE_ENABLE,
    LASER = DO_LASER_ENABLE,
    PULLBACK = DO_WIRE_PULLBACK,
    WIRE_SPEED = AO_WIRE_SPEED,
    POWER = AO_LASER_POWER,
    FREQUENCY = AO_LASER_FREQUENCY,
    DUTY_CYCLE = AO_LASER_DUTY_CYCLE
};
Q_ENUM_NS(Port)
constexpr int portCount = DUTY_CYCLE + 1;

template <typename Enum>
QString nameOf(Enum value) {
    return QMetaEnum::fromType<Enum>().valueToKey(value);
}

/// -1 for an unknown name.
template <typename Enum>
int fromName(const QString& name) {
    return QMetaEnum::fromType<Enum>().keyToValue(name.toLatin1().constData());
}

struct Event {
    Kind kind = Act;
    QString text{};  ///< a name: of the port, the command, the node, the deed
    int value = 0;   ///< a register value, a line, a code
    int port = -1;   ///< of a Write
    int action = 0;  ///< number of the deed that begins or is Done
    qint64 ms = 0;   ///< since the schedule began
    QString wait{};  ///< kind of the innermost wait, empty for none
    std::array<int, FactCount> facts{};

    int operator[](Fact fact) const { return facts[fact]; }
    [[nodiscard]] QString toText() const {
        const QString words = QString("%1 %2 %3 %4").arg(ms, 7).arg(nameOf(kind), text).arg(value);
        const QString rest = action > 0 ? QString(" [%1]").arg(action) : QString();
        return kind != Activity ? words + rest
                                : words + QString(" depth %1, %2 pending, in %3")
                                              .arg((*this)[Depth])
                                              .arg((*this)[Pending])
                                              .arg(wait.isEmpty() ? "no wait" : wait);
    }
};

}  // namespace campaign
