#include "app/rail/stopbox.h"

#include "app/cell/segmentedcontrol.h"
#include "app/rail/stopbutton.h"
#include "look/scale.h"
#include "mendo/modulemanager.h"
#include "program/words.h"
#include "simulator/controller.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace app {

StopBox::StopBox(sim::Controller* controller, QWidget* parent)
    : QWidget(parent),
      controller_(controller),
      stop_(new StopButton),
      caption_(new QLabel(tr("驱动电源"))),
      power_(new SegmentedControl(QStringLiteral("power"), {tr("关"), tr("开")}, Qt::Vertical)),
      release_(new QPushButton(tr("复位急停"))) {
    power_->setQuiet(0);
    release_->setObjectName(QStringLiteral("btnRelease"));
    release_->setFocusPolicy(Qt::TabFocus);
    caption_->setProperty("caption", true);
    caption_->setAlignment(Qt::AlignCenter);
    caption_->setWordWrap(true);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(stop_);
    column->addWidget(caption_);
    column->addWidget(power_);
    column->addWidget(release_);

    // pressed(), not clicked(): it acts before it is released.
    connect(stop_, &StopButton::pressed, this, &StopBox::press);
    QCoreApplication::instance()->installEventFilter(this);
    connect(release_, &QPushButton::clicked, this, [controller] { controller->setEmergencyStop(false); });
    connect(power_, &SegmentedControl::clicked, this,
            [controller](int index) { controller->setPower(index == 1); });
    connect(controller, &sim::Controller::emergencyStopChanged, this, &StopBox::refresh);
    connect(controller, &sim::Controller::linkChanged, this, &StopBox::refresh);
    connect(m(prog::key::robotPower), &mendo::ModuleObject::changed, this, &StopBox::refresh);
    refresh();
    fit();
}

void StopBox::takeFocus() {
    if (release_->isVisible()) {
        release_->setFocus(Qt::TabFocusReason);
    } else {
        power_->setFocus(Qt::TabFocusReason);
    }
}

void StopBox::press() {
    controller_->setEmergencyStop(true);
}

bool StopBox::eventFilter(QObject*, QEvent* event) {
    if (event->type() != QEvent::KeyPress) {
        return false;
    }
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_F12 && key != Qt::Key_Pause) {
        return false;
    }
    press();
    return true;
}

void StopBox::refresh() {
    const bool latched = controller_->emergencyStop();
    stop_->setLatched(latched);
    power_->setVisible(!latched);
    power_->setEnabled(controller_->isLinked() &&
                       (controller_->abilities().power || controller_->isPowerHeld()));
    release_->setVisible(latched);
    power_->setCurrent(m(prog::key::robotPower)->getString() == prog::word::on ? 1 : 0);
}

void StopBox::fit() {
    layout()->setSpacing(look::px(4));
    caption_->setContentsMargins(0, look::px(8), 0, 0);
}

void StopBox::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        fit();
    }
}

}  // namespace app
