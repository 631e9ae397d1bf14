#pragma once

#include <QFont>
#include <QHash>
#include <QStyledItemDelegate>

namespace lumo {
class ProgramCheck;
}

/// Draws the running-line marker on green, also in a selected row, and beside the line's number the mark of
/// its findings; says of a point that it was never taught; gives rows their heights.
///
/// Only details and notes are measured: other cells fit into the least height of a row. Some space is added,
/// because lines in several scripts have several heights and the last line could be cut off.
///
/// Laying out texts takes most of the time when a long program is opened. Most texts differ only in their
/// numbers, and digits are equally wide in nearly every font: such texts are laid out once.
class RowDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// Marks the lines that have findings; the check must outlive the table. Null: no line is marked.
    void setCheck(const lumo::ProgramCheck* check) { check_ = check; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    /// Tells a marked line's findings as a tool tip.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

private:
    /// Sizes of the texts of a column.
    struct Known {
        QFont font;
        int width = -1;               ///< of the column, px
        bool digitsAreAlike = false;  ///< all digits of the font have one width, whatever precedes them
        QHash<QString, QSize> sizes;
    };

    Known& known(const QStyleOptionViewItem& option, int column) const;

    static void paintUntaught(QPainter* painter, const QStyleOptionViewItem& option);
    void paintMarker(QPainter* painter, const QStyleOptionViewItem& option, const QString& marker) const;

    const lumo::ProgramCheck* check_ = nullptr;
    mutable QHash<int, Known> columns_;
};
