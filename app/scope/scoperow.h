#pragma once

#include "app/scope/signalrecorder.h"
#include "workcell/cellsignals.h"

#include <QCoreApplication>
#include <QString>

#include <vector>

namespace app {

/// A row of the scope.
struct ScopeRow {
    Q_DECLARE_TR_FUNCTIONS(ScopeRow)
public:
    int signal = 0;  ///< index of the cell's signal
    QString name;    ///< the controller's name ("LUMO_DO.#3")
    QString label;   ///< the operator's name
    bool analogue = false;
    bool laser = false;  ///< the laser's light or power

    /// The value scaled to 0..1 for drawing.
    double level(double value) const;
    /// "1", "0" or "50.0 %".
    QString text(double value) const;

    bool operator==(const ScopeRow& other) const { return signal == other.signal && label == other.label; }
    bool operator!=(const ScopeRow& other) const { return !(*this == other); }
};

/// The rows to show: run and laser, the enabled ports in their order, then the other inputs and outputs
/// that changed in the record.
std::vector<ScopeRow> rowsOf(const workcell::CellSignals& cellSignals, const SignalRecord& record);

}  // namespace app
