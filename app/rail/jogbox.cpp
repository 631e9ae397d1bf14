#include "app/rail/jogbox.h"

#include "app/cell/segmentedcontrol.h"
#include "app/rail/jogkeys.h"
#include "app/rail/posturetable.h"
#include "look/scale.h"
#include "mendo/modulemanager.h"
#include "program/words.h"
#include "simulator/controller.h"

#include <QEvent>
#include <QLabel>
#include <QVBoxLayout>

namespace app {

namespace {

const sim::JogFrame frames[] = {sim::JogFrame::Base, sim::JogFrame::Tool, sim::JogFrame::Joint};
constexpr int heldStep = 0;                      // index of "while held"
constexpr double stepSizes[] = {0, 0.1, 1, 10};  // mm or degrees
constexpr double speeds[] = {2, 10, 50};         // mm/s or degrees/s

QLabel* captionOf(const QString& text) {
    auto* caption = new QLabel(text);
    caption->setProperty("caption", true);
    caption->setWordWrap(true);
    return caption;
}

}  // namespace

JogBox::JogBox(sim::Controller* controller, QWidget* parent)
    : QWidget(parent),
      controller_(controller),
      frame_(new SegmentedControl(QStringLiteral("jogFrame"), {tr("基座"), tr("工具"), tr("关节")})),
      step_(new SegmentedControl(QStringLiteral("step"), {tr("连续"), QStringLiteral("0.1"),
                                                          QStringLiteral("1"), QStringLiteral("10")})),
      speed_(new SegmentedControl(QStringLiteral("speed"),
                                  {QStringLiteral("2"), QStringLiteral("10"), QStringLiteral("50")})),
      posture_(new PostureTable),
      keys_(new JogKeys),
      answer_(new QLabel) {
    answer_->setObjectName(QStringLiteral("lblJogAnswer"));
    answer_->setWordWrap(true);
    auto* column = new QVBoxLayout(this);
    column->addWidget(frame_);
    column->addWidget(captionOf(tr("步长，mm 或 °；连续：按住时运动")));
    column->addWidget(step_);
    column->addWidget(captionOf(tr("速度，mm/s 或 °/s")));
    column->addWidget(speed_);
    column->addWidget(posture_);
    column->addWidget(keys_);
    column->addWidget(answer_);
    column->addStretch(1);
    fit();
    speed_->setCurrent(1);
    connect(frame_, &SegmentedControl::clicked, this, [this](int index) {
        frame_->setCurrent(index);
        refreshFrame();
    });
    for (SegmentedControl* choice : {step_, speed_}) {
        connect(choice, &SegmentedControl::clicked, keys_, &JogKeys::release);
        connect(choice, &SegmentedControl::clicked, choice, &SegmentedControl::setCurrent);
    }
    connect(keys_, &JogKeys::held, this, &JogBox::onHeld);
    connect(m(prog::key::robotMode), &mendo::ModuleObject::changed, this, &JogBox::endJog);
    for (const QLatin1String path : {prog::key::robotPower, prog::key::executeState}) {
        connect(m(path), &mendo::ModuleObject::changed, this, &JogBox::refreshKeys);
    }
    refreshFrame();
    refreshKeys();
}

void JogBox::fit() {
    const int margin = look::px(16);
    layout()->setContentsMargins(margin, 0, margin, margin);
    layout()->setSpacing(look::px(8));
}

void JogBox::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        fit();
    }
}

void JogBox::onHeld(int axis, int direction, bool on) {
    if (!on) {
        if (step_->current() == heldStep) {
            controller_->stopJog();
        }
        return;
    }
    QString text = obstacle();
    if (text.isEmpty()) {
        const sim::JogFrame frame = frames[frame_->current()];
        const double unit = jogUnit(frame, axis);
        const bool held = step_->current() == heldStep;
        const double distance = held ? 1 : stepSizes[step_->current()];
        const sim::JogMove move{frame, axis, direction * distance * unit, speeds[speed_->current()] * unit};
        text = reason(held ? controller_->startJog(move) : controller_->jog(move));
    }
    answer_->setText(text);
}

/// The text for an answer; empty when the robot moves.
QString JogBox::reason(sim::JogAnswer answer) {
    switch (answer) {
        case sim::JogAnswer::Moves:
            break;
        case sim::JogAnswer::DriveOff:
            return tr("机器人未上电");
        case sim::JogAnswer::Moving:
            return tr("机器人正在运动");
        case sim::JogAnswer::OutOfReach:
            return tr("超出工作范围");
        case sim::JogAnswer::JointLimit:
            return tr("超出关节限位");
        case sim::JogAnswer::TooFast:
            return tr("关节会转得过快，请降低速度");
        case sim::JogAnswer::NotOffered:
            return tr("此控制器不支持点动");
    }
    return {};
}

/// Why jogging is not possible now; empty when it is.
QString JogBox::obstacle() const {
    if (m(prog::key::robotPower)->getString() != prog::word::on) {
        return tr("机器人未上电");
    }
    if (m(prog::key::executeState)->getString() != prog::word::idle) {
        return tr("程序正在运行");
    }
    return {};
}

void JogBox::endJog() {
    keys_->release();
    controller_->stopJog();
}

void JogBox::refreshFrame() {
    const sim::JogFrame frame = frames[frame_->current()];
    keys_->setFrame(frame);
    posture_->showJoints(frame == sim::JogFrame::Joint);
}

void JogBox::refreshKeys() {
    const QString text = obstacle();
    if (!text.isEmpty()) {
        keys_->release();
    }
    keys_->setEnabled(text.isEmpty());
    answer_->setText(text);
}

}  // namespace app
