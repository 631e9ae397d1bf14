#pragma once

#include "equipment/ports.h"

#include <QJsonObject>
#include <QMetaEnum>

#include <functional>
#include <map>
#include <vector>

namespace campaign {

Q_NAMESPACE

/// Kinds of events. The rules compare them, so the order of the groups matters.
enum Kind {
    // Just before the schedule does it.
    Start,    ///< the start trigger; value: the line
    Once,     ///< the once trigger; value: the line
    Pause,    ///< the pause trigger
    Power,    ///< robot power; value: on
    Replace,  ///< another program on the project page
    Quit,     ///< the application is asked to quit
    Act,      ///< anything else
    // Caused only by a run or by stopping one.
    State,      ///< lumo.execute.state is written
    Line,       ///< the executor writes lumo.current.line
    Statement,  ///< a statement of type `text` begins
    WeldFlag,   ///< the executor writes the weld flag
    Param,      ///< the executor uses a parameter set
    Node,       ///< the pause point is written
    Write,      ///< the executor writes a port
    Output,     ///< a statement sets an output
    Command,    ///< the executor gives the robot another command
    // Others.
    Done,        ///< an action of the schedule has returned
    Activity,    ///< depth, wait or pending steps have changed; text: kind of a wait that has begun
    Result,      ///< a result is written to a motion command's node; value: its code
    Dropped,     ///< the executor logs why it ignores a result
    Zone,        ///< the executor logs that the tool has entered the zone
    Permission,  ///< operating mode or a weld switch was written
    Robot,       ///< the robot's state was written
    Complaint,   ///< a message of Qt, or a fault in the schedule's course or end
    End,         ///< the schedule is over
};
Q_ENUM_NS(Kind)

/// The ports that the rules use.
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

/// The enumerator's name; empty for an unknown value.
template <typename Enum>
QString nameOf(Enum value) {
    return QMetaEnum::fromType<Enum>().valueToKey(value);
}

struct Event {
    Kind kind = Act;
    QString text{};  ///< name of the port, command or action
    int value = 0;   ///< register value, line or code
    int port = -1;   ///< of a Write
    int action = 0;  ///< number of the action that begins or is Done
    qint64 ms = 0;   ///< since the schedule began
    // The state at that moment, before other listeners are called.
    bool idle = true;       ///< the executor is idle
    bool powered = true;    ///< the robot has drive power
    bool robotIdle = true;  ///< the robot is idle
    bool permitted = true;  ///< operating mode and weld switches permit welding
    bool weldOpen = false;  ///< the flag of the resume data
    bool gasUsed = true;    ///< the gas port is enabled
    int depth = 0;          ///< the executor's walks, steps and pauses
    int pending = 0;        ///< the executor's pending steps
    int decreaseMs = 0;     ///< power ramp-down of the parameter set used
    int postFlowMs = 0;     ///< gas post-flow of the parameter set used
    int resumeLine = -1;    ///< lumo.current.line
    int boxes = 0;          ///< number of visible messages
    // Only of a Start or Once: the request.
    int mode = 0;
    int lineCount = 0;
    bool mayBeRefused = false;  ///< because of the program's content

    [[nodiscard]] QString toText() const {
        const QString words = QString("%1 %2 %3 %4").arg(ms, 7).arg(nameOf(kind), text).arg(value);
        return words + QString(" [%1] depth %2, %3 pending").arg(action).arg(depth).arg(pending);
    }
};

/// Draws a scenario from the seed; schedule.cpp describes its members. A missing member has no effect.
QJsonObject drawScenario(quint64 seed);

/// The broken safety rules, by the index of the event.
std::multimap<std::size_t, QString> check(const std::vector<Event>& events);

}  // namespace campaign
