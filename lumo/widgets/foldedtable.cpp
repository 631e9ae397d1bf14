#include "widgets/foldedtable.h"

#include "look/scale.h"
#include "look/tokens.h"
#include "look/type.h"

#include <QEvent>
#include <QHeaderView>
#include <QPainter>
#include <QScopedValueRollback>
#include <QTableWidget>

#include <algorithm>
#include <numeric>

namespace lumo {

namespace {

constexpr int headerHeight = 44;
constexpr int shortCaption = 64;  ///< keeps to one line
constexpr int restAir = 6;        ///< above the cells and below the values below them together

int widest(const QStringList& texts, const QFontMetrics& metrics) {
    int width = 0;
    for (const QString& text : texts) {
        width = std::max(width, metrics.horizontalAdvance(text));
    }
    return width;
}

/// Lines break between pieces, not inside one; a piece that is too long for a line is elided.
QString inLines(const QStringList& pieces, const QFontMetrics& metrics, int width) {
    const QString between = QStringLiteral(" · ");
    QStringList lines;
    for (const QString& piece : pieces) {
        const QString longer = lines.isEmpty() ? QString() : lines.last() + between + piece;
        if (!longer.isEmpty() && metrics.horizontalAdvance(longer) <= width) {
            lines.last() = longer;
        } else {
            lines.append(metrics.elidedText(piece, Qt::ElideRight, width));
        }
    }
    return lines.join(QLatin1Char('\n'));
}

/// Adds so many px, or takes them, by the shares of the columns.
template <typename ShareOf>
void distribute(QVector<int>* widths, int px, const ShareOf& shareOf) {
    int shares = 0;
    for (int column = 0; column < widths->size(); ++column) {
        shares += shareOf(column);
    }
    for (int column = 0; column < widths->size() && shares > 0; ++column) {
        const int part = px * shareOf(column) / shares;
        (*widths)[column] += part;
        px -= part;
        shares -= shareOf(column);
    }
}

}  // namespace

FoldedTable::FoldedTable(QTableWidget* table, const QVector<int>& order)
    : QStyledItemDelegate(table), table_(table), viewport_(table->viewport()), order_(order) {
    table->setItemDelegate(this);
    table->setShowGrid(false);
    table->setWordWrap(false);
    table->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    table->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->horizontalHeader()->setStretchLastSection(false);
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->installEventFilter(this);
    viewport_->installEventFilter(this);
}

QString FoldedTable::text(int row, int column) const {
    const QTableWidgetItem* const item = table_->item(row, column);
    return item ? item->text() : QString();
}

int FoldedTable::widestText(int column, const QFont& font) const {
    int width = 0;
    const QFontMetrics metrics(font);
    for (int row = 0; row < table_->rowCount(); ++row) {
        width = std::max(width, widest(text(row, column).split(QLatin1Char('\n')), metrics));
    }
    constexpr int rounding = 2;
    return width + rounding;
}

/// Captions take two lines: between words, or where their text says it.
int FoldedTable::captionWidth(int column) const {
    const QString caption = table_->horizontalHeaderItem(column)->text();
    const QFontMetrics metrics(look::font(look::Size::Caption, look::Weight::Strong));
    const bool isDivided = caption.contains(QLatin1Char('\n'));
    if (!isDivided && metrics.horizontalAdvance(caption) <= look::px(shortCaption)) {
        return metrics.horizontalAdvance(caption);
    }
    return widest(caption.split(QLatin1Char(isDivided ? '\n' : ' ')), metrics);
}

// --- Layout ---------------------------------------------------------------------------------------

bool FoldedTable::eventFilter(QObject* watched, QEvent* event) {
    const bool resized = watched == viewport_ && event->type() == QEvent::Resize;
    const bool dressed = watched == table_ && event->type() == QEvent::StyleChange;
    const bool shown = watched == table_ && event->type() == QEvent::Show;
    if (resized || dressed || shown) {
        fit();
    }
    // The other ones are the editors of cells.
    return watched != table_ && watched != viewport_ && QStyledItemDelegate::eventFilter(watched, event);
}

void FoldedTable::fit() {
    if (isFitting_ || !table_->isVisible()) {
        return;
    }
    const QScopedValueRollback<bool> guard(isFitting_, true);
    table_->horizontalHeader()->setFixedHeight(look::px(headerHeight));
    fitColumns();
    fitRows();
    table_->viewport()->update();
}

void FoldedTable::fitColumns() {
    QVector<int> widths, spares;
    for (int column = 0; column < table_->columnCount(); ++column) {
        const int least = std::max(captionWidth(column) + look::px(2 * padding),
                                   table_->horizontalHeader()->minimumSectionSize());
        widths.append(std::max(neededWidth(column), least));
        spares.append(std::min(spareWidth(column), widths.last() - least));
    }
    int total = std::accumulate(widths.begin(), widths.end(), 0);
    int spare = std::accumulate(spares.begin(), spares.end(), 0);
    const int room = table_->viewport()->width();
    hidden_.clear();
    for (const int column : order_) {
        if (total - spare <= room) {
            break;
        }
        hidden_.append(column);
        total -= widths[column];
        spare -= spares[column];
    }
    std::sort(hidden_.begin(), hidden_.end());
    const bool isShort = total > room;
    distribute(&widths, room - total, [this, &spares, isShort](int column) {
        return hidden_.contains(column) ? 0 : isShort ? spares[column] : weight(column);
    });
    for (int column = 0; column < widths.size(); ++column) {
        table_->setColumnHidden(column, hidden_.contains(column));
        table_->setColumnWidth(column, std::max(1, widths[column]));
    }
}

void FoldedTable::fitRows() {
    rests_.clear();
    restHeight_ = 0;
    const QFontMetrics metrics(look::font(look::Size::Caption));
    for (int row = 0; row < table_->rowCount(); ++row) {
        rests_.append(inLines(restPieces(row), metrics, restPlace(row).width()));
        if (!rests_.last().isEmpty()) {
            // As drawn: another script's type is higher than that of the metrics.
            const QRect room(0, 0, restPlace(row).width(), 1);
            const int height =
                metrics.boundingRect(room, Qt::AlignLeft | Qt::TextDontClip, rests_.last()).height();
            restHeight_ = std::max(restHeight_, height);
        }
    }
    const int folded = cellHeight() + restHeight_ + look::px(restAir);
    const int height = restHeight_ > 0 ? std::max(rowHeight(), folded) : rowHeight();
    table_->verticalHeader()->setDefaultSectionSize(height);
    for (int row = 0; row < table_->rowCount(); ++row) {
        table_->setRowHeight(row, height);
    }
}

QStringList FoldedTable::restPieces(int row) const {
    QStringList pieces;
    for (const int column : hidden_) {
        if (column < restColumn()) {
            continue;  // the row's number
        }
        const QStringList caption = table_->horizontalHeaderItem(column)->text().split(QLatin1Char('\n'));
        QString value = text(row, column);
        if (!value.isEmpty() && value != QLatin1String("\n")) {
            const QString unit = caption.size() > 1 ? QLatin1Char(' ') + caption[1] : QString();
            value.replace(QLatin1Char('\n'), QLatin1String(", "));
            pieces.append(caption[0] + QLatin1Char(' ') + value + unit);
        }
    }
    return pieces;
}

/// Across the row, in px of the viewport; its height is the row's.
QRect FoldedTable::restPlace(int row) const {
    const int left = table_->columnViewportPosition(restColumn()) + look::px(padding);
    return {left, table_->rowViewportPosition(row), table_->viewport()->width() - left - look::px(padding),
            table_->rowHeight(row)};
}

// --- Painting -------------------------------------------------------------------------------------

void FoldedTable::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
    const bool isSelected = table_->selectionModel()->isRowSelected(index.row(), QModelIndex());
    painter->save();
    const QRect& row = option.rect;
    painter->fillRect(row, QColor(isSelected ? look::sel : look::white));
    if (isSelected) {
        painter->fillRect(QRect(row.left(), row.top(), row.width(), 1), QColor(look::blue));
    }
    painter->fillRect(QRect(row.left(), row.bottom(), row.width(), 1),
                      QColor(isSelected ? look::blue : look::rule));
    const bool isFolded = index.row() < rests_.size() && !rests_[index.row()].isEmpty();
    const QRect cell(row.left(), row.top() + (isFolded ? look::px(restAir) / 2 : 0), row.width(),
                     isFolded ? cellHeight() : row.height());
    paintCell(painter, cell, index, isSelected);
    if (isFolded && index.column() >= restColumn()) {
        paintRest(painter, row, index.row());
    }
    painter->restore();
}

/// The part of the row's values that lies in a cell's width.
void FoldedTable::paintRest(QPainter* painter, const QRect& cell, int row) const {
    QRect place = restPlace(row);
    place.setTop(place.top() + look::px(restAir) / 2 + cellHeight());
    painter->setClipRect(cell);
    painter->setFont(look::font(look::Size::Caption));
    painter->setPen(QColor(look::ink3));
    painter->drawText(place, Qt::AlignLeft | Qt::AlignTop, rests_[row]);
}

}  // namespace lumo
