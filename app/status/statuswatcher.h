#pragma once

#include "app/status/statustext.h"
#include "workcell/runningproject.h"
#include "workcell/workcell.h"

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QVariantMap>

class QWidget;

namespace sim {
class Cell;
class Controller;
}  // namespace sim

namespace app {

/// Watches the cell, the welding permission, the run, the stations and the editing lock, and forms the
/// status sentences. It only reads. While a sentence contains a running time, a timer refreshes it every
/// 100 ms.
class StatusWatcher : public QObject {
    Q_OBJECT
public:
    /// `controller` and `cell` must outlive it. `page` is the package's page, which contains the editor and
    /// the stations' page.
    StatusWatcher(const workcell::PackageFlags& package, const sim::Controller* controller,
                  const sim::Cell* cell, const QWidget* page, QObject* parent = nullptr);

    /// How the last run ended; forgotten at the next start.
    void setEnded(const std::optional<EndedRun>& run);
    CellStatus state() const;
    const QStringList& sentences() const { return sentences_; }
    bool isTiming() const { return tick_.isActive(); }
    /// Whether a run, a step, or the closing after one is under way, or a station waits for its start.
    bool isActive() const;

signals:
    /// The state was read; it may be the same as before.
    void refreshed(const app::CellStatus& state);
    /// The sentences have changed.
    void changed();

private slots:
    void refreshLater();

private:
    void followTree();
    void followStations(const QWidget* page);
    void followEditor(const QWidget* page);
    void refresh();
    void followPorts();
    void followLaser();
    void onState();
    void onStopped();
    void onResult(const QVariant& code);
    bool isBusy() const;
    int activity(const char* property) const;
    QVariantMap waiting() const;
    bool isInPulseGap() const;
    bool isLaserEnabled() const;
    CellStatus::Laser laser() const;
    void readWait(CellStatus* state) const;
    void readPause(CellStatus* state) const;
    void readStations(CellStatus* state) const;
    void readFindings(CellStatus* state) const;

    workcell::PackageFlags package_;
    const sim::Controller* controller_;
    const sim::Cell* cell_;
    workcell::RunningProject project_;
    QPointer<QWidget> editor_;
    QPointer<QWidget> stations_;
    QPointer<QWidget> listening_;  ///< the stations' switch
    QStringList sentences_;
    QTimer tick_;
    QTimer gap_;  ///< runs while the laser may be off between two pulses
    bool laserOn_ = false;
    bool wasBusy_ = false;
    bool stopped_ = false;  ///< the last run started by hand was stopped before its end
    int lastError_ = 0;
    std::optional<EndedRun> ended_;
    bool posted_ = false;
};

}  // namespace app
