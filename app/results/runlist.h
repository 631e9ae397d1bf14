#pragma once

#include "app/results/runhistory.h"

#include <QAbstractTableModel>
#include <QHash>

namespace app {

/// The rows of the list of runs. A run's file is read when its row comes into view.
class RunList : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Begun, Project, Reason, Duration, Seams, Limits, ColumnCount };

    /// `history` must outlive it.
    explicit RunList(const RunHistory* history, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Line {
        QStringList texts;  ///< by the columns
        bool isOutside = false;
    };
    void reset();
    [[nodiscard]] Line line(int row) const;
    [[nodiscard]] static Line lineOf(const RunResult& result);

    const RunHistory* history_;
    mutable QHash<QString, Line> lines_;  ///< by the names of the files
};

}  // namespace app
