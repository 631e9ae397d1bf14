#pragma once

#include "runner/problem.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QStringList>

#include <optional>
#include <vector>

namespace run {

/// A project file: a JSON array of statements, one element of which, the one that has an entry `end`,
/// is the tool set.
class Project {
public:
    /// Reads a file and checks its structure. Nothing, with what is wrong and where in `problem`,
    /// when a run cannot begin with it.
    static std::optional<Project> read(const QString& file, const QString& shown, Problem* problem);
    static std::optional<Project> fromText(const InputArray& text, Problem* problem);

    /// The whole file, the tool set included.
    const QJsonArray& content() const { return text_.array(); }
    int statementCount() const { return int(statements_.size()); }

    /// What a run can go on with but its writer should know: fields that are missing, text where a
    /// number is usual, an index that names none of `sets` parameter sets.
    std::vector<Problem> warnings(int sets) const;

private:
    explicit Project(const InputArray& text) : text_(text) {}

    InputArray text_;
    std::vector<int> statements_;  ///< their elements in the file
};

}  // namespace run
