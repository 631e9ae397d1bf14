#pragma once

#include "binding/station.h"

#include <QVector>

namespace lumo {

/// Looks at the start inputs, or at the stop inputs, of all stations, and tells which of them trigger.
///
/// Every look is compared with the baseline, not with the look before. Rows are those of the list of
/// stations; one that has no baseline yet gets it at the next look, and triggers no earlier than at the
/// one after that.
class InputWatch {
public:
    explicit InputWatch(StationSignal input) : input_(input) {}

    /// Takes the baseline of all rows anew.
    void takeBaselines(QObject* sender);
    /// Looks at all inputs. The rows that trigger, in their order.
    [[nodiscard]] QVector<int> look(QObject* sender);

    /// Forgets every baseline.
    void clear();
    /// Forgets the baseline of a row, whose station is another one now.
    void forget(int row);
    /// The rows below move up.
    void removeRow(int row);

private:
    StationSignal input_;
    QVector<Level> baselines_;
};

}  // namespace lumo
