#include "devices/tilecard.h"

#include "look/scale.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QVariant>

#include <algorithm>

namespace lumo {

namespace {

constexpr int padding = 16;
constexpr int gap = 8;

}  // namespace

TileCard::TileCard(QWidget* parent) : QFrame(parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
}

void TileCard::make(QLabel* title, QWidget* tool, int leastTilePx) {
    grid_ = new QGridLayout(this);  // cppcheck-suppress publicAllocationError  // called once
    title_ = title;
    tool_ = tool;
    leastTilePx_ = leastTilePx;
}

void TileCard::addTile(QLabel* caption, QLabel* value, QLabel* unit) {
    auto* const tile = new QFrame(this);
    tile->setProperty("tile", true);
    caption->setWordWrap(true);
    caption->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    auto* const rows = new QGridLayout(tile);
    rows->addWidget(caption, 0, 0, 1, 2);
    rows->addWidget(value, 1, 0, 1, unit ? 1 : 2);
    if (unit) {
        rows->addWidget(unit, 1, 1, Qt::AlignLeft | Qt::AlignBottom);
        rows->setColumnStretch(1, 1);
    }
    rows->setRowStretch(0, 1);
    tiles_.push_back(tile);
}

/// All tiles in one row, or rows of the same number of tiles.
int TileCard::columnsFor(int width) const {
    const int count = static_cast<int>(tiles_.size());
    int columns = count;
    while (columns > 1 && (count % columns != 0 || columns * look::px(leastTilePx_) > width)) {
        --columns;
    }
    return columns;
}

void TileCard::fold() {
    const int columns = columnsFor(width() - 2 * look::px(padding));
    if (!grid_ || (columns == columns_ && factor_ == look::factor())) {
        return;
    }
    columns_ = columns;
    factor_ = look::factor();
    while (QLayoutItem* const item = grid_->takeAt(0)) {
        delete item;
    }
    const int side = look::px(padding);
    grid_->setContentsMargins(side, look::px(12), side, side);
    grid_->setSpacing(look::px(gap));
    grid_->addWidget(title_, 0, 0, 1, tool_ ? std::max(columns - 1, 1) : columns, Qt::AlignVCenter);
    if (tool_) {
        grid_->addWidget(tool_, 0, columns - 1, Qt::AlignRight);
    }
    for (std::size_t i = 0; i < tiles_.size(); ++i) {
        const int place = static_cast<int>(i);
        auto* const rows = static_cast<QGridLayout*>(tiles_[i]->layout());
        rows->setContentsMargins(look::px(12), look::px(gap), look::px(12), look::px(gap));
        rows->setHorizontalSpacing(look::px(6));
        rows->setVerticalSpacing(look::px(4));
        grid_->addWidget(tiles_[i], 1 + place / columns, place % columns);
    }
    for (std::size_t column = 0; column < tiles_.size(); ++column) {
        grid_->setColumnStretch(static_cast<int>(column), static_cast<int>(column) < columns ? 1 : 0);
    }
}

void TileCard::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    fold();
}

void TileCard::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        fold();
    }
}

}  // namespace lumo
