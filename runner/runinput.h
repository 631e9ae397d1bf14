#pragma once

#include "program/check.h"
#include "runner/options.h"
#include "runner/problem.h"
#include "runner/project.h"
#include "runner/projectresult.h"
#include "runner/scenario.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <utility>
#include <vector>

namespace run {

/// A finding with its place and the words that a person reads.
struct PlacedFinding {
    prog::Finding finding;
    QString file;            ///< as named on the command line
    mendo::TextPlace place;  ///< none for the file as a whole
    QString text;            ///< "line 3 (moveL): the speed is 0 mm/s"

    ReportedFinding reported() const;
    /// "FILE:LINE:COLUMN: error: [RULE] TEXT".
    QString line() const { return findingText(reported()); }
};

/// The files of a run: read, and checked before anything runs.
class RunInput {
public:
    explicit RunInput(const Options& options) : options_(options) {}

    /// Reads the project or the list of stations. False, with the reason in `problem`, when that cannot be
    /// read at all.
    bool readProgram(Problem* problem);
    /// Reads and checks everything else, and the program. `inputs`: the names of the controller's inputs.
    void check(const QStringList& inputs, const prog::CellFacts& cell, const prog::ArmModel& arm);

    /// Of the whole input, sorted by file and place.
    const std::vector<PlacedFinding>& findings() const { return findings_; }
    /// Whether a file could not be read at all.
    bool isUnreadable() const { return isUnreadable_; }
    /// Tells the findings on standard error, and what does not fit the options. Whether they let a run begin.
    bool accept() const;
    /// Whether a station's project is missing, cannot be read or has errors.
    bool hasFaultyStation() const;

    /// Once, when the check is done: the files are not kept here as well.
    std::optional<Project> takeProject() { return std::exchange(project_, std::nullopt); }
    std::optional<StationList> takeStations() { return std::exchange(stations_, std::nullopt); }
    const Scenario& scenario() const { return scenario_; }
    /// Whether the check has told something of a file in the settings' folder.
    bool hasToldOf(const QString& fileName) const;

private:
    /// A file with a list, as it is named in findings.
    struct File {
        QString shown;
        std::optional<InputArray> text;

        prog::Record content() const;
    };

    File readSettings(QLatin1String name);
    void readScenario(const QStringList& inputs);
    void checkStations(const prog::CellFacts& cell, const prog::ArmModel& arm);
    void checkProject(const Project& project, const prog::CellFacts& cell, const prog::ArmModel& arm);
    void addUnreadable(const Problem& problem, prog::Document document);
    void add(const File& file, const prog::Findings& findings);
    /// `project`: the file as a project, where it is one.
    void addDuplicates(const File& file, prog::Document document, const Project* project = nullptr);
    void sort();
    bool isRefused() const;
    QString optionFault() const;

    Options options_;
    std::optional<Project> project_;
    std::optional<StationList> stations_;
    Scenario scenario_;
    File parameters_, ports_;
    std::vector<PlacedFinding> findings_;
    bool isUnreadable_ = false;
};

/// Prints the findings on standard output, and as the last line their counts. Returns the exit status of
/// --check.
int printFindings(const RunInput& input);

}  // namespace run
