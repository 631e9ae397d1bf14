#pragma once

#include "runner/entrycheck.h"
#include "runner/problem.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace run {

/// One entry of a scenario, checked: its keys are there and of the right kind.
struct ScenarioEntry {
    int atMs = 0;  ///< since the start trigger
    Action action = Action::Pause;
    QJsonObject keys;
    QByteArray text;  ///< the entry as it stands in the file, on one line
};

/// What happens to the cell, and when: a JSON array of {"at": MS, "do": ACTION, …}.
class Scenario {
public:
    /// Nothing, with what is wrong and where in `problem`, when it does not parse or has an entry
    /// that cannot be applied. `inputs`: the names of the controller's inputs.
    static std::optional<Scenario> read(const QString& file, const QString& shown, const QStringList& inputs,
                                        Problem* problem);
    static std::optional<Scenario> fromText(const InputArray& text, const QStringList& inputs,
                                            Problem* problem);

    /// In the order in which they are applied: by time, then as the file has them.
    const std::vector<ScenarioEntry>& entries() const { return entries_; }
    bool has(Action action) const;
    /// When the last one comes; 0 without any.
    int lastMs() const { return entries_.empty() ? 0 : entries_.back().atMs; }
    /// The projects that are loaded or that stations are bound to, taken relative to a folder.
    QStringList files(const QString& folder) const;

private:
    std::vector<ScenarioEntry> entries_;
};

}  // namespace run
