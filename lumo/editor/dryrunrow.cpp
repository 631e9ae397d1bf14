#include "editor/dryrunrow.h"

#include "editor/weldswitch.h"
#include "executor/lumoexecutor.h"
#include "look/scale.h"
#include "look/tokens.h"
#include "module/globals.h"
#include "module/host.h"
#include "program/dryspeed.h"
#include "program/words.h"
#include "widgets/switchbutton.h"
#include "widgets/switchcell.h"

#include <QComboBox>
#include <QLabel>

#include <algorithm>

using namespace prog;

namespace lumo {

namespace {

// At factor 1.
constexpr int speedWidth = 96;
constexpr int speedGap = 8;

}  // namespace

DryRunRow::DryRunRow(QWidget* parent)
    : QWidget(parent),
      cell_(new SwitchCell(this)),
      switch_(new SwitchButton(cell_)),
      speed_(new QComboBox(this)) {
    switch_->setObjectName(QStringLiteral("widget_dryrun"));
    speed_->setObjectName(QStringLiteral("cmbDrySpeed"));
    speed_->setToolTip(tr("焊缝的运动速度，占焊接速度的百分比"));
    setToolTip(tr("整个程序运动，不出光、不送气、不送丝，红光指示焊缝"));
    cell_->setParts(new QLabel(tr("空运行"), cell_), switch_);
    setUpSwitch(switch_, this, key::executeDry);
    switch_->setBgColorOn(QColor(look::blue));
    fillSpeeds();
    for (const QLatin1String path : {key::executeDry, key::executeDrySpeed, key::executeState}) {
        connect(m(path), &ModuleObject::changed, this, &DryRunRow::refresh);
    }
    if (executor) {
        connect(executor, &LumoExecutor::activityChanged, this, &DryRunRow::refresh);
    }
    connect(speed_, QOverload<int>::of(&QComboBox::activated), this,
            [this] { m(key::executeDrySpeed)->setValue(this, speed_->currentData()); });
    speed_->setVisible(m(key::executeDry)->getBool(false));
    refresh();
}

void DryRunRow::setCaptionOver(bool over) {
    cell_->setCaptionOver(over);
}

QSize DryRunRow::sizeHint() const {
    const QSize cell = cell_->sizeHint();
    const int choice = speed_->isHidden() ? 0 : look::px(speedGap + speedWidth);
    return {cell.width() + choice, std::max(cell.height(), look::px(48))};
}

void DryRunRow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const int cell = std::min(width(), cell_->sizeHint().width());
    const int high = look::px(48);
    cell_->setGeometry(0, 0, cell, height());
    speed_->setGeometry(cell + look::px(speedGap), (height() - high) / 2, look::px(speedWidth), high);
}

void DryRunRow::fillSpeeds() {
    for (const int percent : {100, 150, 200, 300, 500}) {
        speed_->addItem(QStringLiteral("%1%").arg(percent), percent);
    }
    speed_->addItem(tr("运动速度"), mostDryPercent);
}

/// The speed in force; one that is not among the choices is added.
void DryRunRow::showSpeed() {
    const double percent = drySpeedPercent(m(key::executeDrySpeed)->getDouble(leastDryPercent));
    int index = 0;
    while (index < speed_->count() && speed_->itemData(index).toDouble() != percent) {
        ++index;
    }
    if (index == speed_->count()) {
        speed_->addItem(QStringLiteral("%1%").arg(percent), percent);
    }
    speed_->setCurrentIndex(index);
}

void DryRunRow::refresh() {
    showSpeed();
    setEnabled(!isRunning());
    const bool isDry = m(key::executeDry)->getBool(false);
    if (isDry == speed_->isHidden()) {
        speed_->setVisible(isDry);
        updateGeometry();
        emit resized();
    }
}

}  // namespace lumo
