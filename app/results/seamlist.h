#pragma once

#include "app/results/resulttext.h"

#include <QAbstractTableModel>

namespace app {

/// The seams of a run, one column each, with a row for each quantity and its limit.
class SeamList : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit SeamList(QObject* parent = nullptr);

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

}  // namespace app
