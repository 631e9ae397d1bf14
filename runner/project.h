#pragma once

#include "program/fieldfaults.h"
#include "runner/problem.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace run {

/// The text of a finding, in English, to be put behind the name of its field: "is no number".
QString findingText(const prog::old::Finding& finding);

/// A project file: a JSON array of statements; one element, the one with the key `end`, is the tool set.
class Project {
public:
    /// Reads a file and checks its structure. Nothing, with the place and the reason in `problem`, when it
    /// cannot be run.
    static std::optional<Project> read(const QString& file, const QString& shown, Problem* problem);
    static std::optional<Project> fromText(const InputArray& text, Problem* problem);

    /// The whole file, the tool set included.
    const QJsonArray& content() const { return text_.array(); }
    int statementCount() const { return int(statements_.size()); }

    /// Faults that do not prevent a run: missing fields, text instead of a number, an index outside the
    /// `sets` parameter sets.
    std::vector<Problem> warnings(int sets) const;

private:
    explicit Project(const InputArray& text) : text_(text) {}

    InputArray text_;
    std::vector<int> statements_;  ///< indices of their elements in the file
};

/// The stations of a folder and the projects that they are bound to, read before anything runs.
class StationList {
public:
    /// Reads the stations file of a folder ("{}" is an empty list). Nothing, with the place and the reason in
    /// `problem`, when it is missing or damaged, or an element is no record.
    static std::optional<StationList> read(const QString& folder, const QString& shown, Problem* problem);

    /// The bound projects, each once.
    const QStringList& projects() const { return projects_; }

    /// Projects that are missing or damaged, and the warnings of the others. Projects are read from the
    /// current directory.
    std::vector<Problem> warnings(int sets) const;

private:
    QStringList projects_;
};

}  // namespace run
