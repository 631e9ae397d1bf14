#pragma once

#include "equipment/ports.h"

#include <QJsonObject>
#include <QMetaEnum>

#include <functional>
#include <map>
#include <vector>

namespace campaign {

Q_NAMESPACE

/// What can happen in a schedule. The order matters: see the groups.
enum Kind {
    // What the schedule does, about to be done.
    Start,    ///< the start trigger; value: the line
    Once,     ///< the once trigger; value: the line
    Pause,    ///< the pause trigger
    Power,    ///< robot power; value: on
    Replace,  ///< another hand program
    Quit,     ///< the application is asked to quit
    Act,      ///< anything else
    // What only a run, or what stops one, causes.
    State,      ///< lumo.execute.state is written
    Line,       ///< lumo.current.line is written by the executor
    Statement,  ///< a statement of type `text` is begun
    WeldFlag,   ///< the weld flag is written by the executor
    Param,      ///< a parameter set is taken over
    Node,       ///< the place of a stop is written
    Write,      ///< the executor writes a port
    Output,     ///< a statement sets an output
    Command,    ///< the executor gives the robot another command
    // All the rest.
    Done,        ///< what the schedule did has returned
    Activity,    ///< depth, wait or pending steps have changed; text: kind of a wait that has begun
    Result,      ///< a result arrives on a motion command's node; value: its code
    Dropped,     ///< the executor says why it passes over a result
    Zone,        ///< the executor says that the tool has entered the zone
    Permission,  ///< operating mode or a weld switch was written
    Robot,       ///< the robot's state was written
    Complaint,   ///< Qt, the course of the schedule or what is left of it shows that something is wrong
    End,         ///< the schedule is over
};
Q_ENUM_NS(Kind)

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

/// "" when it has none.
template <typename Enum>
QString nameOf(Enum value) {
    return QMetaEnum::fromType<Enum>().valueToKey(value);
}

struct Event {
    Kind kind = Act;
    QString text{};  ///< a name: of the port, the command, the deed
    int value = 0;   ///< a register value, a line, a code
    int port = -1;   ///< of a Write
    int action = 0;  ///< number of the deed that begins or is Done
    qint64 ms = 0;   ///< since the schedule began
    // How things stood when it was recorded, before anybody else heard of it.
    bool idle = true;       ///< the executor's state
    bool powered = true;    ///< the robot
    bool robotIdle = true;  ///< its state
    bool permitted = true;  ///< operating mode and weld switches allow welding
    bool weldOpen = false;  ///< the flag of the resume data
    bool gasUsed = true;    ///< the port of the gas is in use
    int depth = 0;          ///< the executor's walks, steps and pauses
    int pending = 0;        ///< its pending steps
    int decreaseMs = 0;     ///< power ramp-down of the parameter set in force
    int postFlowMs = 0;     ///< its gas post-flow
    int resumeLine = -1;    ///< lumo.current.line
    int boxes = 0;          ///< messages on the screen
    // Of a Start or a Once: what was asked for.
    int mode = 0;
    int lineCount = 0;
    bool mayBeRefused = false;  ///< by a check of the program's content

    [[nodiscard]] QString toText() const {
        const QString words = QString("%1 %2 %3 %4").arg(ms, 7).arg(nameOf(kind), text).arg(value);
        return words + QString(" [%1] depth %2, %3 pending").arg(action).arg(depth).arg(pending);
    }
};

/// All that a schedule is made of; schedule.cpp says what its members mean. What is left out has the value
/// that changes nothing. It follows from the seed alone.
QJsonObject drawScenario(quint64 seed);

/// What does not hold of the safety rules, in words, and at which event.
std::multimap<std::size_t, QString> check(const std::vector<Event>& events);

}  // namespace campaign
