#pragma once

#include "stations/station.h"

#include <QVector>

namespace lumo {

/// Looks at the start inputs, or at the stop inputs, of all stations, and tells which of them trigger.
///
/// Every look is compared with the baseline, not with the look before. An input that stood at its
/// triggering level when its baseline was taken triggers once it has left that level and come again; but
/// a start input that stood when listening was switched on never does. Rows are those of the list of
/// stations. One that has no baseline yet, or whose input or edge was changed, gets it at the next look,
/// and triggers no earlier than at the one after that.
class InputWatch {
public:
    explicit InputWatch(StationSignal input) : input_(input) {}

    /// Listening is switched on: takes the baseline of all rows.
    void takeBaselines(QObject* sender);
    /// Takes all baselines, or that of one row, anew: an input that is held triggers nothing before it has
    /// been let go. Nothing while nobody listens.
    void rearm(QObject* sender);
    void rearm(QObject* sender, int row);
    /// Looks at all inputs. The rows that trigger, in their order.
    [[nodiscard]] QVector<int> look(QObject* sender);
    /// Whether the input of any station stands at its triggering level now, whatever its baseline.
    [[nodiscard]] bool anyStands(QObject* sender) const;

    /// Listening is switched off: forgets every baseline.
    void clear();
    /// The rows below move up.
    void removeRow(int row);

private:
    /// What an input showed, and which input with which edge that was.
    struct Baseline {
        prog::Signal source;
        Edge edge = Edge::None;
        Level level;
        bool followsRelease = true;  ///< an input that has left its triggering level can trigger

        [[nodiscard]] bool isOf(const Baseline& other) const {
            return level && edge == other.edge && source.isSameAs(other.source);
        }
    };

    [[nodiscard]] Baseline present(QObject* sender, const ModuleObject* station) const;

    StationSignal input_;
    QVector<Baseline> baselines_;
};

}  // namespace lumo
