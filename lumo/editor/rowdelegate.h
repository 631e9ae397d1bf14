#pragma once

#include <QFont>
#include <QHash>
#include <QStyledItemDelegate>

/// Draws the running-line marker, on green over the whole of its cell, also of a selected one.
///
/// Gives the rows of the program their heights: measures only the cells that can need more than the least
/// height of a row, and leaves some air around their lines. Without it the last line would be cut off where
/// lines in several scripts, and so of several heights, meet in one cell.
///
/// Laying out the texts is nearly all that a long program costs when it is opened. Most differ in their
/// numbers only, and digits are equally wide in nearly every font: such texts are laid out once.
class RowDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    /// The texts of a column that were laid out.
    struct Known {
        QFont font;
        int width = -1;               ///< of the column, px
        bool digitsAreAlike = false;  ///< in that font, each beside each other
        QHash<QString, QSize> sizes;
    };

    Known& known(const QStyleOptionViewItem& option, int column) const;

    mutable QHash<int, Known> columns_;
};
