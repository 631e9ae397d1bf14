#pragma once

#include <QString>
#include <QVector>

class QLabel;
class QTableWidget;
class QWidget;

namespace lumo {

/// Sets a widget's style sheet if it differs: setting the same one again would polish the widget and its
/// children anew.
void setStyleSheetOnChange(QWidget* widget, const QString& sheet);

/// Rows in groups: the first row of each group, from 0. That row is the group's head.
struct RowGroups {
    QVector<int> starts;

    [[nodiscard]] int groupOf(int row) const;
    [[nodiscard]] int startOf(int row) const { return starts[groupOf(row)]; }
    [[nodiscard]] bool isHead(int row) const { return startOf(row) == row; }
};

/// A centred text for a table's cell.
[[nodiscard]] QLabel* cellLabel(const QString& text = QString());

/// Dresses a table full of cell widgets: the heads of the groups in grey, the cells of `groupColumn` below
/// each head merged.
void dressGroups(QTableWidget* table, const RowGroups& groups, int groupColumn);

}  // namespace lumo
