#pragma once

#include <QString>
#include <QVector>

class QLabel;
class QTableWidget;

namespace lumo {

/// Rows in groups: where each group begins, the first at 0. The first row of a group is its head.
struct RowGroups {
    QVector<int> starts;

    [[nodiscard]] int groupOf(int row) const;
    [[nodiscard]] int startOf(int row) const { return starts[groupOf(row)]; }
    [[nodiscard]] bool isHead(int row) const { return startOf(row) == row; }
};

/// A centred text for a table's cell.
[[nodiscard]] QLabel* cellLabel(const QString& text = QString());

/// Dresses a table full of cell widgets: the heads of the groups in grey, the cells of `groupColumn`
/// below each head merged.
void dressGroups(QTableWidget* table, const RowGroups& groups, int groupColumn);

}  // namespace lumo
