#include "devices/statusmonitorwidget.h"

#include "devices/signlabel.h"
#include "devices/tilecard.h"
#include "equipment/ports.h"
#include "look/scale.h"
#include "ui_statusmonitorwidget.h"

#include <QEvent>
#include <QTimer>

using namespace lumo;
using namespace prog;

namespace {

/// A fault has a triangle. The welding signal has none: it is off whenever the laser is off.
Sign signOf(I_PORT port, bool good) {
    if (!portEnabled(port)) {
        return Sign::LampOff;
    }
    const Sign bad = port == DI_WELDING_STATE ? Sign::LampOff : Sign::Warning;
    return good ? Sign::LampOn : bad;
}

qint64 nowMs() {
    return mendo::Clock::current().elapsedMs();
}

}  // namespace

void refreshTFLabel(bool& allGood, QLabel* label, I_PORT port) {
    if (!portEnabled(port)) {
        label->setText(QObject::tr("关闭"));
        return;
    }
    const bool good = portState(port);
    label->setText(good ? QObject::tr("正常") : QObject::tr("异常"));
    allGood = allGood && good;
}

StatusMonitorWidget::StatusMonitorWidget(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::StatusMonitorWidget>()) {
    ui_->setupUi(this);
    if (parent) {
        setMinimumSize(0, 0);  // as wide as the panel has room: what does not fit scrolls
    }
    ModuleObject* count = m(key::count);
    connect(count, &ModuleObject::changed, this, &StatusMonitorWidget::showCount);
    showCount(count->value());
    ModuleObject* processTime = m(key::processTime);
    connect(processTime, &ModuleObject::changed, this, &StatusMonitorWidget::showProcessTime);
    showProcessTime(processTime->value());
    connect(ui_->btnClear, &QPushButton::clicked, this, &StatusMonitorWidget::clearCounters);
    ModuleObject* state = m(key::executeState);
    connect(state, &ModuleObject::changed, this, &StatusMonitorWidget::countRun);
    countRun(state->value());

    constexpr int periodMs = 160;
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &StatusMonitorWidget::refresh);
    timer->start(periodMs);
}

StatusMonitorWidget::~StatusMonitorWidget() = default;

void StatusMonitorWidget::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!isLaidOut_) {
        isLaidOut_ = true;
        layOut();
        placeCards();
    }
}

void StatusMonitorWidget::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange && isLaidOut_) {
        placeCards();
    }
}

void StatusMonitorWidget::layOut() {
    constexpr int leastPx = 176;
    constexpr int leastSetPointPx = 120;
    ui_->stateGroup->make(ui_->label, nullptr, leastPx);
    ui_->stateGroup->addTile(ui_->label_2, ui_->lblLaserState);
    ui_->stateGroup->addTile(ui_->label_7, ui_->lblLaserTopState);
    ui_->stateGroup->addTile(ui_->label_5, ui_->lblCoolerState);
    ui_->stateGroup->addTile(ui_->label_9, ui_->lblPressure);
    ui_->stateGroup->addTile(ui_->label_11, ui_->lblTemperatue);
    ui_->stateGroup->addTile(ui_->label_13, ui_->lblWelding);
    ui_->countGroup->make(ui_->label_15, ui_->btnClear, leastPx);
    ui_->countGroup->addTile(ui_->label_16, ui_->lblDelay, ui_->lblDelayUnit);
    ui_->countGroup->addTile(ui_->label_18, ui_->lblNum);
    ui_->laserGroup->make(ui_->label_20, nullptr, leastSetPointPx);
    ui_->laserGroup->addTile(ui_->label_21, ui_->lblLaserFrequency);
    ui_->laserGroup->addTile(ui_->label_23, ui_->lblLaserRatio);
    ui_->laserGroup->addTile(ui_->label_25, ui_->lblLaserPower);
    for (TileCard* const card : {ui_->stateGroup, ui_->countGroup, ui_->laserGroup}) {
        card->fold();
    }
}

void StatusMonitorWidget::placeCards() {
    constexpr int gap = 16;
    const int px = look::px(gap);
    ui_->cardsLayout->setContentsMargins(px, px, px, px);
    ui_->cardsLayout->setSpacing(px);
}

void StatusMonitorWidget::refresh() {
    if (!parentWidget() || !parentWidget()->isVisible()) {
        return;
    }
    kordservice()->get(this, key::registerValues);
    showState(ui_->lblLaserState, DI_LASER_STATE);
    showState(ui_->lblLaserTopState, DI_LASER_HEAD_STATE);
    showState(ui_->lblCoolerState, DI_WATER_COOLING_STATE);
    showState(ui_->lblPressure, DI_AIR_PRESSURE_STATE);
    showState(ui_->lblTemperatue, DI_TEMPERATURE_STATE);
    showState(ui_->lblWelding, DI_WELDING_STATE);
    const auto percent = [](I_PORT port) { return QString::number(portPercent(port), 'f', 2); };
    ui_->lblLaserFrequency->setText(percent(AO_LASER_FREQUENCY));
    ui_->lblLaserRatio->setText(percent(AO_LASER_DUTY_CYCLE));
    ui_->lblLaserPower->setText(percent(AO_LASER_POWER));
}

void StatusMonitorWidget::showState(SignLabel* label, I_PORT port) {
    bool good = true;
    refreshTFLabel(good, label, port);
    label->setSign(signOf(port, good));
    allGood_ = allGood_ && good;
}

void StatusMonitorWidget::showCount(const QVariant& count) {
    ui_->lblNum->setText(count.toString());
}

void StatusMonitorWidget::showProcessTime(const QVariant& seconds) {
    ui_->lblDelay->setText(seconds.toString());
}

void StatusMonitorWidget::countRun(const QVariant& state) {
    if (state.toString() == word::busy) {
        busySinceMs_ = nowMs();
        logD() << QStringLiteral("line numer-----------") << m(key::executeLine)->getInt()
               << QStringLiteral("------------");
        return;
    }
    const int statements = m(key::program)->cmobjCount();
    if (state.toString() != word::idle || statements == 0 ||
        m(key::executeLine)->getInt() != statements - 1) {
        return;
    }
    constexpr int msPerSecond = 1000;
    const qint64 runMs = busySinceMs_ ? nowMs() - *busySinceMs_ : 0;
    m(key::count)->setValue(this, m(key::count)->getInt() + 1);
    m(key::processTime)->setValue(this, static_cast<int>(runMs / msPerSecond));
}

void StatusMonitorWidget::clearCounters() {
    m(key::count)->setValue(this, 0);
    m(key::processTime)->setValue(this, 0);
}
