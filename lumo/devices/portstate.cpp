#include "devices/portstate.h"

#include "module/host.h"
#include "program/words.h"
#include "widgets/findingtext.h"

#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

using namespace prog;

namespace lumo {

namespace {

const QString findingMark = QStringLiteral("⚠ ");

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
    : QWidget(parent), port_(port), level_(new QLabel), finding_(new QLabel) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(8, 0, 8, 0);
    column->setSpacing(0);
    column->addStretch(1);
    column->addWidget(level_);
    column->addWidget(finding_);
    column->addStretch(1);
    setAttribute(Qt::WA_StyledBackground);  // as the other cells of the row
    finding_->setStyleSheet(QStringLiteral("color: #7A4B00; font-weight: bold;"));
    // The width of a column must not depend on what is found.
    for (const Fault fault :
         {Fault::PortNotAssigned, Fault::PortsShare, Fault::PortNowhere, Fault::PortRows}) {
        finding_->setText(findingMark + shortText(fault));
        finding_->ensurePolished();
        finding_->setMinimumWidth(std::max(finding_->minimumWidth(), finding_->sizeHint().width()));
    }
    setMinimumWidth(finding_->minimumWidth() + column->contentsMargins().left() * 2);
    clearFinding();
}

void PortState::showLevel(const QString& signal) {
    constexpr double percentOfFull = 100.0;
    if (signal.isEmpty()) {
        level_->setText(QStringLiteral("–"));
        return;
    }
    const QString path = mName(key::registerValues, signal);
    if (portInfo(port_).kind == word::portAnalog) {
        const double value = kordservice()->dataNode(mName(path, mIndex(0)))->getInt(0);
        level_->setText(QStringLiteral("%1 %").arg(value / analogueFullScale * percentOfFull, 0, 'f', 1));
        return;
    }
    const bool isOn = kordservice()->dataNode(path)->getBool(false);
    level_->setText(isOn ? tr("● 开") : tr("○ 关"));
}

void PortState::showFinding(const Finding& finding) {
    finding_->setText(findingMark + shortText(finding.fault));
    finding_->show();
    setToolTip(findingWithRemedy(finding));
}

void PortState::clearFinding() {
    finding_->hide();
    setToolTip(QString());
}

}  // namespace lumo
