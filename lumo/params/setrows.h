#pragma once

#include "module/host.h"
#include "widgets/foldedtable.h"

#include <QList>

namespace lumo {

/// Columns of the table of the parameter sets. The form has the first two.
enum SetColumn {
    SetNumber,
    SetName,
    SetPower,
    SetFrequency,
    SetDuty,
    SetRampUp,
    SetRampDown,
    SetGasBefore,
    SetGasAfter,
    SetWire,
    SetLines,
    SetNote,
    SetColumnCount
};

/// The rows of the parameter sets: main values in columns of figures, and the lines that use each.
class SetRows final : public FoldedTable {
    Q_OBJECT
public:
    /// Adds the columns of the values to the table, which owns this.
    explicit SetRows(QTableWidget* table);

    /// Appends an empty row with its number.
    void append();
    /// `lines`: those of the program that use the set, from 0.
    void show(int row, const ModuleObject* set, const QList<int>& lines);

protected:
    [[nodiscard]] int neededWidth(int column) const override;
    [[nodiscard]] int spareWidth(int column) const override;
    [[nodiscard]] int weight(int column) const override;
    [[nodiscard]] int rowHeight() const override;
    [[nodiscard]] int cellHeight() const override;
    [[nodiscard]] int restColumn() const override { return SetName; }
    void paintCell(QPainter* painter, const QRect& cell, const QModelIndex& index,
                   bool isSelected) const override;
};

}  // namespace lumo
