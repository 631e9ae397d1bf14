#include "app/results/seamlist.h"

#include <QColor>
#include <QFont>

namespace app {

namespace {

const QColor good(0x1f, 0x6b, 0x3a);
const QColor bad(0xb0, 0x1e, 0x1e);
const QColor badFill(0xfb, 0xe3, 0xdc);

QString textOf(const SeamCell& cell) {
    return cell.mark == Mark::NoLimit
               ? cell.text
               : QStringLiteral("%1 %2\n%3").arg(signOf(cell.mark), cell.text, cell.allowed);
}

QVariant colourOf(Mark mark) {
    return mark == Mark::NoLimit ? QVariant() : QVariant(mark == Mark::Within ? good : bad);
}

}  // namespace

SeamList::SeamList(QObject* parent) : QAbstractTableModel(parent), headings_(seamHeadings()) {}

void SeamList::show(const RunResult& result) {
    beginResetModel();
    seams_.clear();
    for (const workcell::SeamRecord& seam : result.record.seams) {
        seams_.append(seamCells(seam, result));
    }
    endResetModel();
}

void SeamList::clear() {
    beginResetModel();
    seams_.clear();
    endResetModel();
}

int SeamList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() || seams_.isEmpty() ? 0 : headings_.size();
}

int SeamList::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : seams_.size();
}

QVariant SeamList::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const SeamCell& cell = seams_[index.column()][index.row()];
    switch (role) {
        case Qt::DisplayRole:
        case Qt::ToolTipRole:
            return textOf(cell);
        case Qt::ForegroundRole:
            return colourOf(cell.mark);
        case Qt::BackgroundRole:
            return cell.mark == Mark::Outside ? badFill : QVariant();
        case Qt::TextAlignmentRole:
            return int(Qt::AlignRight | Qt::AlignVCenter);
        default:
            return {};
    }
}

QVariant SeamList::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role == Qt::TextAlignmentRole && orientation == Qt::Vertical) {
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    }
    if (role != Qt::DisplayRole) {
        return QAbstractTableModel::headerData(section, orientation, role);
    }
    return orientation == Qt::Vertical ? headings_.value(section) : tr("焊缝 %1").arg(section + 1);
}

}  // namespace app
