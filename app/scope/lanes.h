#pragma once

#include "app/scope/signalrecord.h"
#include "workcell/cellsignals.h"

#include <QCoreApplication>
#include <QString>

#include <vector>

namespace app {

/// A row of the scope.
struct Lane {
    Q_DECLARE_TR_FUNCTIONS(Lane)
public:
    int signal = 0;  ///< position among the cell's signals
    QString name;    ///< the controller's ("LUMO_DO.#3")
    QString label;   ///< what the operator calls it
    bool analogue = false;

    /// From 0 to 1, for drawing.
    double level(double value) const;
    /// "1", "0" or "50.0 %".
    QString text(double value) const;

    bool operator==(const Lane& other) const { return signal == other.signal && label == other.label; }
    bool operator!=(const Lane& other) const { return !(*this == other); }
};

/// The rows to be shown: run and laser, the ports that are enabled, by their row, then the other inputs
/// and outputs that changed in the record.
std::vector<Lane> lanesOf(const workcell::CellSignals& cellSignals, const SignalRecord& record);

}  // namespace app
