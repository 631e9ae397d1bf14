#include "app/pendant/stopbox.h"

#include "app/cell/segmentedcontrol.h"
#include "app/pendant/stopbutton.h"
#include "mendo/modulemanager.h"
#include "program/words.h"
#include "simulator/controller.h"

#include <QApplication>
#include <QBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>

namespace app {

namespace {

constexpr int driveButton = 0, releaseButton = 1;

}  // namespace

StopBox::StopBox(sim::Controller* controller, QWidget* parent)
    : QFrame(parent),
      controller_(controller),
      layout_(new QBoxLayout(QBoxLayout::LeftToRight, this)),
      stop_(new StopButton),
      caption_(new QLabel(tr("驱动电源"))),
      switches_(new QStackedWidget),
      power_(new SegmentedControl(QStringLiteral("power"), {tr("关"), tr("开")})),
      fold_(new QPushButton) {
    setObjectName(QStringLiteral("stopBox"));
    auto* release = new QPushButton(QStringLiteral("↻ ") + tr("复位急停"));
    release->setObjectName(QStringLiteral("btnRelease"));
    release->setFocusPolicy(Qt::TabFocus);
    release->setMinimumHeight(48);
    switches_->addWidget(power_);
    switches_->addWidget(release);
    caption_->setWordWrap(true);
    fold_->setObjectName(QStringLiteral("btnFold"));
    fold_->setFocusPolicy(Qt::TabFocus);
    fold_->setMinimumHeight(36);

    auto* column = new QVBoxLayout;
    column->setSpacing(2);
    auto* top = new QHBoxLayout;
    top->addWidget(caption_, 1, Qt::AlignCenter);
    top->addWidget(fold_);
    column->addLayout(top);
    column->addWidget(switches_);
    column->addStretch(1);
    layout_->setContentsMargins(2, 2, 2, 2);
    layout_->addWidget(stop_, 0, Qt::AlignHCenter | Qt::AlignTop);
    layout_->addLayout(column, 1);

    // pressed(), not clicked(): it acts before it is released.
    connect(stop_, &StopButton::pressed, this, &StopBox::press);
    QCoreApplication::instance()->installEventFilter(this);
    for (const auto key : {Qt::Key_F12, Qt::Key_Pause}) {
        auto* shortcut = new QShortcut(key, this);
        shortcut->setContext(Qt::ApplicationShortcut);
        connect(shortcut, &QShortcut::activated, this, &StopBox::press);
        connect(shortcut, &QShortcut::activatedAmbiguously, this, &StopBox::press);
    }
    connect(release, &QPushButton::clicked, this, [controller] { controller->setEmergencyStop(false); });
    connect(power_, &SegmentedControl::clicked, this,
            [controller](int index) { controller->setPower(index == 1); });
    connect(fold_, &QPushButton::clicked, this, &StopBox::foldAsked);
    connect(controller, &sim::Controller::emergencyStopChanged, this, &StopBox::refresh);
    connect(m(prog::key::robotPower), &mendo::ModuleObject::changed, this, &StopBox::refresh);
    refresh();
    setUnfolded(true);
}

void StopBox::setUnfolded(bool unfolded) {
    layout_->setDirection(unfolded ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    layout_->setSpacing(unfolded ? 6 : 2);
    caption_->setVisible(unfolded);
    layout_->activate();
    updateGeometry();
    fold_->setText(unfolded ? QStringLiteral("▴ ") + tr("收起") : QStringLiteral("▾ ") + tr("点动、按键"));
}

void StopBox::press() {
    controller_->setEmergencyStop(true);
}

bool StopBox::eventFilter(QObject*, QEvent* event) {
    const QWidget* list = QApplication::activePopupWidget();
    if (event->type() != QEvent::MouseButtonPress || !list || !stop_->isVisible()) {
        return false;
    }
    const QPoint place = static_cast<QMouseEvent*>(event)->globalPos();
    if (stop_->rect().contains(stop_->mapFromGlobal(place)) && !list->geometry().contains(place)) {
        press();
    }
    return false;
}

void StopBox::refresh() {
    stop_->setLatched(controller_->emergencyStop());
    switches_->setCurrentIndex(controller_->emergencyStop() ? releaseButton : driveButton);
    power_->setCurrent(m(prog::key::robotPower)->getString() == prog::word::on ? 1 : 0);
}

}  // namespace app
