#pragma once

#include "program/finding.h"
#include "runner/problem.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace run {

/// What an entry of a scenario does.
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

/// The action of an entry's "do"; nothing for an unknown word.
std::optional<Action> actionFrom(const QString& word);

/// A fault of an entry of a scenario.
struct EntryFault {
    QString path;  ///< dotted path of the wrong value; empty for the entry as a whole
    QString reason;
    prog::Fault fault = prog::Fault::EntryWrong;
};

/// Finds keys that are missing, unknown or of the wrong kind. `inputs`: the names of the controller's inputs.
std::vector<EntryFault> findEntryFaults(const QJsonObject& entry, const QStringList& inputs);

/// The event that an entry waits for from its time on ("on"). Without `ms` the entry is applied inside the
/// event, when the package has reacted to it.
struct Cue {
    QString kind;  ///< one of workcell::safety::cueWords(), "entry" (the one before it in the file) or "end"
    QString name;  ///< of the wait, port, command or type; empty: any
    int nth = 0;   ///< how many such events pass before
    std::optional<int> ms;  ///< so much later
    bool isDue = false;     ///< `ms` counts from the end of the wait that begins with the event

    static Cue from(const QJsonObject& on);
};

/// A checked entry of a scenario: its keys exist and have the right kinds.
struct ScenarioEntry {
    qint64 atMs = 0;  ///< since the start trigger
    Action action = Action::Pause;
    QJsonObject keys;
    QByteArray text;  ///< the entry as in the file, on one line
    int number = 0;   ///< its place in the file, from 0
    std::optional<Cue> cue{};
};

/// Timed events of a run: a JSON array of {"at": MS, "do": ACTION, …}.
class Scenario {
public:
    /// Nothing, with the place and the reason in `problem`, when it cannot be read, does not parse or holds
    /// no array. `inputs`: the names of the controller's inputs; `folder`: where the projects are that it
    /// loads.
    static std::optional<Scenario> read(const QString& file, const QString& shown, const QStringList& inputs,
                                        const QString& folder, Problem* problem);
    static Scenario fromText(const InputArray& text, const QStringList& inputs, const QString& folder);

    /// What is wrong with the entries. An entry with an error is not played.
    const prog::Findings& findings() const { return findings_; }
    bool hasErrors() const;
    const std::optional<InputArray>& text() const { return text_; }

    /// Sorted by time; entries of one time as in the file. Those without a cue, and those with one.
    const std::vector<ScenarioEntry>& entries() const { return entries_; }
    const std::vector<ScenarioEntry>& cued() const { return cued_; }
    bool has(Action action) const;
    /// Time of the last entry; 0 without entries.
    qint64 lastMs() const { return entries_.empty() ? 0 : entries_.back().atMs; }
    /// The project files that entries load or bind to stations, relative to a folder.
    QStringList files(const QString& folder) const;

private:
    void check(int element, const QJsonObject& entry, const QStringList& inputs, const QString& folder);

    std::optional<InputArray> text_;
    prog::Findings findings_;
    std::vector<ScenarioEntry> entries_, cued_;
};

}  // namespace run
