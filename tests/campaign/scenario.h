#pragma once

#include "campaign/event.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QVector>

namespace campaign {

/// When a scheduled action comes.
struct Moment {
    enum class Kind {
        At,      ///< `ms` after the schedule's beginning
        After,   ///< `ms` after the action before this one
        InWait,  ///< `ms` after the `nth` wait of kind `text` began, or around its due time
        Inside,  ///< inside the `nth` notification of kind `hook`, before the write returns
    };
    Kind kind = Kind::At;
    int ms = 0;
    int nth = 0;
    bool fromDue = false;  ///< InWait: `ms` counts from the wait's due time
    bool behind = false;   ///< behind the polls that are due in the same ms, not before them
    bool early = false;    ///< Inside: before the executor hears of it
    QString text;          ///< InWait: the wait; Inside: what the event's text begins with
    Event::Kind hook = Event::Kind::Write;
    int port = -1;  ///< Inside a Write: this port only; -1: any

    [[nodiscard]] QString toText() const;
};

/// Something that happens to the executor from outside.
struct Action {
    enum class Kind {
        Start,   ///< number: line, mode
        Resume,  ///< a start by hand at lumo.current.line
        Once,    ///< number: line; on: with a sender
        Pause,
        Power,     ///< on
        Mode,      ///< on: "auto", else "manual"
        Weld,      ///< on
        HandWeld,  ///< on
        Input,     ///< text: the input, on
        Fail,      ///< number: code of the motion under way or the next one
        Quirk,     ///< text: its name, on
        Replace,   ///< on: the hand program, else the station's
        Edit,      ///< number: which kind of edit, mode: the line
        Result,    ///< text: the command whose node gets a result nobody asked for; number: the code
        Param,     ///< number: the set, text: the field, mode: the value
        Fault,     ///< text: the equipment, on: faulty
        Answer,    ///< messages are closed
    };
    Moment moment;
    Kind kind = Kind::Pause;
    int number = 0;
    int mode = 0;
    bool on = false;
    QString text;

    [[nodiscard]] QString toText() const;
};

/// All that a schedule is made of. It follows from its seed alone.
struct Scenario {
    quint64 seed = 0;
    QJsonArray program, otherProgram, sets;
    QVector<int> disabledPorts;
    bool writeMulti = true;
    bool automatic = true, weld = true, handWeld = false;
    int axes = 6;
    int dtMs = 20;
    bool endExecutor = false;  ///< in the end the executor is deleted instead of paused
    int endMs = 0;             ///< from the last pause to the last loss of power
    QVector<Action> actions;

    [[nodiscard]] QJsonObject toJson() const;
};

Scenario drawScenario(quint64 seed);

}  // namespace campaign
