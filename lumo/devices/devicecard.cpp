#include "devices/devicecard.h"

#include "look/icon.h"
#include "look/scale.h"
#include "widgets/way.h"

#include <QEvent>
#include <QGridLayout>
#include <QPushButton>
#include <QStyle>

#include <algorithm>

namespace lumo {

namespace {

constexpr int gap = 16;
constexpr int headWidth = 192;
constexpr int mostColumns = 3;

/// Takes everything out of a grid, and forgets its columns.
void empty(QGridLayout* grid) {
    while (QLayoutItem* const item = grid->takeAt(0)) {
        delete item;
    }
    for (int column = 0; column <= mostColumns + 1; ++column) {
        grid->setColumnStretch(column, 0);
        grid->setColumnMinimumWidth(column, 0);
    }
    for (int row = 0; row < grid->rowCount(); ++row) {
        grid->setRowStretch(row, 0);
    }
}

}  // namespace

DeviceCard::DeviceCard(QWidget* parent) : QFrame(parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
}

void DeviceCard::make(QLabel* title, const QString& icon) {
    grid_ = new QGridLayout(this);  // cppcheck-suppress publicAllocationError  // called once
    head_ = new QWidget(this);
    headGrid_ = new QGridLayout(head_);
    headGrid_->setContentsMargins(0, 0, 0, 0);
    title_ = title;
    icon_ = new QLabel(head_);
    iconName_ = icon;
    state_ = new SignLabel(head_);
    state_->setObjectName(QStringLiteral("cardState"));
    state_->setWordWrap(true);
    detail_ = new QLabel(head_);
    detail_->setObjectName(QStringLiteral("cardDetail"));
    detail_->setWordWrap(true);
    detail_->hide();
    toPorts_ = new QPushButton(tr("转到端口页"), head_);
    toPorts_->setIcon(look::icon(QStringLiteral("port")));
    toPorts_->hide();
    const Way way{Way::To::Ports};
    connect(toPorts_, &QPushButton::clicked, this, [way] { Guide::instance()->lead(way); });
}

void DeviceCard::addRow(const std::vector<QWidget*>& cells) {
    rows_.push_back(cells);
}

DeviceCard::Form DeviceCard::formFor(int width) const {
    constexpr int besideFrom = 780;
    constexpr int threeFrom = 520;
    const bool isBeside = width >= look::px(besideFrom);
    return {width >= look::px(threeFrom) ? mostColumns : 2, isBeside, look::factor()};
}

void DeviceCard::fold() {
    const Form form = formFor(width());
    if (!grid_ || form == form_) {
        return;
    }
    form_ = form;
    const int margin = look::px(gap) - 2;  // the frame and what is left of its width are 2 px
    empty(grid_);
    grid_->setContentsMargins(margin, margin, margin, margin);
    grid_->setSpacing(look::px(gap));
    layHead();
    if (form.isBeside) {
        grid_->addWidget(head_, 0, 0, static_cast<int>(rows_.size()), 1);
        grid_->setColumnMinimumWidth(0, look::px(headWidth));
        head_->setFixedWidth(look::px(headWidth));
        layCells(0, 1);
    } else {
        head_->setMinimumWidth(0);
        head_->setMaximumWidth(QWIDGETSIZE_MAX);
        grid_->addWidget(head_, 0, 0, 1, form.columns);
        layCells(1, 0);
    }
}

void DeviceCard::layCells(int firstRow, int firstColumn) {
    int line = firstRow;
    for (const std::vector<QWidget*>& row : rows_) {
        int column = 0;
        for (QWidget* const cell : row) {
            if (column == form_.columns) {
                column = 0;
                ++line;
            }
            cell->layout()->setSpacing(look::px(4));
            grid_->addWidget(cell, line, firstColumn + column);
            ++column;
        }
        for (; column < form_.columns; ++column) {
            grid_->addWidget(fillerAt(column), line, firstColumn + column);
        }
        ++line;
    }
    for (int column = 0; column < form_.columns; ++column) {
        grid_->setColumnStretch(firstColumn + column, 1);
    }
}

/// An empty column would take no space, and the others grow.
QWidget* DeviceCard::fillerAt(int column) {
    fillers_.resize(std::max<std::size_t>(fillers_.size(), column + 1U));
    QWidget*& filler = fillers_[static_cast<std::size_t>(column)];
    if (!filler) {
        filler = new QWidget(this);
    }
    return filler;
}

void DeviceCard::layHead() {
    constexpr int iconSide = 26;
    icon_->setPixmap(look::picture(iconName_, look::px(iconSide)));
    toPorts_->setIconSize(QSize(look::px(20), look::px(20)));
    empty(headGrid_);
    headGrid_->setHorizontalSpacing(look::px(8));
    headGrid_->setVerticalSpacing(look::px(8));
    headGrid_->addWidget(icon_, 0, 0);
    headGrid_->addWidget(title_, 0, 1);
    title_->setWordWrap(form_.isBeside);
    if (form_.isBeside) {
        headGrid_->addWidget(state_, 1, 0, 1, 2);
        headGrid_->addWidget(detail_, 2, 0, 1, 2);
        headGrid_->addWidget(toPorts_, 3, 0, 1, 2, Qt::AlignLeft);
        headGrid_->setColumnStretch(1, 1);
        headGrid_->setRowStretch(4, 1);
    } else {
        headGrid_->addWidget(state_, 0, 2);
        headGrid_->addWidget(toPorts_, 0, 3);
        headGrid_->addWidget(detail_, 1, 0, 1, 4);
        headGrid_->setColumnStretch(2, 1);
    }
}

void DeviceCard::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    fold();
}

void DeviceCard::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        fold();
    }
}

void DeviceCard::showState(Sign sign, const QString& state) {
    state_->show(sign, state);
}

void DeviceCard::showDetail(const QString& detail) {
    detail_->setText(detail);
    detail_->setVisible(!detail.isEmpty());
}

void DeviceCard::offerPorts(bool offered) {
    toPorts_->setVisible(offered);
}

void DeviceCard::setLit(bool lit) {
    if (lit == isLit_) {
        return;
    }
    isLit_ = lit;
    style()->unpolish(this);
    style()->polish(this);
    update();
}

}  // namespace lumo
