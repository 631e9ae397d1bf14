#include "devices/porttable.h"

#include "look/scale.h"
#include "look/tokens.h"

#include <QEvent>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QScrollBar>
#include <QTableWidget>

#include <algorithm>
#include <numeric>

namespace lumo {

namespace {

constexpr int rowHeight = 48;
constexpr int padding = 12;  // left of a cell
constexpr int gap = 8;       // right of it
/// A longer name of a port takes two lines where there is no room.
constexpr int widestTag = 150;

bool isText(int column) {
    return column <= PortTable::TagColumn;
}

}  // namespace

PortTable::PortTable(QTableWidget* table, const RowGroups& groups)
    : QStyledItemDelegate(table), table_(table), groups_(groups) {
    table->setItemDelegate(this);
    table->installEventFilter(this);
    QHeaderView* const columns = table->horizontalHeader();
    columns->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    columns->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
}

QRgb PortTable::groundOf(int row) const {
    return groups_.isHead(row) ? headGround : look::white;
}

int PortTable::linePx(int row) const {
    return groups_.isHead(row) ? 2 : 1;
}

void PortTable::setCell(int row, Column column, QWidget* cell) {
    cell->setParent(table_->viewport());  // before it has a style sheet: it would be styled anew
    if (groups_.isHead(row) && column <= EnableColumn) {
        cell->setStyleSheet(QStringLiteral("background-color: #CCCCCC"));
    }
    if (isText(column)) {
        auto* const label = qobject_cast<QLabel*>(cell);
        label->setAlignment((column == NumberColumn ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
        label->setWordWrap(column != NumberColumn);
        label->setIndent(0);
    }
    table_->setCellWidget(row, column, cell);
}

void PortTable::mergeGroups() {
    for (const int start : groups_.starts) {
        int end = start + 1;
        while (end < table_->rowCount() && !groups_.isHead(end)) {
            ++end;
        }
        if (end - start > 2) {
            table_->setSpan(start + 1, GroupColumn, end - start - 1, 1);
        }
    }
}

/// The widest text of a column, or its widest word.
int PortTable::widthOfText(Column column, bool wholeText) const {
    int widest = 0;
    for (int row = 0; row < table_->rowCount(); ++row) {
        const auto* const label = qobject_cast<QLabel*>(table_->cellWidget(row, column));
        if (!label) {
            continue;
        }
        const QStringList words =
            wholeText ? QStringList{label->text()} : label->text().split(QLatin1Char(' '));
        for (const QString& word : words) {
            widest = std::max(widest, label->fontMetrics().horizontalAdvance(word));
        }
    }
    return widest + look::px(padding) + look::px(gap);
}

void PortTable::measure() {
    fold(isFolded_);
    for (int column = 0; column < ColumnCount; ++column) {
        int& least = least_[static_cast<std::size_t>(column)];
        least = table_->horizontalHeader()->sectionSizeHint(column);
        for (int row = 0; row < table_->rowCount() && !isText(column); ++row) {
            const QWidget* const cell = table_->cellWidget(row, column);
            if (!cell) {
                continue;
            }
            const int width = std::max(cell->sizeHint().width(), cell->minimumWidth());
            least = std::max(least, width + look::px(padding) + look::px(gap));
        }
    }
    least_[NumberColumn] = std::max(least_[NumberColumn], widthOfText(NumberColumn, true));
    least_[GroupColumn] = std::max(least_[GroupColumn], widthOfText(GroupColumn, false));
    least_[TagColumn] = std::max({least_[TagColumn], widthOfText(TagColumn, false),
                                  std::min(widthOfText(TagColumn, true), look::px(widestTag))});
    fit();
}

void PortTable::fit() {
    const int bar = table_->verticalScrollBar()->sizeHint().width();
    const int room = table_->width() - 2 * table_->frameWidth() - bar;
    int left = room - std::accumulate(least_.begin(), least_.end(), 0);
    const bool isNarrow = left < 0;
    if (isNarrow) {
        left += least_[NumberColumn] + least_[GroupColumn];
    }
    table_->setColumnHidden(NumberColumn, isNarrow);
    table_->setColumnHidden(GroupColumn, isNarrow);
    fold(left < 0);
    if (isFolded_) {
        for (int column = TagColumn; column < ColumnCount; ++column) {
            table_->setColumnWidth(column, room / (ColumnCount - TagColumn));
        }
        return;
    }
    // What is left over goes to the texts and the choice.
    constexpr std::array<int, ColumnCount> shares{0, 2, 3, 3, 1, 1, 0};
    const int all = std::accumulate(shares.begin(), shares.end(), 0) - (isNarrow ? shares[GroupColumn] : 0);
    for (std::size_t column = 0; column < ColumnCount; ++column) {
        table_->setColumnWidth(static_cast<int>(column), least_[column] + left * shares[column] / all);
    }
}

void PortTable::fold(bool folded) {
    isFolded_ = folded;
    const int height = look::px(folded ? 2 * rowHeight : rowHeight);
    table_->horizontalHeader()->setVisible(!folded);
    table_->verticalHeader()->setMinimumSectionSize(height);
    table_->verticalHeader()->setDefaultSectionSize(height);
}

/// Name and state above, choice, use and test below.
QRect PortTable::foldedPlace(const QRect& row, int column) const {
    const int height = row.height() / 2;
    const int half = row.width() / 2;
    const QRect above(row.left(), row.top(), row.width(), height);
    const QRect below(row.left(), row.top() + height, row.width(), height);
    constexpr int foldedTest = 128;
    const int test = std::min(least_[TestColumn], look::px(foldedTest));
    const int use = least_[EnableColumn];
    switch (column) {
        case StateColumn:
            return above.adjusted(half, 0, 0, 0);
        case NameColumn:
            return below.adjusted(0, 0, -use - test, 0);
        case EnableColumn:
            return below.adjusted(row.width() - use - test, 0, -test, 0);
        case TestColumn:
            return below.adjusted(row.width() - test, 0, 0, 0);
        default:
            return above.adjusted(0, 0, -half, 0);
    }
}

bool PortTable::eventFilter(QObject* watched, QEvent* event) {
    if (watched == table_ && event->type() == QEvent::Resize && least_[TagColumn] > 0) {
        fit();
    }
    return watched != table_ && QStyledItemDelegate::eventFilter(watched, event);
}

void PortTable::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const int row = index.row();
    painter->fillRect(option.rect, QColor(groundOf(row)));
    const QRgb line = groups_.isHead(row) ? look::ink2 : look::rule;
    painter->fillRect(QRect(option.rect.topLeft(), QSize(option.rect.width(), linePx(row))), QColor(line));
}

void PortTable::updateEditorGeometry(QWidget* cell, const QStyleOptionViewItem& option,
                                     const QModelIndex& index) const {
    const int line = linePx(index.row());
    const bool isMerged = index.column() == GroupColumn && index.row() > groups_.startOf(index.row()) + 1;
    if (isMerged) {
        cell->setGeometry(QRect(option.rect.topLeft(), QSize()));  // the first one stands for all
        return;
    }
    QRect place = option.rect.adjusted(0, line, 0, 0);
    if (isFolded_) {
        const int width = table_->horizontalHeader()->length();
        place = foldedPlace(QRect(0, place.top(), width, place.height()), index.column());
    }
    cell->setGeometry(place.adjusted(look::px(padding), 0, -look::px(gap), 0));
}

}  // namespace lumo
