#pragma once

#include <QString>

namespace lumo::steptext {

// What a step of the history is called, in the operator's language. Rows are counted from 0.

[[nodiscard]] QString lineInserted(int row, const QString& command);
[[nodiscard]] QString lineDeleted(int row, const QString& command);
[[nodiscard]] QString linePasted(int row, const QString& command);
[[nodiscard]] QString lineMoved(int from, int to);
[[nodiscard]] QString lineEdited(int row, const QString& command);
[[nodiscard]] QString lineTaught(int row, const QString& command);
[[nodiscard]] QString runFlag(int firstRow, int count);
[[nodiscard]] QString speed(int count);
[[nodiscard]] QString zone(int count);

[[nodiscard]] QString setAdded(const QString& name);
[[nodiscard]] QString setDeleted(const QString& name);
[[nodiscard]] QString setRenamed(const QString& from, const QString& to);
[[nodiscard]] QString setEdited(const QString& name);
[[nodiscard]] QString setMoved(const QString& name);
[[nodiscard]] QString setsImported(int count);
[[nodiscard]] QString portsChanged();
[[nodiscard]] QString stationAdded(const QString& name);
[[nodiscard]] QString stationDeleted(const QString& name);
[[nodiscard]] QString stationEdited(const QString& name);

}  // namespace lumo::steptext
