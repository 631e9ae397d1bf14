#include "app/results/seamlist.h"

#include "look/icon.h"
#include "look/scale.h"
#include "look/tokens.h"
#include "look/type.h"

#include <QPainter>

namespace app {

void SeamList::show(const RunResult& result) {
    beginResetModel();
    headings_ = seamColumnHeadings(result);
    seams_.clear();
    for (int seam = 0; seam < int(result.record.seams.size()); ++seam) {
        seams_.append(seamRow(seam, result));
    }
    endResetModel();
}

void SeamList::clear() {
    beginResetModel();
    seams_.clear();
    endResetModel();
}

int SeamList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : seams_.size();
}

/// The seam's number is the first one.
int SeamList::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : seamColumns + 1;
}

QVariant SeamList::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const int column = index.column() - 1;
    const SeamCell cell = column < 0 ? SeamCell{QString::number(index.row() + 1), Mark::NoLimit, {}}
                                     : seams_[index.row()][column];
    switch (role) {
        case Qt::DisplayRole:
            return cell.text;
        case markRole:
            return int(cell.mark);
        case Qt::TextAlignmentRole:
            return int(Qt::AlignVCenter) |
                   int(column == SeamLines || column == SeamSet ? Qt::AlignLeft : Qt::AlignRight);
        default:
            return {};
    }
}

QVariant SeamList::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) {
        return {};
    }
    const int column = section - 1;
    if (role == Qt::TextAlignmentRole) {
        return int(Qt::AlignVCenter) | int(column == SeamLines || column == SeamSet
                                               ? Qt::AlignLeft
                                               : (column == SeamGood ? Qt::AlignHCenter : Qt::AlignRight));
    }
    if (role == Qt::DisplayRole) {
        return column < 0 ? tr("焊缝") : headings_.value(column);
    }
    return {};
}

void SeamDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const Mark mark = Mark(index.data(SeamList::markRole).toInt());
    const bool isVerdict = index.column() == SeamGood + 1;
    const bool isOutside = mark == Mark::Outside && !isVerdict;
    const int padding = look::px(8);
    painter->save();
    painter->fillRect(option.rect,
                      QColor(isOutside ? look::amberTint : (isSelected ? look::sel : look::white)));
    painter->setPen(QColor(isSelected ? look::blue : look::rule));
    painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
    if (isSelected) {
        painter->drawLine(option.rect.topLeft(), option.rect.topRight());
    }
    if (isVerdict && mark != Mark::NoLimit) {
        const int side = look::px(22);
        const QPixmap sign =
            look::picture(mark == Mark::Within ? QStringLiteral("check") : QStringLiteral("warn"), side,
                          mark == Mark::Within ? look::green : look::amberInk);
        painter->drawPixmap(option.rect.center() - QPoint(side / 2, side / 2), sign);
    }
    painter->setFont(look::font(look::Size::Text, isOutside ? look::Weight::Strong : look::Weight::Plain));
    painter->setPen(QColor(isOutside ? look::amberInk : look::ink));
    const QRect place = option.rect.adjusted(padding, 0, -padding, 0);
    const QString text = index.data().toString();
    painter->drawText(place, index.data(Qt::TextAlignmentRole).toInt(),
                      painter->fontMetrics().elidedText(text, Qt::ElideMiddle, place.width()));
    painter->restore();
}

}  // namespace app
