#pragma once

#include "runner/endwatch.h"
#include "runner/evidence.h"
#include "runner/flightlog.h"
#include "runner/messagewatch.h"
#include "runner/options.h"
#include "runner/pageoperator.h"
#include "runner/project.h"
#include "runner/recorder.h"
#include "runner/report.h"
#include "runner/runcell.h"
#include "runner/runinput.h"
#include "runner/safetywatch.h"
#include "runner/scenarioplayer.h"
#include "runner/stationpage.h"
#include "runner/stationwatch.h"
#include "runner/telemetry.h"
#include "runner/trace.h"
#include "runner/treeoperator.h"
#include "workcell/cellsignals.h"
#include "workcell/runwatch.h"
#include "workcell/treefollower.h"
#include "workcell/vcdwriter.h"

#include <QObject>

#include <memory>
#include <optional>

namespace run {

namespace stress {
struct Trial;
}

/// One call of the runner: reads the input, builds the cell, runs the project and ends when nothing more can
/// happen. Needs virtual time to be installed.
class Session : public QObject {
    Q_OBJECT
public:
    explicit Session(const Options& options);
    ~Session() override;

    /// Returns the exit status.
    int run();

    // The two parts of run(), for a caller that varies what is prepared.
    /// Reads the input, builds the cell and loads the package. False when that fails; see status().
    bool prepare();
    /// Runs. Returns the exit status.
    int play();
    int status() const { return status_; }
    /// Replaces what was prepared, before play(). False, with the reason in `problem`, when the scenario is
    /// wrong.
    bool vary(const stress::Trial& trial, Problem* problem);

    // Of a prepared session.
    const Project* project() const { return project_ ? &*project_ : nullptr; }
    const sim::Controller* controller() const { return cell_.controller(); }
    /// Parameter sets of the package.
    int setCount() const;
    /// What is recorded for the rules; null without --rules.
    SafetyWatch* safety() const { return safety_.get(); }
    /// What the check before the run has found, sorted by file and place.
    const std::vector<PlacedFinding>& findings() const { return input_.findings(); }

private:
    bool readInput();
    bool checkInput();
    bool makeCell();
    bool openFiles();
    bool setUp();
    bool openEvidence();
    void showPages();
    void makePlayer(const Scenario& scenario);
    void connectEnds();
    void connectPlayer();
    void connectSafety();

    void loadProgram();
    void begin();
    void go();

    void onLineBegun(int line, const QString& type);
    void onStation(int row, const QString& state);
    void onMessage(const QString& icon, const QString& title, const QString& text);
    void onChanged(const workcell::Change& change);
    void onFileProblem(const mendo::FileProblem& problem);
    void quit();
    void windDown();
    bool isSuccess() const;
    void finish(const QString& ending);
    Figures figures(const QString& reason) const;
    std::vector<StationLine> stationLines() const;
    QString projectName() const;
    ProjectResult result(const QString& reason, bool succeeded) const;
    bool closeFiles();
    qint64 elapsedMs() const;

    Options options_;
    RunInput input_;
    std::optional<Project> project_;       ///< either this
    std::optional<StationList> stations_;  ///< or these
    std::optional<QJsonArray> program_;    ///< instead of the project's content
    QJsonArray settings_;                  ///< written before the start: {"path", "value"} each
    Trace trace_;
    workcell::VcdWriter vcd_;
    Report report_;
    workcell::TreeFollower follower_;
    std::unique_ptr<SafetyWatch> safety_;  ///< only with --rules
    workcell::RunWatch watch_;
    Recorder recorder_;
    StationPage stationPage_;
    StationWatch stationWatch_;
    TreeOperator tree_;
    PageOperator pages_;
    RunCell cell_;
    workcell::PackageFlags package_;
    std::unique_ptr<MessageWatch> messages_;
    std::unique_ptr<ScenarioPlayer> player_;
    Evidence evidence_;
    Telemetry telemetry_;
    std::unique_ptr<workcell::CellSignals> signals_;  ///< only with --vcd
    FlightLog flight_;
    EndWatch end_;
    std::optional<qint64> startMs_;  ///< the host's clock at the start of the run
    bool finished_ = false;
    bool quits_ = false;
    bool quitInRun_ = false;
    int status_ = 0;
};

}  // namespace run
