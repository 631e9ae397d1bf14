#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <optional>

namespace run {

/// What can be done to the cell during a run.
enum class Action {
    Start,
    Once,
    Resume,
    Pause,
    Power,
    Mode,
    Weld,
    HandWeld,
    Input,
    Set,
    Key,
    Monitor,
    Load,
    Insert,
    Remove,
    Move,
    Enable,
    Place,
    Device,
    Port,
    Station,
    Quit,
    MotionError,
    Fault,
    Quirk,
};

/// The action that an entry's "do" names; nothing for an unknown one.
std::optional<Action> actionFrom(const QString& word);

/// What is wrong with an entry of a scenario.
struct EntryFault {
    QString path;  ///< dotted, to the value that it concerns; empty: the entry as a whole
    QString reason;
};

/// Looks for a key that is missing, unknown or of the wrong kind. `inputs`: the names of the controller's
/// inputs.
std::optional<EntryFault> findEntryFault(const QJsonObject& entry, const QStringList& inputs);

}  // namespace run
