#pragma once

#include "app/panelwindow.h"
#include "app/state/panelstate.h"
#include "app/stop/reach.h"
#include "workcell/outside.h"
#include "workcell/workcell.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>
#include <optional>

class QAbstractButton;
class QLabel;

namespace workcell {
class EvidenceRecorder;
class RunWatch;
class RunningProject;
class TreeFollower;
}  // namespace workcell

namespace app {

class EventRecorder;
class EventStore;
class FlightKeeper;
class LinkWatch;
class MenuTools;
class PartWatcher;
class Rail;
class RoleTools;
class RunCollector;
class RunHistory;
class RunStop;
class RunWatcher;
class SeamTrack;
class SignalRecorder;
class StatusLine;
class StatusWatcher;
class TelemetryTools;
struct RunResult;

/// The operator panel: a simulated work cell with the package, the windows that show it, and what they
/// record. One in a process; language and working directory are set before.
class Panel : public QObject {
    Q_OBJECT
public:
    /// Makes the controller as it is after booting: without drive power, in automatic mode.
    /// `names`: what of it is not simulated.
    explicit Panel(const sim::Controller::Options& options = {}, const workcell::OutsideNames& names = {});
    ~Panel() override;

    /// Makes what needs no package: header, rail with emergency stop and drive power, docks, status line. The
    /// first part of open(), which calls it unless it was called before.
    void makeFrame();
    /// Loads the package from its library, shows its first page and wires the cell as the port file in
    /// the working directory tells. False, with the reason in `error`, when there is no such package.
    bool open(const QString& libraryFile, QString* error);

    /// The path of the open project; empty when none is open.
    [[nodiscard]] QString projectFile() const;
    /// The menu of the open panel, with the handbook and the first setup.
    MenuTools* menu() const { return menu_; }
    /// Opens a project with the page's Open button and file dialog. False when the page has none.
    bool openProject(const QString& file);

    /// Unsaved edits are kept in recovery files from now on, and files left by a crash are offered. For the
    /// open panel.
    void keepEdits() const;

    /// The power of the laser source at 100 % in W, for the heat of the seams. For the open panel.
    void setRatedPower(std::optional<double> watts);

    /// Size of the flight recorder's file in MiB; 0: none. Before complete().
    void setFlightSize(int mb) { flightMb_ = mb; }

    PanelWindow* window() const { return window_.get(); }
    sim::Controller* controller() const { return cell_->controller(); }
    /// Of the open panel.
    workcell::PackageFlags packageFlags() const { return cell_->flags(); }
    /// Of the open panel.
    const SignalRecorder* recorder() const { return recorder_; }
    /// Of the open panel.
    Rail* rail() const { return rail_; }
    /// Begins the flight recording, of the open panel; once.
    void record();
    /// Does what can wait until the panel is on the screen: records, opens the docks that stood open, shows
    /// the lines in full where they were, and makes the keys of the tool, which function keys press.
    void complete();

signals:
    /// How many times as fast as the wall clock the cell is to run.
    void speedChosen(double factor);
    /// The operator chose an example, which needs a new process: it has other settings.
    void exampleChosen(const QString& name);
    /// The operator chose a language ("cn", "en", "ru"), which a new process reads.
    void languageChosen(const QString& language);
    /// Projects and settings were replaced on the disk: a new process has to read them.
    void restartAsked();

private slots:
    void onMayLeave();  // a slot, to be connected by name: the page's class is unknown here

private:
    bool mayLeave(const std::function<void()>& then);
    void leave(const std::function<void()>& then);
    void guardEdits();
    void showPage(const QString& key);
    void makeRail();
    void makeDocks();
    void followNavigation();
    QWidget* reached(QWidget* content);
    QWidget* makePath();
    QWidget* makeResults();
    QAbstractButton* fullRowsButton() const;
    QWidget* makeCell();
    void makeTouch();
    void makeStatus();
    void makeState();
    void makeParts(const RunWatcher* progress);
    void showParts();
    void explainState();
    void lead(Place place, int line);
    void makeMenu();
    void makeEvidence();
    void makeEvents();
    void makeTelemetry();
    void openTelemetry();
    void keepResult(const RunResult& result);
    void tellFault(const QString& equipment);

    workcell::WorkCell* cell_;
    LinkWatch* links_ = nullptr;
    workcell::TreeFollower* follower_ = nullptr;
    SignalRecorder* recorder_ = nullptr;
    SeamTrack* seams_ = nullptr;
    workcell::RunWatch* runs_ = nullptr;
    workcell::EvidenceRecorder* evidence_ = nullptr;
    RunCollector* collector_ = nullptr;
    RunHistory* history_ = nullptr;
    MenuTools* menu_ = nullptr;
    StatusWatcher* status_ = nullptr;
    StatusLine* statusLine_ = nullptr;
    RunStop* stop_ = nullptr;
    PartWatcher* parts_ = nullptr;
    QPointer<QLabel> partTimes_;
    RoleTools* roles_ = nullptr;
    Rail* rail_ = nullptr;
    Reach reach_;
    std::unique_ptr<workcell::RunningProject> project_;
    std::unique_ptr<PanelWindow> window_;
    std::unique_ptr<EventStore> events_;
    std::unique_ptr<EventRecorder> eventRecorder_;
    std::unique_ptr<TelemetryTools> telemetry_;
    FlightKeeper* flight_ = nullptr;
    int flightMb_ = 0;
    bool isComplete_ = false;
    std::function<void()> afterLeave_;  ///< what waits for the operator's answer about unsaved edits
    QPointer<QWidget> page_;            ///< the package's first page, with its editor
};

}  // namespace app
