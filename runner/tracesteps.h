#pragma once

#include "json/fileproblem.h"
#include "runner/alignment.h"
#include "runner/problem.h"

#include <QByteArray>
#include <QFile>
#include <QJsonObject>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace run {

/// A line of a trace that a comparison looks at. Equal keys: the same but for the time.
struct TraceEvent {
    std::uint64_t key = 0;
    qint64 t = 0;       ///< ms; before that of its step for the motions of a batch
    qint64 offset = 0;  ///< of its text in the file
    int size = 0;
    int motion = -1;  ///< of a motion command: its number in TraceSteps::fates, from 0
};

/// What was done from the beginning of a statement to that of the next. The first step of a trace, and what
/// follows the end of a run, belong to no statement.
struct TraceStep {
    int run = 0;                       ///< runs and single steps, from 1; 0 before the first
    int number = 0;                    ///< of the statement in its run, from 1; 0: no statement
    int line = -1;                     ///< from 0; -1 where the trace does not tell it (a station's run)
    QString type;                      ///< "moveL"; empty where the trace does not tell it (a single step)
    qint64 t = 0;                      ///< ms
    std::vector<TraceEvent> commands;  ///< commands, sets, outputs, refused writes, boxes and answers, files

    /// "line 12 (open)", "run 2, line 12 (open)", "between the runs".
    QString name() const;
    /// The statement and what it commanded.
    std::uint64_t key() const;
};

/// A trace, cut into the statements that were executed. A motion command stands in the step of its own
/// statement, though the first statement of a batch orders all of its motions. The texts stay in the file.
class TraceSteps {
public:
    /// Nothing, with the place and the reason in `problem`, when the file cannot be read or is no trace.
    static std::optional<TraceSteps> read(const QString& file, Problem* problem);

    const std::vector<TraceStep>& steps() const { return steps_; }
    /// Inputs, states of stations and entries of the scenario, in their order.
    const std::vector<TraceEvent>& world() const { return world_; }
    /// How each motion ended: "passed, result 0".
    const std::vector<QString>& fates() const { return fates_; }
    /// The last line without its time; empty in a trace that was cut off.
    const QJsonObject& done() const { return done_; }
    qint64 endMs() const { return endMs_; }

    /// A line of the trace.
    QJsonObject text(const TraceEvent& event) const;

private:
    class Reader;

    mendo::FileProblem::Reason open(const QString& file);

    std::unique_ptr<QFile> file_;
    QByteArray content_;  ///< the file's bytes, not copied
    std::vector<TraceStep> steps_;
    std::vector<TraceEvent> world_;
    std::vector<QString> fates_;
    QJsonObject done_;
    qint64 endMs_ = 0;
};

}  // namespace run
