#include "editor/dryrunrow.h"

#include "editor/weldswitch.h"
#include "executor/lumoexecutor.h"
#include "module/globals.h"
#include "module/host.h"
#include "program/dryspeed.h"
#include "program/words.h"
#include "widgets/switchbutton.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>

using namespace prog;

namespace lumo {

DryRunRow::DryRunRow(QWidget* parent)
    : QWidget(parent),
      caption_(new QLabel(tr("空运行"), this)),
      switch_(new SwitchButton(this)),
      speed_(new QComboBox(this)) {
    constexpr int widthPx = 84, heightPx = 48;
    switch_->setObjectName(QStringLiteral("widget_dryrun"));
    switch_->setFixedSize(widthPx, heightPx);
    speed_->setObjectName(QStringLiteral("cmbDrySpeed"));
    speed_->setMinimumHeight(heightPx);
    speed_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);  // the column stays as wide as it is
    caption_->setWordWrap(true);
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(caption_, 1);
    layout->addWidget(speed_, 1);
    layout->addWidget(switch_);
    speed_->setToolTip(tr("焊缝的运动速度，占焊接速度的百分比"));
    setToolTip(tr("整个程序运动，不出光、不送气、不送丝，红光指示焊缝"));
    setUpSwitch(switch_, this, key::executeDry);
    switch_->setTextOn(tr("空运行", "on the switch"));  // its caption gives way to the speed
    switch_->setBgColorOn(QColor(30, 110, 200));
    fillSpeeds();
    for (const QLatin1String path : {key::executeDry, key::executeDrySpeed, key::executeState}) {
        connect(m(path), &ModuleObject::changed, this, &DryRunRow::refresh);
    }
    if (executor) {
        connect(executor, &LumoExecutor::activityChanged, this, &DryRunRow::refresh);
    }
    connect(speed_, QOverload<int>::of(&QComboBox::activated), this,
            [this] { m(key::executeDrySpeed)->setValue(this, speed_->currentData()); });
    refresh();
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
    const bool isDry = m(key::executeDry)->getBool(false);
    speed_->setVisible(isDry);
    caption_->setVisible(!isDry);
    setEnabled(!isRunning());
}

}  // namespace lumo
