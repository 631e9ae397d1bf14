#pragma once

class QString;
class QTableWidget;

namespace mendo {
class ModuleObject;
}

namespace lumo {

/// Columns of the table of stations.
enum StationColumn {
    NumberColumn,
    NameColumn,
    ProjectColumn,
    InputKindColumn,
    InputColumn,
    EdgeColumn,
    PeriodColumn,
    StateColumn,
    OutputKindColumn,
    OutputColumn
};

/// What the state of a station can be, as it is shown.
enum class StationState { Unknown, Triggered, Running, Untriggered };

/// Adds an empty row with its number at the end.
void appendStationRow(QTableWidget* table);
/// Numbers the rows from 1.
void renumberStations(QTableWidget* table);
/// Shows a station in its row; the state as unknown.
void showStation(QTableWidget* table, int row, const mendo::ModuleObject* station);
/// Shows a state; nothing when there is no such row.
void showState(QTableWidget* table, int row, StationState state);
/// Makes the columns as wide as their cells, every state and the longest word of their caption need, and
/// the rows as high as their lines.
void fitStations(QTableWidget* table);
/// Text of a cell; empty where there is none.
[[nodiscard]] QString stationCell(const QTableWidget* table, int row, StationColumn column);

}  // namespace lumo
