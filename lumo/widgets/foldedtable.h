#pragma once

#include <QStringList>
#include <QStyledItemDelegate>
#include <QVector>

class QTableWidget;

namespace lumo {

/// Draws the rows of a table so that they fit into its width. Where there is no room for all columns, those
/// that matter least are hidden; their captions and values stand below the other cells, across the row. A
/// heading "Power\n%" gives the value its unit there.
class FoldedTable : public QStyledItemDelegate {
    Q_OBJECT
public:
    /// The table owns it. `order`: the columns that are hidden where room is short, in that order.
    FoldedTable(QTableWidget* table, const QVector<int>& order);

    /// After a change of texts: fits the columns and rows now, or when the table is shown.
    void fit();

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

protected:
    /// Px that a column needs for its cells, without its caption.
    [[nodiscard]] virtual int neededWidth(int column) const = 0;
    /// Px of these that it can do without: its texts are elided then.
    [[nodiscard]] virtual int spareWidth(int column) const = 0;
    /// A column's part of the room that is left.
    [[nodiscard]] virtual int weight(int column) const = 0;
    /// Px of a row, with and without values below its cells; of the cells alone in the first case.
    [[nodiscard]] virtual int rowHeight() const = 0;
    [[nodiscard]] virtual int cellHeight() const = 0;
    /// The column at whose left the values below begin.
    [[nodiscard]] virtual int restColumn() const = 0;
    /// Draws a cell's content.
    virtual void paintCell(QPainter* painter, const QRect& cell, const QModelIndex& index,
                           bool isSelected) const = 0;

    [[nodiscard]] QTableWidget* table() const { return table_; }
    [[nodiscard]] QString text(int row, int column) const;
    /// Px of the widest of the cells' lines in this type.
    [[nodiscard]] int widestText(int column, const QFont& font) const;
    static constexpr int padding = 8;  ///< at either side of a cell, px at factor 1

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] int captionWidth(int column) const;
    [[nodiscard]] QStringList restPieces(int row) const;
    [[nodiscard]] QRect restPlace(int row) const;
    void fitColumns();
    void fitRows();
    void paintRest(QPainter* painter, const QRect& cell, int row) const;

    QTableWidget* const table_;
    QWidget* const viewport_;  ///< only compared: events come while the table is being deleted
    const QVector<int> order_;
    QVector<int> hidden_;  ///< columns, in the order of the table
    QStringList rests_;    ///< by row
    int restHeight_ = 0;   ///< px, the same in all rows
    bool isFitting_ = false;
};

}  // namespace lumo
