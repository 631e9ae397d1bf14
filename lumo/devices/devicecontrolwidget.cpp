#include "devices/devicecontrolwidget.h"

#include "equipment/handlit.h"
#include "ui_devicecontrolwidget.h"
#include "widgets/stylesheet.h"

#include <QPointer>
#include <QTimer>

using namespace lumo;

namespace {

/// Analogue outputs and the fraction of full scale that each is to have.
using SetPoints = QVector<QPair<I_PORT, double>>;

void writeZero(QObject* sender, I_PORT output) {
    if (output >= AO_WIRE_SPEED) {
        setPortAO(sender, output, 0.0);
    } else {
        setPortDO(sender, output, false);
    }
}

/// Whoever hears of a write may stop everything, or end the page. So a device is noted before it is switched
/// on: a stop that comes inside the write finds it on the record. The stop's zeros may reach the controller
/// before the write that it came in; so afterwards they are written again, and the set points are left out.
void switchByHand(const QPointer<QObject>& page, I_PORT device, bool on, const SetPoints& setPoints) {
    const bool lights = on && portEnabled(device);
    const auto wasStopped = [device, lights] { return lights && !isLitByHand(device); };
    noteByHand(device, lights);
    setPortDO(page, device, on);
    for (const auto& [output, fraction] : setPoints) {
        if (wasStopped()) {
            break;
        }
        setPortAO(page, output, fraction);
    }
    if (wasStopped()) {
        for (const I_PORT output : outputsOf(device)) {
            writeZero(page, output);
        }
    }
}

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
    for (const Device& device : devices_) {
        device.button->setEnabled(false);
        connect(device.button, &QPushButton::clicked, this, [this, &device] { pressDevice(device); });
    }
    for (const Lock& lock : locks_) {
        connect(lock.button, &QPushButton::clicked, this, [this, &lock] { pressLock(lock); });
    }
    constexpr int periodMs = 160;
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &DeviceControlWidget::refresh);
    timer->start(periodMs);
}

DeviceControlWidget::~DeviceControlWidget() = default;

void DeviceControlWidget::fillTables() {
    devices_ = {
        {ui_->btnLaserTest,
         DO_LASER_ENABLE,
         DO_LASER_SAFETY_LOCK,
         true,
         {{AO_LASER_FREQUENCY, ui_->dspnLaserFrequency},
          {AO_LASER_POWER, ui_->dspnLaserPower},
          {AO_LASER_DUTY_CYCLE, ui_->dspnLaserRatio}}},
        {ui_->btnRedLight, DO_RED_LIGHT, DO_LASER_SAFETY_LOCK, true, {}},
        {ui_->btnWireTest, DO_WIRE_ENABLE, DO_WIRE_SAFETY_LOCK, false, {{AO_WIRE_SPEED, ui_->dspnWireSpeed}}},
        {ui_->btnBlowTest, DO_GAS, DO_GAS_SAFETY_LOCK, false, {}},
    };
    const Device& laser = devices_[0];
    const Device& wire = devices_[2];
    const Device& gas = devices_[3];
    locks_ = {
        {ui_->btnLaserControl, DO_LASER_SAFETY_LOCK, &laser},
        {ui_->btnWireControl, DO_WIRE_SAFETY_LOCK, &wire},
        {ui_->btnBlowControl, DO_GAS_SAFETY_LOCK, &gas},
    };
}

/// What the operator sees decides the direction. It is taken before anything is written, because the
/// writes may let a refresh in, and a press that releases a lock must never close it again.
void DeviceControlWidget::pressLock(const Lock& lock) {
    const bool on = !lock.device->button->isEnabled();
    const I_PORT output = lock.output;
    const QPointer<QObject> page(this);
    if (portState(output)) {
        switchByHand(page, lock.device->output, false, {});
    }
    setPortDO(page, output, on);
}

/// The button may be allowed a little longer than its lock is on: such a press switches nothing on.
void DeviceControlWidget::pressDevice(const Device& device) {
    const bool on = !portState(device.output);
    if (on && !portState(device.lock)) {
        return;
    }
    SetPoints setPoints;
    for (const auto& [port, field] : device.setPoints) {
        constexpr double percentOfFull = 100.0;
        setPoints.append({port, field->value() / percentOfFull});
    }
    switchByHand(this, device.output, on, setPoints);
}

void DeviceControlWidget::refresh() {
    for (const Device& device : devices_) {
        device.button->setEnabled(portState(device.lock));
        if (device.coloured) {
            setStyleSheetOnChange(device.button,
                                  colourSheet(device.button->isEnabled(), portState(device.output)));
        }
    }
}

void DeviceControlWidget::testNofocus() {
    ui_->label->setFocus(Qt::OtherFocusReason);
}
