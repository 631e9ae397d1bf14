#pragma once

#include "app/results/resulttext.h"

#include <QAbstractTableModel>
#include <QStyledItemDelegate>

namespace app {

/// The seams of a run, one row each.
class SeamList : public QAbstractTableModel {
    Q_OBJECT
public:
    /// What a cell has besides its text: its Mark.
    static constexpr int markRole = Qt::UserRole;

    using QAbstractTableModel::QAbstractTableModel;

    void show(const RunResult& result);
    void clear();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QStringList headings_;
    QVector<QVector<SeamCell>> seams_;
};

/// Draws the rows of seams: values outside of their limits on a ground of warning, and a sign instead of the
/// verdict.
class SeamDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
};

}  // namespace app
