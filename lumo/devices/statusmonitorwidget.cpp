#include "devices/statusmonitorwidget.h"

#include "equipment/ports.h"
#include "ui_statusmonitorwidget.h"
#include "widgets/dressing.h"

#include <QTimer>

using namespace lumo;
using namespace prog;

namespace {

/// Faults are red, except the welding signal, which is off whenever the laser is off.
QString stateSheet(I_PORT port, bool good) {
    if (!portEnabled(port)) {
        return QStringLiteral("color: #7b8794;");
    }
    return good || port == DI_WELDING_STATE ? QString()
                                            : QStringLiteral("color: #c62828; font-weight: bold;");
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

void StatusMonitorWidget::showState(QLabel* label, I_PORT port) {
    bool good = true;
    refreshTFLabel(good, label, port);
    setStyleSheetOnChange(label, stateSheet(port, good));
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
