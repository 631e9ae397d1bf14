#pragma once

#include "files/projectcheck.h"
#include "module/host.h"
#include "stations/inputwatch.h"
#include "stations/stationqueue.h"
#include "stations/stationview.h"
#include "undo/history.h"

#include <QTimer>
#include <QWidget>

#include <memory>
#include <optional>

class QTableWidget;
class QTableWidgetItem;

namespace Ui {
class SignalsBindWidget;
}
/// The page of the stations: lists them and, while its switch is on, starts the projects that their inputs
/// ask for, one after another.
///
/// execProject() returns when the whole program has run, and the pause before it may wait for the end of a
/// closing. Timer ticks, clicks, edits and deletions of rows, the switch, a loss of power and the deletion of
/// the page can all come in between: code after such a call reads everything anew.
class SignalsBindWidget final : public QWidget {
    Q_OBJECT
    /// Number of projects that wait for their start or run.
    Q_PROPERTY(int queued READ queued)
    /// Row, from 0, of the station whose project is started or runs; -1: none.
    Q_PROPERTY(int running READ running)
public:
    explicit SignalsBindWidget(QWidget* parent = nullptr);
    ~SignalsBindWidget() override;

    [[nodiscard]] int queued() const { return queue_.size(); }
    [[nodiscard]] int running() const;

    /// Samples all start inputs, or all stop inputs: "begin." takes the baselines, "end." acts on the
    /// triggers.
    void checkDIStatus(const QString& phase);
    void checkDI2Status(const QString& phase);
    /// Starts the first waiting project, unless something runs or moves, or a stop input is at its triggering
    /// level. One that cannot be read or has errors is told and dropped. Returns when its run is over.
    void execProject();
    /// Switches a station's start or stop output.
    void setDoPort(int row, bool on);
    void setDo2Port(int row, bool on);
    /// Writes the stations' file. The host's file service reports a failure.
    void save();

signals:
    /// The operator wants to add a station, or to edit the one of the table's current row.
    void addBtnClicked(QTableWidget* tableW);
    void editBtnClicked(QTableWidget* tableW);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    /// State of the first project's start while it is on the stack.
    enum class Serving { Nothing, Starting, Running, Over };

    void dress();
    void layOut();
    void fill();
    void showLive();
    void switchMonitoring(bool on);
    void startMonitoring();
    void stopMonitoring();
    void onState(const QVariant& state);
    void onPower(const QVariant& power);
    void quit();
    void onItemChanged(const QTableWidgetItem* item);
    void editStation();
    void deleteStation();
    void removeStation(int row);
    void forgetRow(int row);
    void dropRow(int row);
    void insertRow(int row);
    void followUndo();
    void showRestored(const lumo::Restored& what);

    [[nodiscard]] int selectedRow() const;
    [[nodiscard]] bool canServe();
    [[nodiscard]] bool firstRuns() const;
    [[nodiscard]] bool refusedForErrors(const lumo::Project& project);
    [[nodiscard]] bool closeBeforeStart(int id);
    void serve(const lumo::Project& project);
    void endServing();
    void giveUpFirst();
    void dropQueue();
    void queueProject(int row);
    void withdraw(int row);
    void report(const QVector<lumo::WaitingStation>& stations);

    const std::unique_ptr<Ui::SignalsBindWidget> ui_;
    lumo::InputWatch starts_{lumo::StationSignal::StartInput};
    lumo::InputWatch stops_{lumo::StationSignal::StopInput};
    lumo::StationQueue queue_;
    lumo::ProjectCheck check_;
    QTimer startTimer_{this};
    QTimer stopTimer_{this};
    QTimer queueTimer_{this};
    Serving serving_ = Serving::Nothing;
    /// Set while serve() is on the stack: the destructor stores here the stations of the run under way.
    /// serve() switches their outputs off at its end.
    QVector<lumo::WaitingStation>* leftBehind_ = nullptr;
    bool powered_;
    int switchOffs_ = 0;  ///< how often monitoring was switched off
    int pauses_ = 0;      ///< how many pauses there were, from any source
    std::optional<lumo::StationView> view_;
    QTimer liveTimer_{this};  ///< runs while the page is shown
};
