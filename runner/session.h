#pragma once

#include "runner/evidence.h"
#include "runner/messagewatch.h"
#include "runner/options.h"
#include "runner/pageoperator.h"
#include "runner/project.h"
#include "runner/recorder.h"
#include "runner/report.h"
#include "runner/runinput.h"
#include "runner/scenarioplayer.h"
#include "runner/stationpage.h"
#include "runner/stationwatch.h"
#include "runner/trace.h"
#include "runner/treeoperator.h"
#include "workcell/cellsignals.h"
#include "workcell/runwatch.h"
#include "workcell/treefollower.h"
#include "workcell/vcdwriter.h"
#include "workcell/workcell.h"

#include <QObject>
#include <QStackedWidget>
#include <QTimer>

#include <memory>
#include <optional>

namespace run {

/// One call of the runner: reads the input, builds the cell, runs the project and ends when nothing more can
/// happen. Needs virtual time to be installed.
class Session : public QObject {
    Q_OBJECT
public:
    explicit Session(const Options& options);
    ~Session() override;

    /// Returns the exit status.
    int run();

    /// What the check before the run has found, sorted by file and place.
    const std::vector<PlacedFinding>& findings() const { return input_.findings(); }

private slots:
    void scheduleCheck();  // a slot, to be connected by name: the signal's class is unknown here

private:
    bool readInput();
    bool checkInput();
    void makeCell();
    bool openFiles();
    bool setUp();
    bool openEvidence();
    bool openPanel();
    void connectEnds();

    void begin();
    void go();

    void onLineBegun(int line, const QString& type);
    void onStation(int row, const QString& state);
    void onMessage(const QString& icon, const QString& title, const QString& text);
    void onChanged(const workcell::Change& change);
    void onFileProblem(const mendo::FileProblem& problem);
    void onAboutToBlock();
    void check();
    void checkStall();
    void watchStuckRun();
    bool isOver() const;
    bool isAtRest() const;
    bool isStuck() const;
    bool areStationsDone() const;
    bool isForgotten() const;
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
    Trace trace_;
    workcell::VcdWriter vcd_;
    Report report_;
    workcell::TreeFollower follower_;
    workcell::RunWatch watch_;
    Recorder recorder_;
    StationPage stationPage_;
    StationWatch stationWatch_;
    TreeOperator tree_;
    PageOperator pages_;
    std::unique_ptr<QStackedWidget> stack_;
    std::unique_ptr<workcell::WorkCell> cell_;
    workcell::PackageFlags package_;
    std::unique_ptr<MessageWatch> messages_;
    std::unique_ptr<ScenarioPlayer> player_;
    Evidence evidence_;
    std::unique_ptr<workcell::CellSignals> signals_;  ///< only with --vcd
    QTimer until_;
    QTimer calm_;  ///< runs for a while after the last entry of a scenario for stations
    QTimer* stuck_ = new QTimer(&until_);  ///< a child of until_: armedTimers() leaves both out
    std::optional<qint64> startMs_;        ///< the host's clock at the start of the run
    bool checkPosted_ = false;
    bool finished_ = false;
    enum class Quit {
        No,
        Asked,
        Done
    } quit_ = Quit::No;  ///< Done: the application's event loop has returned
    bool quitInRun_ = false;
    int status_ = 0;
};

}  // namespace run
