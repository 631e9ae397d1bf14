#include "devices/portstate.h"

#include "devices/signlabel.h"
#include "module/host.h"
#include "program/words.h"
#include "widgets/findingtext.h"

#include <QVBoxLayout>

#include <algorithm>

using namespace prog;

namespace lumo {

namespace {

QString shortText(Fault fault) {
    switch (fault) {
        case Fault::PortNotAssigned:
            return PortState::tr("未分配");
        case Fault::PortsShare:
            return PortState::tr("重复分配");
        case Fault::PortNowhere:
            return PortState::tr("信号不存在");
        default:
            return PortState::tr("有错误");
    }
}

}  // namespace

PortState::PortState(I_PORT port, QWidget* parent)
    : QWidget(parent), port_(port), level_(new SignLabel(this)), finding_(new SignLabel(this)) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addStretch(1);
    column->addWidget(level_);
    column->addWidget(finding_);
    column->addStretch(1);
    finding_->setObjectName(QStringLiteral("portFinding"));
    // The width of a column must not depend on what is found.
    for (const Fault fault :
         {Fault::PortNotAssigned, Fault::PortsShare, Fault::PortNowhere, Fault::PortRows}) {
        finding_->show(Sign::Warning, shortText(fault));
        finding_->ensurePolished();
        finding_->setMinimumWidth(std::max(finding_->minimumWidth(), finding_->sizeHint().width()));
    }
    setMinimumWidth(finding_->minimumWidth());
    clearFinding();
}

void PortState::showLevel(const QString& signal) {
    constexpr double percentOfFull = 100.0;
    level_->setVisible(!signal.isEmpty());
    if (signal.isEmpty()) {
        return;
    }
    const QString path = mName(key::registerValues, signal);
    if (portInfo(port_).kind == word::portAnalog) {
        const double value = kordservice()->dataNode(mName(path, mIndex(0)))->getInt(0);
        level_->show(Sign::None,
                     QStringLiteral("%1 %").arg(value / analogueFullScale * percentOfFull, 0, 'f', 1));
        return;
    }
    const bool isOn = kordservice()->dataNode(path)->getBool(false);
    isOn ? level_->show(Sign::LampOn, tr("开")) : level_->show(Sign::LampOff, tr("关"));
}

void PortState::showFinding(const Finding& finding) {
    finding_->show(Sign::Warning, shortText(finding.fault));
    finding_->setVisible(true);
}

void PortState::clearFinding() {
    finding_->setVisible(false);
}

QString PortState::findingText() const {
    return finding_->isVisibleTo(this) ? finding_->text() : QString();
}

}  // namespace lumo
