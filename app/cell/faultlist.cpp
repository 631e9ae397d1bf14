#include "app/cell/faultlist.h"

#include "app/cell/assignedports.h"
#include "look/icon.h"
#include "look/scale.h"
#include "simulator/cell.h"
#include "simulator/controller.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace app {

namespace {

constexpr int motionError = -42;
const QString equipmentInputs = QStringLiteral("LUMO_DI");

}  // namespace

FaultList::FaultList(sim::Controller* controller, sim::Cell* cell, QWidget* parent)
    : QWidget(parent), column_(new QVBoxLayout(this)) {
    column_->setContentsMargins(0, 0, look::px(8), look::px(8));
    column_->setSpacing(look::px(4));
    addEquipment(cell, equipmentOf(*controller));
    if (controller->isRobotSimulated()) {
        addMotion(controller);
        addQuirks(controller);
    }
    clear_ = addButton(QStringLiteral("btnClearFaults"));
    clear_->setText(tr("全部恢复正常"));
    column_->addStretch(1);
    connect(clear_, &QPushButton::clicked, this, &FaultList::clearAll);
    refresh();
}

bool FaultList::isOffered(const sim::Controller& controller) {
    return controller.isRobotSimulated() || !equipmentOf(controller).isEmpty();
}

QVector<int> FaultList::equipmentOf(const sim::Controller& controller) {
    QVector<int> pieces;
    for (int i = 0; i < sim::Cell::equipment().size(); ++i) {
        if (controller.takesInput(sim::Cell::inputOf(i))) {
            pieces << i;
        }
    }
    return pieces;
}

void FaultList::addHeading(const QString& text) {
    auto* heading = new QLabel(text);
    heading->setProperty("heading", true);
    column_->addWidget(heading);
}

QPushButton* FaultList::addButton(const QString& name) {
    auto* button = new QPushButton;
    button->setObjectName(name);
    button->setFocusPolicy(Qt::TabFocus);
    // A long text must not make the strip wider.
    button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    button->setProperty("fault", true);
    column_->addWidget(button);
    return button;
}

QPushButton* FaultList::addFault(const QString& name, const Fault& fault) {
    QPushButton* button = addButton(QStringLiteral("fault_") + name);
    button->setCheckable(true);
    faults_.insert(button, fault);
    connect(button, &QPushButton::toggled, this, &FaultList::refresh);
    return button;
}

void FaultList::addEquipment(sim::Cell* cell, const QVector<int>& pieces) {
    const struct {
        const char* name;
        QString caption;
    } equipment[] = {{"laser", tr("激光器未就绪")},
                     {"head", tr("激光头故障")},
                     {"chiller", tr("水冷故障")},
                     {"gas", tr("气压不足")},
                     {"temperature", tr("温度过高")}};
    if (!pieces.isEmpty()) {
        addHeading(tr("设备故障") + QStringLiteral("  ") + equipmentInputs);
    }
    for (const int piece : pieces) {
        const QString name = QLatin1String(equipment[piece].name);
        const QPushButton* button = addFault(name, {equipment[piece].caption, sim::Cell::inputOf(piece)});
        connect(button, &QPushButton::toggled, cell, [cell, name](bool on) { cell->setFault(name, on); });
    }
}

void FaultList::addMotion(sim::Controller* controller) {
    addHeading(tr("运动故障"));
    QPushButton* motion = addButton(QStringLiteral("failMotion"));
    motion->setText(tr("当前或下一个运动出错\n错误码 %1").arg(motionError));
    connect(motion, &QPushButton::clicked, controller, [controller] { controller->failMotion(motionError); });
}

void FaultList::addQuirks(sim::Controller* controller) {
    addHeading(tr("控制器异常"));
    const struct {
        const char* name;
        QString caption;
    } quirks[] = {{"bunch", tr("运动结果成批返回")},      {"sync", tr("运动结果立即返回")},
                  {"late", tr("停止 300 ms 后返回结果")}, {"double", tr("每个结果返回两次")},
                  {"wrongKind", tr("结果写到别的指令")},  {"slowState", tr("机器人状态延迟 50 ms")}};
    for (const auto& quirk : quirks) {
        sim::Quirk which;
        const QString name = QLatin1String(quirk.name);
        if (!sim::Controller::quirkFromName(name, &which)) {
            continue;
        }
        const QPushButton* button = addFault(name, {quirk.caption, QString()});
        connect(button, &QPushButton::toggled, controller,
                [controller, which](bool on) { controller->setQuirk(which, on); });
    }
}

void FaultList::showEvent(QShowEvent* event) {
    refresh();
    QWidget::showEvent(event);
}

void FaultList::refresh() {
    const QHash<QString, AssignedPort> ports = assignedPorts();
    int count = 0;
    for (auto fault = faults_.cbegin(); fault != faults_.cend(); ++fault) {
        const bool on = fault.key()->isChecked();
        QString text = fault->caption;
        if (!fault->signalName.isEmpty()) {
            const QString label = QStringLiteral("  ") + ports.value(fault->signalName).label;
            text += QLatin1Char('\n') + fault->signalName.section(QLatin1Char('.'), 1) + label;
        }
        fault.key()->setText(text);
        fault.key()->setIcon(on ? look::icon(QStringLiteral("warn"), look::amberInk, look::amberInk)
                                : look::icon(QStringLiteral("ring"), look::edge));
        count += on ? 1 : 0;
    }
    if (clear_) {
        clear_->setEnabled(count > 0);
    }
    emit countChanged(count);
}

void FaultList::clearAll() {
    for (auto fault = faults_.cbegin(); fault != faults_.cend(); ++fault) {
        fault.key()->setChecked(false);
    }
}

}  // namespace app
