#pragma once

#include "program/check.h"
#include "runner/problem.h"

#include <QJsonArray>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace run {

/// A project file: a JSON array of statements; one element, the one with the key `end`, is the tool set.
class Project {
public:
    /// Nothing, with the place and the reason in `problem`, when the file cannot be read, is no JSON or holds
    /// no array.
    static std::optional<Project> read(const QString& file, const QString& shown, Problem* problem);
    explicit Project(const InputArray& text);

    /// The whole file, the tool set included.
    QJsonArray content() const;
    const InputArray& text() const { return text_; }
    int statementCount() const { return int(elements_.size()); }
    /// Where a statement, and -1 for none, stands in the file.
    int elementOf(int line) const;
    /// Which statement an element is; -1 for the tool set.
    int lineOf(int element) const;
    /// A statement, read from the text again.
    QJsonValue statement(int line) const { return text_.element(elements_[std::size_t(line)]); }
    /// The tool set; undefined without one.
    QJsonValue toolset() const;
    /// Frees everything: the project is in the tree.
    void clear() {
        text_.clear();
        elements_.clear();
    }

    /// The first element that is no statement of a known type, with its place. Nothing without one.
    std::optional<Problem> structureFault() const;

private:
    InputArray text_;
    std::vector<int> elements_;  ///< of the statements
};

/// The stations of a folder and the projects that they are bound to, read before anything runs.
class StationList {
public:
    /// Reads the stations file of a folder ("{}" is an empty list). Nothing, with the place and the reason in
    /// `problem`, when it is missing or damaged.
    static std::optional<StationList> read(const QString& folder, const QString& shown, Problem* problem);

    /// The bound projects, each once.
    const QStringList& projects() const { return projects_; }
    /// The stations that are bound to one.
    std::vector<int> rowsOf(const QString& project) const;
    /// The file, as it is named in findings.
    const QString& shown() const { return shown_; }
    /// Nothing for "{}".
    const std::optional<InputArray>& text() const { return text_; }

private:
    QString shown_;
    std::optional<InputArray> text_;
    QStringList projects_;
};

}  // namespace run
