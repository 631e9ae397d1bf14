#pragma once

#include "app/results/runresult.h"
#include "app/results/seamprofile.h"
#include "workcell/workcell.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <memory>

namespace workcell {
class CellSignals;
class EvidenceRecorder;
class RunWatch;
}  // namespace workcell

namespace app {

/// Makes the result of each run, by hand or of a station: notes at its beginning what it is made with,
/// follows tool and signals, and adds the record at its end. Single steps have no result.
class RunCollector : public QObject {
    Q_OBJECT
public:
    /// All must outlive it. Make it after the recorder of the evidence, so that it hears of a run's beginning
    /// after that.
    RunCollector(const workcell::WorkCell* cell, const workcell::CellSignals* cellSignals,
                 workcell::RunWatch* watch, workcell::EvidenceRecorder* evidence, QObject* parent = nullptr);

    /// The package's page, once it is there: it tells which project runs.
    void setPage(const QWidget* page) { page_ = page; }
    /// Ends the result of a run that the end of the panel has cut off.
    void finishNow();

signals:
    void collected(const app::RunResult& result);

private:
    void begin();
    void finish(const workcell::RunRecord& record);
    void readProgram();
    void readFiles();
    void readLimits();
    void beginTrack();
    void onSignal(int signal, double value);
    void onMoved();
    void sample();
    [[nodiscard]] Position tool() const;
    [[nodiscard]] double travelledMm() const;
    [[nodiscard]] qint64 elapsedMs() const;
    [[nodiscard]] QString projectFile() const;

    const workcell::WorkCell* cell_;
    const workcell::CellSignals* signals_;
    workcell::EvidenceRecorder* evidence_;
    QPointer<const QWidget> page_;
    std::unique_ptr<RunResult> result_;  ///< while a run is followed
    std::unique_ptr<prog::RunProgram> program_;
    sim::MotionPlan::Posture start_;
    std::unique_ptr<ProfileRecorder> profile_;  ///< while a run is followed
    int speedSignal_ = -1, powerSignal_ = -1;
    std::vector<int> bandSignals_;  ///< of each band of the result, the number of its signal
    double beginMm_ = 0;
    qint64 beginMs_ = 0;
};

}  // namespace app
