#include "devices/devicecontrolwidget.h"

#include "devices/devicestate.h"
#include "equipment/handswitch.h"
#include "equipment/ports.h"
#include "ui_devicecontrolwidget.h"
#include "widgets/dressing.h"
#include "widgets/fieldanswer.h"
#include "widgets/messagebox.h"
#include "widgets/way.h"

#include <QDoubleSpinBox>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <tuple>

using namespace lumo;

namespace {

QString colourSheet(bool allowed, bool on) {
    if (!allowed) {
        return QStringLiteral("background-color: darkgray;");
    }
    return on ? QStringLiteral("background-color: red;") : QStringLiteral("background-color: black;");
}

}  // namespace

DeviceControlWidget::DeviceControlWidget(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::DeviceControlWidget>()) {
    ui_->setupUi(this);
    fillTables();
    answerFields();
    for (const Device& device : devices_) {
        device.button->setEnabled(false);
        connect(device.button, &QPushButton::clicked, this, [this, &device] { pressDevice(device); });
    }
    for (const Lock& lock : locks_) {
        connect(lock.button, &QPushButton::clicked, this, [this, &lock] { pressLock(lock); });
    }
    addStates();
    constexpr int periodMs = 160;
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &DeviceControlWidget::refresh);
    timer->start(periodMs);
}

DeviceControlWidget::~DeviceControlWidget() = default;

void DeviceControlWidget::fillTables() {
    using prog::deviceOf;
    devices_ = {
        {ui_->btnLaserTest,
         *deviceOf(DO_LASER_ENABLE),
         true,
         {{AO_LASER_FREQUENCY, ui_->dspnLaserFrequency},
          {AO_LASER_POWER, ui_->dspnLaserPower},
          {AO_LASER_DUTY_CYCLE, ui_->dspnLaserRatio}}},
        {ui_->btnWireTest, *deviceOf(DO_WIRE_ENABLE), false, {{AO_WIRE_SPEED, ui_->dspnWireSpeed}}},
        {ui_->btnBlowTest, *deviceOf(DO_GAS), false, {}},
        {ui_->btnRedLight, *deviceOf(DO_RED_LIGHT), true, {}},
    };
    locks_ = {
        {ui_->btnLaserControl, &devices_[0]},
        {ui_->btnWireControl, &devices_[1]},
        {ui_->btnBlowControl, &devices_[2]},
    };
}

/// Below each button its state, and beside the title of a group the way to its ports.
void DeviceControlWidget::addStates() {
    const std::tuple<QGridLayout*, int, std::vector<I_PORT>> groups[] = {
        {ui_->laserGroupLayout, 4, {DO_LASER_SAFETY_LOCK, DO_LASER_ENABLE, DO_RED_LIGHT}},
        {ui_->gasGroupLayout, 2, {DO_GAS_SAFETY_LOCK, DO_GAS}},
        {ui_->wireGroupLayout, 4, {DO_WIRE_SAFETY_LOCK, DO_WIRE_ENABLE}},
    };
    for (const auto& [layout, row, ports] : groups) {
        Group group;
        for (std::size_t column = 0; column < ports.size(); ++column) {
            group.states.push_back(new DeviceState(ports[column]));
            layout->addWidget(group.states.back(), row, static_cast<int>(column));
        }
        const Way way{Way::To::Ports};
        group.toPorts = new QPushButton(Guide::caption(way));
        layout->addWidget(group.toPorts, 0, 2, Qt::AlignRight);
        connect(group.toPorts, &QPushButton::clicked, this, [way] { Guide::instance()->lead(way); });
        groups_.push_back(group);
    }
    refresh();
}

void DeviceControlWidget::answerFields() {
    for (const Device& device : devices_) {
        for (const auto& setPoint : device.setPoints) {
            answers_.append(new FieldAnswer(setPoint.second));
            answers_.last()->tellBelow();
        }
    }
}

bool DeviceControlWidget::areTaken(const Device& device) const {
    return std::all_of(answers_.begin(), answers_.end(), [&device](const FieldAnswer* answer) {
        const auto isOf = [answer](const auto& setPoint) { return setPoint.second == answer->parent(); };
        return answer->isTaken() || std::none_of(device.setPoints.begin(), device.setPoints.end(), isOf);
    });
}

/// The direction follows what the page shows. It is decided before the first write: a write can let refresh()
/// in, and a press that releases a lock must not close it again.
void DeviceControlWidget::pressLock(const Lock& lock) {
    const bool on = !lock.device->button->isEnabled();
    const prog::Device ports = lock.device->ports;
    const QPointer<QObject> page(this);
    if (portState(ports.lock)) {
        switchByHand(page, ports.output, false, {});
    }
    setPortDO(page, ports.lock, on);
}

/// The button stays enabled until the next refresh after its lock is released: such a press switches nothing
/// on.
void DeviceControlWidget::pressDevice(const Device& device) {
    const bool on = !portState(device.ports.output);
    if (on && !portState(device.ports.lock)) {
        return;
    }
    if (on && !areTaken(device)) {
        showMessage(QMessageBox::Warning, tr("输入错误"), tr("请先更正红框中的数值。"));
        return;
    }
    SetPoints setPoints;
    for (const auto& [port, field] : device.setPoints) {
        constexpr double percentOfFull = 100.0;
        setPoints.append({port, field->value() / percentOfFull});
    }
    switchByHand(this, device.ports.output, on, setPoints);
}

void DeviceControlWidget::refresh() {
    for (const Device& device : devices_) {
        device.button->setEnabled(portState(device.ports.lock));
        if (device.coloured) {
            setStyleSheetOnChange(device.button,
                                  colourSheet(device.button->isEnabled(), portState(device.ports.output)));
        }
    }
    for (const Group& group : groups_) {
        bool isInUse = true;
        for (DeviceState* const state : group.states) {
            state->refresh();
            isInUse = isInUse && portEnabled(state->port());
        }
        group.toPorts->setVisible(!isInUse && Guide::instance()->canLead());
    }
}

void DeviceControlWidget::testNofocus() {
    ui_->label->setFocus(Qt::OtherFocusReason);
}
