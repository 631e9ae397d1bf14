#pragma once

#include "widgets/dressing.h"

#include <QStyledItemDelegate>

#include <array>

class QTableWidget;

namespace lumo {

/// Rows, columns and ground of the table of ports. Each cell is a widget; the table paints what is seen round
/// it: rows of 48 px, the first of a group in grey under a line. Without room for all columns, number and
/// group are left out; with less, the table scrolls.
class PortTable final : public QStyledItemDelegate {
    Q_OBJECT
public:
    enum Column {
        NumberColumn,
        GroupColumn,
        TagColumn,
        NameColumn,
        EnableColumn,
        StateColumn,
        TestColumn,
        ColumnCount
    };

    /// The table, which owns it, has its rows and no cells yet.
    PortTable(QTableWidget* table, const RowGroups& groups);

    /// The grey of a group's first row.
    static constexpr QRgb headGround = 0xffcccccc;
    [[nodiscard]] QRgb groundOf(int row) const;
    /// Takes a cell, and gives it the ground of its row.
    void setCell(int row, Column column, QWidget* cell);
    /// Merges the cells of the groups' names.
    void mergeGroups();
    /// Measures the cells that are there; to be called again when more are, or have changed their type.
    void measure();
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void updateEditorGeometry(QWidget* cell, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;

private:
    void fit();
    void fold(bool folded);
    [[nodiscard]] QRect foldedPlace(const QRect& row, int column) const;
    [[nodiscard]] int linePx(int row) const;
    [[nodiscard]] int widthOfText(Column column, bool wholeText) const;

    QTableWidget* const table_;
    const RowGroups groups_;
    std::array<int, ColumnCount> least_{};  ///< widths that the columns need
    bool isFolded_ = false;
};

}  // namespace lumo
