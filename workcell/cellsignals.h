#pragma once

#include "workcell/vcdwriter.h"

#include <QHash>
#include <QObject>
#include <QString>
#include <QVariant>

#include <functional>
#include <vector>

namespace sim {
class Cell;
class Controller;
}  // namespace sim

namespace workcell {

class TreeFollower;
struct Change;

/// A signal of the cell, and its place in a value change dump.
struct CellSignal {
    enum class Source { Run, Input, Output };

    Source source = Source::Run;
    QString name;  ///< the controller's ("LUMO_DO.#3"), or that of a signal of the run ("busy")
    QString scope, leaf;
    VcdWriter::Kind kind = VcdWriter::Kind::Wire;
    double value = 0;  ///< now
};

/// Follows every signal of a cell: the run (busy, line, station, motion, laser emission and power, the tool's
/// place and speed), and the controller's inputs and outputs.
class CellSignals : public QObject {
    Q_OBJECT
public:
    /// All arguments must outlive it. To see each change before its consequences, make it before the package
    /// is loaded.
    CellSignals(sim::Controller* controller, sim::Cell* cell, TreeFollower* follower,
                QObject* parent = nullptr);

    /// Asked for the row, from 0, of the station that runs when a run begins; -1: it was started by hand.
    void setRunningStation(std::function<int()> row) { runningStation_ = std::move(row); }

    const std::vector<CellSignal>& all() const { return all_; }
    /// -1 for an unknown name.
    int indexOf(const QString& name) const { return byName_.value(name, -1); }

    /// Begins a value change dump: declares all signals in their order, and the equipment as second names as
    /// the ports are assigned now, and writes the values at time 0.
    void beginDump(VcdWriter* writer, const std::vector<double>& values) const;
    /// The values now, of all signals.
    std::vector<double> values() const;

signals:
    /// `signal`: position in all(). Only changes.
    void changed(int signal, double value);

private:
    int add(const CellSignal& signal);
    void addRun(const sim::Cell* cell);
    void addController(const sim::Controller* controller);
    void set(int signal, double value);
    void setNamed(const QString& name, const QVariant& value);
    void onTree(const Change& change);
    void onPosture();
    void onRest();
    void setSpeed();
    void beginSample();

    std::vector<CellSignal> all_;
    QHash<QString, int> byName_;
    const sim::Controller* controller_;
    QString powerName_;  ///< of the output that sets the laser's power
    std::function<int()> runningStation_;
    int busy_ = 0, line_ = 0, station_ = 0, moving_ = 0, emission_ = 0, power_ = 0, tool_ = 0, speed_ = 0;
    qint64 sampleMs_ = 0;   ///< since then the speed is measured
    double sampleM_ = 0.0;  ///< path travelled by then, m
};

/// Names of signals of the run.
namespace signalname {
const QString busy = QStringLiteral("busy");
const QString emission = QStringLiteral("laser_emission");
}  // namespace signalname

}  // namespace workcell
