#include "app/rail/modebox.h"

#include "app/cell/segmentedcontrol.h"
#include "look/scale.h"
#include "mendo/modulemanager.h"
#include "program/words.h"
#include "simulator/controller.h"

#include <QEvent>
#include <QLabel>
#include <QVBoxLayout>

namespace app {

namespace {

const char* const modes[] = {"auto", "manual"};

}  // namespace

ModeBox::ModeBox(sim::Controller* controller, QWidget* parent)
    : QWidget(parent),
      controller_(controller),
      caption_(new QLabel(tr("模式"))),
      mode_(new SegmentedControl(QStringLiteral("mode"), {tr("自动"), tr("手动")}, Qt::Vertical)) {
    caption_->setProperty("caption", true);
    caption_->setAlignment(Qt::AlignCenter);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(caption_);
    column->addWidget(mode_);
    connect(mode_, &SegmentedControl::clicked, this,
            [controller](int index) { controller->setMode(QLatin1String(modes[index])); });
    connect(m(prog::key::robotMode), &mendo::ModuleObject::changed, this, &ModeBox::refresh);
    connect(controller, &sim::Controller::linkChanged, this, &ModeBox::refresh);
    refresh();
    fit();
}

void ModeBox::refresh() {
    constexpr int none = -1;  // it is not known
    const bool isAuto = m(prog::key::robotMode)->getString() == QLatin1String(modes[0]);
    mode_->setCurrent(!controller_->isLinked() ? none : isAuto ? 0 : 1);
    mode_->setEnabled(controller_->isLinked() && controller_->abilities().mode);
}

void ModeBox::fit() {
    layout()->setSpacing(look::px(4));
}

void ModeBox::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        fit();
    }
}

}  // namespace app
