#pragma once

#include "module/host.h"
#include "stations/inputwatch.h"
#include "stations/stationqueue.h"

#include <QTimer>
#include <QWidget>

#include <memory>

class QTableWidget;
class QTableWidgetItem;

namespace Ui {
class SignalsBindWidget;
}
namespace lumo {
struct Project;
}

/// The page of the stations: lists them and, while its switch is on, starts the projects that their
/// inputs ask for, one after another.
///
/// A start runs the whole program inside `execProject`, and the pause before it may wait for the end of
/// a closing. Ticks, clicks, edits and deletions of rows, the switch, a loss of power and the end of the
/// page itself can all come in there: what is used afterwards is asked for anew.
class SignalsBindWidget final : public QWidget {
    Q_OBJECT
    /// Projects that wait for their start, the one under way included.
    Q_PROPERTY(int queued READ queued)
public:
    explicit SignalsBindWidget(QWidget* parent = nullptr);
    ~SignalsBindWidget() override;

    [[nodiscard]] int queued() const { return queue_.size(); }

    /// Looks at all start inputs, or all stop inputs: "begin." takes the baselines, "end." does what the
    /// inputs ask for.
    void checkDIStatus(const QString& phase);
    void checkDI2Status(const QString& phase);
    /// Starts the first waiting project, unless something runs or moves, or a stop input stands at its
    /// triggering level. Returns when its run is over.
    void execProject();
    /// Switches a station's start or stop output.
    void setDoPort(int row, bool on);
    void setDo2Port(int row, bool on);
    /// Writes the stations' file. What goes wrong is announced by the host's file service.
    void save();

signals:
    /// The operator wants to add a station, or to edit the one of the table's current row.
    void addBtnClicked(QTableWidget* tableW);
    void editBtnClicked(QTableWidget* tableW);

private:
    /// How far the start of the first project is, while it is on the stack.
    enum class Serving { Nothing, Starting, Running, Over };

    void fill();
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

    [[nodiscard]] int selectedRow() const;
    [[nodiscard]] bool canServe();
    [[nodiscard]] bool firstRuns() const;
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
    QTimer startTimer_{this};
    QTimer stopTimer_{this};
    QTimer queueTimer_{this};
    Serving serving_ = Serving::Nothing;
    /// Where the end of the page leaves the stations of the run under way, which are told at its end.
    QVector<lumo::WaitingStation>* heirs_ = nullptr;
    bool powered_;
    int switchedOff_ = 0;  ///< how often
    int pauses_ = 0;       ///< how many there were, by whomever
};
