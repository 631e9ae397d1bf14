#include "app/pendant/drivebox.h"

#include "app/cell/segmentedcontrol.h"
#include "mendo/modulemanager.h"
#include "program/words.h"
#include "simulator/controller.h"

#include <QGridLayout>
#include <QLabel>

namespace app {

namespace {

const char* const modes[] = {"auto", "manual"};

QLabel* stateLabel(const QString& name) {
    auto* label = new QLabel;
    label->setObjectName(name);
    label->setAlignment(Qt::AlignCenter);
    return label;
}

/// Shows the text `busy` or `idle` for a state node.
void showState(QLabel* label, const QString& path, const QString& busy, const QString& idle) {
    const bool isIdle = m(path)->getString() == prog::word::idle;
    label->setText(isIdle ? idle : QStringLiteral("▶ ") + busy);
}

}  // namespace

DriveBox::DriveBox(sim::Controller* controller, QWidget* parent)
    : QWidget(parent),
      mode_(new SegmentedControl(QStringLiteral("mode"), {tr("自动"), tr("手动")})),
      robot_(stateLabel(QStringLiteral("lblRobotState"))),
      program_(stateLabel(QStringLiteral("lblProgramState"))) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setVerticalSpacing(2);
    grid->setColumnStretch(1, 1);
    const QString captions[] = {tr("模式"), tr("机器人"), tr("程序")};
    QWidget* const widgets[] = {mode_, robot_, program_};
    for (int row = 0; row < 3; ++row) {
        grid->addWidget(new QLabel(captions[row]), row, 0);
        grid->addWidget(widgets[row], row, 1);
    }
    connect(mode_, &SegmentedControl::clicked, this,
            [controller](int index) { controller->setMode(QLatin1String(modes[index])); });
    for (const QLatin1String path : {prog::key::robotMode, prog::key::robotState, prog::key::executeState}) {
        connect(m(path), &mendo::ModuleObject::changed, this, &DriveBox::refresh);
    }
    refresh();
}

void DriveBox::refresh() {
    mode_->setCurrent(m(prog::key::robotMode)->getString() == QLatin1String(modes[0]) ? 0 : 1);
    showState(robot_, prog::key::robotState, tr("运动中"), tr("静止"));
    showState(program_, prog::key::executeState, tr("运行中"), tr("空闲"));
}

}  // namespace app
