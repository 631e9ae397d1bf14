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

/// The state of a station as it is shown.
enum class StationState { Unknown, Triggered, Running, Untriggered };

/// Appends an empty row with its number.
void appendStationRow(QTableWidget* table);
/// The same at a place of its own; the rows below it keep their numbers.
void insertStationRow(QTableWidget* table, int row);
/// Numbers the rows from 1.
void renumberStations(QTableWidget* table);
/// Shows a station in its row, with the state Unknown.
void showStation(QTableWidget* table, int row, const mendo::ModuleObject* station);
/// Shows a state; does nothing when there is no such row.
void showState(QTableWidget* table, int row, StationState state);
/// The word of a state, and the state that a word means.
[[nodiscard]] QString stateText(StationState state);
[[nodiscard]] StationState stateOf(const QString& word);
/// When a station that waits has its turn: 0 is the next.
[[nodiscard]] QString turnText(int turn);
/// Fits columns and rows of a table that lumo::StationRows draws.
void fitStations(QTableWidget* table);
/// Text of a cell; empty if there is none.
[[nodiscard]] QString stationCell(const QTableWidget* table, int row, StationColumn column);

}  // namespace lumo
