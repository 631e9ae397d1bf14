#pragma once

#include "stations/station.h"

#include <QVector>

namespace lumo {

/// Samples the start inputs, or the stop inputs, of all stations, and reports which of them trigger.
///
/// A sample is compared with the input's baseline, not with the sample before. An input that was at its
/// triggering level when its baseline was taken triggers after it has left that level and come back; a start
/// input that was there when monitoring was switched on never does. Rows are those of the list of stations. A
/// row without a baseline, or whose input or edge was changed, gets one at the next sample and can trigger at
/// the one after that.
class InputWatch {
public:
    explicit InputWatch(StationSignal input) : input_(input) {}

    /// Monitoring is switched on: takes the baselines of all rows.
    void takeBaselines(QObject* sender);
    /// Takes all baselines, or that of one row, anew: an input that is held triggers only after it has been
    /// released. Does nothing while monitoring is off.
    void rearm(QObject* sender);
    void rearm(QObject* sender, int row);
    /// Samples all inputs. Returns the rows that trigger, in their order.
    [[nodiscard]] QVector<int> sample(QObject* sender);
    /// Whether the input of any station is at its triggering level now, whatever its baseline.
    [[nodiscard]] bool anyAtTriggerLevel(QObject* sender) const;

    /// Monitoring is switched off: forgets all baselines.
    void clear();
    /// A station was deleted: the rows below move up.
    void removeRow(int row);
    /// A station came there: the rows from there on move down.
    void insertRow(int row);

private:
    /// The level of an input, and which input and edge it belongs to.
    struct Baseline {
        prog::Signal source;
        Edge edge = Edge::None;
        Level level;
        bool followsRelease = true;  ///< triggers after leaving its triggering level and coming back

        [[nodiscard]] bool isOf(const Baseline& other) const {
            return level && edge == other.edge && source.isSameAs(other.source);
        }
    };

    [[nodiscard]] Baseline present(QObject* sender, const ModuleObject* station) const;

    StationSignal input_;
    QVector<Baseline> baselines_;
};

}  // namespace lumo
