#pragma once

#include "runner/options.h"
#include "runner/projectresult.h"
#include "workcell/evidence.h"
#include "workcell/workcell.h"

#include <QFile>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace run {

/// Records what a run of the runner proves, judges it by limits and by --strict, and writes summary and JUnit
/// file.
class Evidence {
public:
    explicit Evidence(const Options& options) : options_(options) {}

    /// Reads the files of --limits and --wiring. False, with the reason in `problem`, when one is wrong.
    [[nodiscard]] bool read(Problem* problem);
    /// Makes the weld cell with its wiring, and records it where the options ask for that. Before the package
    /// is loaded. `projectName` tells the file of the project that runs.
    void attach(workcell::WorkCell* cell, workcell::TreeFollower* follower, workcell::RunWatch* watch,
                const std::function<QString()>& projectName);
    /// Opens the files that are written. False, after an error on standard error, when one cannot be.
    [[nodiscard]] bool open();
    /// What was recorded up to now; empty where nothing is recorded.
    [[nodiscard]] workcell::RunRecord record() const {
        return recorder_ ? recorder_->current() : workcell::RunRecord();
    }
    /// Time 0.
    void begin();
    /// The run is over: judges it, tells on standard error what is wrong, writes the files. False when the
    /// runner has to end with 1 on its account.
    [[nodiscard]] bool finish(ProjectResult result);

private:
    struct Output {
        const char* option;
        QString name;
        std::unique_ptr<QFile> file;
    };
    [[nodiscard]] bool openFile(const char* option, const QString& file, const QString& name);
    [[nodiscard]] static bool write(const Output& output, const QByteArray& text);
    void warnOfSets() const;

    const Options& options_;
    std::optional<workcell::Limits> limits_;
    std::optional<sim::Wiring> wiring_;
    std::unique_ptr<workcell::EvidenceRecorder> recorder_;
    std::vector<Output> outputs_;
};

}  // namespace run
