#pragma once

#include "stations/stationtable.h"
#include "widgets/foldedtable.h"

#include <QVector>

namespace lumo {

/// The rows of the stations: two lines a station for start and stop, lamps beside the inputs, and the state
/// with a sign.
class StationRows final : public FoldedTable {
    Q_OBJECT
public:
    /// The levels of a station's inputs.
    struct Lamps {
        bool start = false, stop = false;
        bool operator==(const Lamps& other) const { return start == other.start && stop == other.stop; }
    };

    explicit StationRows(QTableWidget* table);

    /// By row.
    void showLamps(const QVector<Lamps>& lamps);
    /// The rows that wait for their run, in the order in which they come.
    void showWaiting(const QVector<int>& rows);

protected:
    [[nodiscard]] int neededWidth(int column) const override;
    [[nodiscard]] int spareWidth(int column) const override;
    [[nodiscard]] int weight(int column) const override { return column == NumberColumn ? 0 : 1; }
    [[nodiscard]] int rowHeight() const override;
    [[nodiscard]] int cellHeight() const override;
    [[nodiscard]] int restColumn() const override { return NameColumn; }
    void paintCell(QPainter* painter, const QRect& cell, const QModelIndex& index,
                   bool isSelected) const override;

private:
    void paintLines(QPainter* painter, const QRect& place, const QModelIndex& index) const;
    void paintState(QPainter* painter, const QRect& place, const QModelIndex& index) const;

    QVector<Lamps> lamps_;
    QVector<int> waiting_;
};

}  // namespace lumo
