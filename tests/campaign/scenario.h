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
    [[nodiscard]] QJsonObject toJson() const;
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
        Hand,      ///< what somebody does at the page: text: which deed; number, mode, on: how
        Reply,     ///< text: what the open dialog is answered with; number: what is entered before
        Port,      ///< number: the port, text: what becomes of its row
        Panel,     ///< the page is closed; on: and made anew
        Quit,      ///< the application ends
    };
    Moment moment;
    Kind kind = Kind::Pause;
    int number = 0;
    int mode = 0;
    bool on = false;
    QString text;

    [[nodiscard]] QString toText() const;
    [[nodiscard]] QJsonObject toJson() const;
};

/// What the executor has around it.
enum class Stage {
    Bare,      ///< nothing: triggers are written by the schedule
    Page,      ///< the panel's page, in which somebody works
    Stations,  ///< the same, with stations that listen
};

/// All that a schedule is made of. It follows from its seed alone.
struct Scenario {
    quint64 seed = 0;
    Stage stage = Stage::Bare;
    QJsonArray program, otherProgram, sets;
    QVector<int> disabledPorts;
    bool writeMulti = true;
    bool automatic = true, weld = true, handWeld = false;
    int axes = 6;
    int dtMs = 20;
    bool endExecutor = false;  ///< in the end the executor is deleted instead of paused
    int endMs = 0;             ///< from the last pause to the last loss of power
    bool projectOpen = false;  ///< the page has an open project: the program's file
    QJsonArray stations;       ///< records of the page of the stations
    QJsonObject projects;      ///< files in the working directory: statements by the file's name
    QVector<Action> actions;

    /// Whether the application ends in it: then it has to run in the application's own loop.
    [[nodiscard]] bool quits() const;
    [[nodiscard]] QJsonObject toJson() const;
};

Scenario drawScenario(quint64 seed);

}  // namespace campaign
