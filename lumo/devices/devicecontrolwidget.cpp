#include "devices/devicecontrolwidget.h"

#include "equipment/handlit.h"
#include "equipment/ports.h"
#include "ui_devicecontrolwidget.h"
#include "widgets/dressing.h"

#include <QPointer>
#include <QTimer>

using namespace lumo;

namespace {

/// Analogue outputs and the fraction of full scale that each is to have.
using SetPoints = QVector<QPair<I_PORT, double>>;

/// A listener of a write may stop everything, or delete the page. So a device is recorded before it is
/// switched on: a stop inside the write finds it in the record and writes its zeros. These may reach the
/// controller before the write does; so they are written again afterwards, and the set points are left out.
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
            clearPort(page, output);
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
}

void DeviceControlWidget::testNofocus() {
    ui_->label->setFocus(Qt::OtherFocusReason);
}
