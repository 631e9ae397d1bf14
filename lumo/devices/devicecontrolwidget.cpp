#include "devices/devicecontrolwidget.h"

#include "devices/devicebutton.h"
#include "devices/devicecard.h"
#include "devices/devicestate.h"
#include "devices/setpoint.h"
#include "equipment/handlit.h"
#include "equipment/handswitch.h"
#include "equipment/ports.h"
#include "look/scale.h"
#include "module/host.h"
#include "program/words.h"
#include "ui_devicecontrolwidget.h"
#include "widgets/messagebox.h"
#include "widgets/way.h"

#include <QDoubleSpinBox>
#include <QPointer>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

using namespace lumo;

namespace {

using Face = DeviceButton::Face;

qint64 nowMs() {
    return mendo::Clock::current().elapsedMs();
}

QString nameOf(I_PORT port) {
    return m(prog::key::port)->c(static_cast<int>(port))->c(prog::field::tag)->getString();
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

// --- Layout ---------------------------------------------------------------------------------------

void DeviceControlWidget::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (groups_.empty()) {
        layOut();
    }
    refresh();
}

void DeviceControlWidget::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange && !groups_.empty()) {
        placeCards();
    }
}

void DeviceControlWidget::layOut() {
    makeCard(ui_->laserGroup, ui_->label, "laser",
             {{AO_LASER_FREQUENCY, ui_->label_3, ui_->dspnLaserFrequency},
              {AO_LASER_DUTY_CYCLE, ui_->label_6, ui_->dspnLaserRatio},
              {AO_LASER_POWER, ui_->label_17, ui_->dspnLaserPower}},
             {{ui_->btnLaserControl, DO_LASER_SAFETY_LOCK, "lock"},
              {ui_->btnLaserTest, DO_LASER_ENABLE, "laser"},
              {ui_->btnRedLight, DO_RED_LIGHT, "pilot"}});
    makeCard(ui_->gasGroup, ui_->label_15, "gas", {},
             {{ui_->btnBlowControl, DO_GAS_SAFETY_LOCK, "lock"}, {ui_->btnBlowTest, DO_GAS, "gas"}});
    makeCard(
        ui_->wireGroup, ui_->label_20, "wire", {{AO_WIRE_SPEED, ui_->label_4, ui_->dspnWireSpeed}},
        {{ui_->btnWireControl, DO_WIRE_SAFETY_LOCK, "lock"}, {ui_->btnWireTest, DO_WIRE_ENABLE, "wire"}});
    placeCards();
}

void DeviceControlWidget::placeCards() {
    constexpr int gap = 16;
    const int px = look::px(gap);
    ui_->cardsLayout->setContentsMargins(px, px, px, px);
    ui_->cardsLayout->setSpacing(px);
}

/// The second button of a card is its device's, the first its lock's.
void DeviceControlWidget::makeCard(DeviceCard* card, QLabel* title, const char* icon,
                                   const std::vector<SetPointRow>& setPoints,
                                   const std::vector<ButtonRow>& buttons) {
    card->make(title, QLatin1String(icon));
    Group group{card, {buttons[1].port, buttons[0].port}, {}, {}};
    std::vector<QWidget*> cells;
    for (const SetPointRow& row : setPoints) {
        group.setPoints.push_back(new SetPoint(row.output, row.caption, row.field, card));
        cells.push_back(group.setPoints.back());
    }
    if (!cells.empty()) {
        card->addRow(cells);
    }
    cells.clear();
    for (const ButtonRow& row : buttons) {
        row.button->setIconName(QLatin1String(row.icon));
        group.states.push_back(new DeviceState(row.port));
        auto* const cell = new QWidget(card);
        auto* const column = new QVBoxLayout(cell);
        column->setContentsMargins(0, 0, 0, 0);
        column->addWidget(row.button);
        column->addWidget(group.states.back());
        column->addStretch(1);
        cells.push_back(cell);
    }
    card->addRow(cells);
    groups_.push_back(group);
    card->fold();
}

// --- Presses --------------------------------------------------------------------------------------

bool DeviceControlWidget::areTaken(const Device& device) const {
    const auto isTaken = [&device](const SetPoint* setPoint) {
        const auto isOf = [setPoint](const auto& row) { return row.second == setPoint->field(); };
        return setPoint->isTaken() || std::none_of(device.setPoints.begin(), device.setPoints.end(), isOf);
    };
    return std::all_of(groups_.begin(), groups_.end(), [&isTaken](const Group& group) {
        return std::all_of(group.setPoints.begin(), group.setPoints.end(), isTaken);
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

// --- What is shown --------------------------------------------------------------------------------

void DeviceControlWidget::refresh() {
    for (const Device& device : devices_) {
        const bool isOpen = portState(device.ports.lock);
        device.button->setEnabled(isOpen);
        if (device.coloured) {
            const Face unlocked = portState(device.ports.output) ? Face::On : Face::Off;
            device.button->setFace(isOpen ? unlocked : Face::Locked);
        }
    }
    if (!portState(DO_LASER_ENABLE)) {
        laserSinceMs_.reset();
    } else if (!laserSinceMs_) {
        laserSinceMs_ = nowMs();
    }
    if (!isVisible()) {
        return;
    }
    refreshLocks();
    for (const Group& group : groups_) {
        refreshCard(group);
    }
}

void DeviceControlWidget::refreshLocks() {
    for (const Lock& lock : locks_) {
        const I_PORT port = lock.device->ports.lock;
        const bool isOpen = portState(port);
        lock.button->setIconName(isOpen ? QStringLiteral("unlock") : QStringLiteral("lock"));
        lock.button->setFace(!portEnabled(port) ? Face::OutOfUse : isOpen ? Face::Armed : Face::Plain);
    }
}

void DeviceControlWidget::refreshCard(const Group& group) {
    QStringList details;
    bool isOutOfUse = false;
    for (DeviceState* const state : group.states) {
        state->refresh();
        if (!portEnabled(state->port())) {
            isOutOfUse = true;
            details << tr("端口“%1”未启用。").arg(nameOf(state->port()));
        }
    }
    for (SetPoint* const setPoint : group.setPoints) {
        setPoint->refresh();
    }
    const bool isOn = portState(group.ports.output);
    const bool isLaser = group.ports.output == DO_LASER_ENABLE;
    group.card->setLit(isOn && isLaser);
    if (isOn && isLaser) {
        details.prepend(laserDetail());
        group.card->showState(Sign::Laser, tr("激光已打开"));
    } else if (isOn) {
        group.card->showState(Sign::LampOn, tr("已打开"));
    } else if (!portEnabled(group.ports.output) || !portEnabled(group.ports.lock)) {
        group.card->showState(Sign::Locked, tr("未启用"));
    } else if (isLaser && portState(DO_RED_LIGHT)) {
        group.card->showState(Sign::Pilot, tr("指示红光已打开"));
    } else if (portState(group.ports.lock)) {
        group.card->showState(Sign::LampOff, tr("关"));
    } else {
        group.card->showState(Sign::Locked, tr("已锁定"));
    }
    group.card->showDetail(details.join(QLatin1Char('\n')));
    group.card->offerPorts(isOutOfUse && Guide::instance()->canLead());
}

QString DeviceControlWidget::laserDetail() const {
    constexpr qint64 msPerSecond = 1000;
    constexpr qint64 secondsPerMinute = 60;
    const qint64 seconds = (nowMs() - laserSinceMs_.value_or(nowMs())) / msPerSecond;
    const QString time = QStringLiteral("%1:%2")
                             .arg(seconds / secondsPerMinute)
                             .arg(seconds % secondsPerMinute, 2, 10, QLatin1Char('0'));
    return isLitByHand(DO_LASER_ENABLE) ? tr("手动打开，已 %1").arg(time) : tr("已打开 %1").arg(time);
}

void DeviceControlWidget::testNofocus() {
    ui_->label->setFocus(Qt::OtherFocusReason);
}
