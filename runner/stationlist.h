#pragma once

#include "runner/problem.h"
#include "runner/project.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace run {

/// The stations of a folder and the projects that they are bound to, as far as a look at the files
/// tells before anything runs.
class StationList {
public:
    /// Reads the stations file of a folder ("{}" is an empty one). Nothing, with what is wrong and
    /// where in `problem`, when there is none, it does not parse or an element is no record.
    static std::optional<StationList> read(const QString& folder, const QString& shown, Problem* problem);

    /// The bound projects, each once.
    const QStringList& projects() const { return projects_; }

    /// What the writer of the projects should know: one that is missing or damaged, and what
    /// `Project::warnings()` finds. They are read relative to the current directory.
    std::vector<Problem> warnings(int sets) const;

private:
    QStringList projects_;
};

}  // namespace run
