#include "app/cell/jogbox.h"

#include "app/cell/choice.h"
#include "app/cell/nodes.h"
#include "kord/kordservice.h"
#include "mendo/modulemanager.h"
#include "simulator/controller.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include <cmath>

namespace app {

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kSteps[] = {0.1, 1, 10};  // millimetres or degrees
constexpr int kLengths = 3;                // of the six axes, the first three

constexpr int kBetweenReadouts = 6;  // pixels

const char* const kAxes[] = {"X", "Y", "Z", "RX", "RY", "RZ"};

/// Metres or radians of one millimetre or degree.
double unitOf(int axis) {
    return axis < kLengths ? 0.001 : kPi / 180;
}

/// Two decimals, without a sign before nought.
QString shown(double value, int axis) {
    const double rounded = std::round(value / unitOf(axis) * 100) / 100;
    return QString::number(rounded == 0 ? 0 : rounded, 'f', 2);
}

}  // namespace

JogBox::JogBox(sim::Controller* controller, QWidget* parent)
    : QGroupBox(tr("点动"), parent),
      controller_(controller),
      step_(new Choice(QStringLiteral("step"),
                       {QStringLiteral("0.1"), QStringLiteral("1"), QStringLiteral("10")})),
      keys_(makeKeys()),
      answer_(new QLabel) {
    answer_->setObjectName(QStringLiteral("lblJogAnswer"));
    answer_->setWordWrap(true);
    auto* stepRow = new QHBoxLayout;
    stepRow->addWidget(new QLabel(tr("步长 mm/°")));
    stepRow->addWidget(step_, 1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(8, 4, 8, 6);
    column->setSpacing(4);
    column->addWidget(makeReadout());
    column->addLayout(stepRow);
    column->addWidget(keys_);
    column->addWidget(answer_);
    step_->setCurrent(1);
    connect(step_, &Choice::asked, step_, &Choice::setCurrent);
    connect(kordservice()->dataNode(node::posture), &mendo::ModuleObject::changed, this,
            &JogBox::refreshPosture);
    for (const QString& path : {node::power, node::programState})
        connect(m(path), &mendo::ModuleObject::changed, this, &JogBox::refreshKeys);
    refreshPosture();
    refreshKeys();
}

QWidget* JogBox::makeReadout() {
    auto* readout = new QWidget;
    auto* grid = new QGridLayout(readout);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setVerticalSpacing(2);
    for (int axis = 0; axis < int(values_.size()); ++axis) {
        auto* value = new QLabel;
        value->setObjectName(QStringLiteral("lbl") + QLatin1String(kAxes[axis]));
        value->setAlignment(Qt::AlignRight);
        const int column = axis < kLengths ? 0 : 3;
        grid->addWidget(new QLabel(QLatin1String(kAxes[axis])), axis % kLengths, column);
        grid->addWidget(value, axis % kLengths, column + 1);
        grid->setColumnStretch(column + 1, 1);
        values_[size_t(axis)] = value;
    }
    grid->setColumnMinimumWidth(2, kBetweenReadouts);
    return readout;
}

QWidget* JogBox::makeKeys() {
    auto* keys = new QWidget;
    auto* grid = new QGridLayout(keys);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(4);
    for (int axis = 0; axis < int(values_.size()); ++axis) {
        for (const int direction : {-1, 1}) {
            const QString sign = direction < 0 ? QStringLiteral("−") : QStringLiteral("+");
            auto* button = new QPushButton(QLatin1String(kAxes[axis]) + sign);
            button->setObjectName(QStringLiteral("jog") + QLatin1String(kAxes[axis]) +
                                  QLatin1Char(direction < 0 ? '-' : '+'));
            button->setFocusPolicy(Qt::TabFocus);
            button->setMinimumHeight(48);
            grid->addWidget(button, axis % kLengths, (axis < kLengths ? 0 : 2) + (direction + 1) / 2);
            connect(button, &QPushButton::clicked, this,
                    [this, axis, direction] { jog(sim::JogAxis(axis), direction); });
        }
    }
    return keys;
}

void JogBox::jog(sim::JogAxis axis, int direction) {
    QString text = obstacle();
    if (text.isEmpty()) {
        switch (controller_->jog(axis, direction * kSteps[step_->current()] * unitOf(int(axis)))) {
            case sim::JogAnswer::Moves:
                break;
            case sim::JogAnswer::DriveOff:
                text = tr("机器人未上电");
                break;
            case sim::JogAnswer::Moving:
                text = tr("机器人正在运动");
                break;
            case sim::JogAnswer::OutOfReach:
                text = tr("超出工作范围");
                break;
            case sim::JogAnswer::JointLimit:
                text = tr("超出关节限位");
                break;
        }
    }
    answer_->setText(text);
}

/// Why the tool cannot be jogged now; empty when it can.
QString JogBox::obstacle() const {
    if (m(node::power)->getString() != QLatin1String("on"))
        return tr("机器人未上电");
    if (m(node::programState)->getString() != QLatin1String("idle"))
        return tr("程序正在运行");
    return {};
}

void JogBox::refreshKeys() {
    const QString text = obstacle();
    keys_->setEnabled(text.isEmpty());
    answer_->setText(text);
}

void JogBox::refreshPosture() {
    const mendo::ModuleObject* posture = kordservice()->dataNode(node::posture);
    for (int axis = 0; axis < int(values_.size()); ++axis) {
        const mendo::ModuleObject* list =
            posture->c(axis < kLengths ? QStringLiteral("trans") : QStringLiteral("rot"));
        const QString unit = axis < kLengths ? tr("mm") : QStringLiteral("°");
        const QString value = shown(list->c(axis % kLengths)->getDouble(), axis);
        values_[size_t(axis)]->setText(value + QLatin1Char(' ') + unit);
    }
}

}  // namespace app
