#include "app/cell/cellpage.h"

#include "app/cell/faultlist.h"
#include "app/cell/segmentedcontrol.h"
#include "app/cell/signallist.h"
#include "app/link/linkpage.h"
#include "app/link/linkwatch.h"
#include "look/scale.h"
#include "simulator/controller.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace app {

namespace {

constexpr int factors[] = {1, 2, 5, 10};

QStringList captions() {
    QStringList texts;
    for (const int factor : factors) {
        texts << QStringLiteral("%1x").arg(factor);
    }
    return texts;
}

/// What is left out beside a controller or device that is not simulated.
QString noteOn(const sim::Controller& controller) {
    const QString rest = controller.isRobotSimulated()
                             ? CellPage::tr("设备的输入只显示，不能在此切换；时间不能加快。")
                             : CellPage::tr("运动故障和控制器异常只能在模拟控制器上产生；时间不能加快。");
    return FaultList::equipmentOf(controller).isEmpty()
               ? rest + CellPage::tr("焊接设备的故障由输入报告，不能在此模拟。")
               : rest;
}

}  // namespace

SpeedBox::SpeedBox(QWidget* parent)
    : QFrame(parent), choice_(new SegmentedControl(QStringLiteral("speed"), captions())) {
    setObjectName(QStringLiteral("speedBox"));
    setAccessibleDescription(tr("单元的时间：快速运行时，焊接中的一切比例不变"));
    auto* row = new QHBoxLayout(this);
    row->addWidget(new QLabel(tr("时间")));
    row->addWidget(choice_, 1);
    connect(choice_, &SegmentedControl::clicked, this, [this](int index) {
        choice_->setCurrent(index);
        emit chosen(factors[index]);
    });
}

CellPage::CellPage(sim::Controller* controller, sim::Cell* cell, const LinkWatch* links, QWidget* parent)
    : QFrame(parent), pages_(new QStackedWidget(this)) {
    setObjectName(QStringLiteral("cellPage"));
    if (links->isOutside()) {
        addPage(tr("连接"))->setWidget(new LinkPage(links, noteOn(*controller)));
    }
    for (const auto kind : {SignalButton::Kind::Input, SignalButton::Kind::Output}) {
        QScrollArea* const page = addPage(kind == SignalButton::Kind::Input ? tr("输入") : tr("输出"));
        page->setWidget(new SignalList(kind, controller, page->viewport()));
    }
    FaultList* const faults = addFaults(controller, cell);
    tabs_ = new SegmentedControl(QStringLiteral("cellTab"), captions_, this);
    auto* column = new QVBoxLayout(this);
    column->addWidget(tabs_);
    column->addWidget(pages_, 1);
    connect(tabs_, &SegmentedControl::clicked, this, [this](int index) {
        tabs_->setCurrent(index);
        pages_->setCurrentIndex(index);
    });
    if (faults) {
        connect(faults, &FaultList::countChanged, this, &CellPage::showFaults);
    }
    if (!links->isOutside()) {
        auto* speed = new SpeedBox(this);
        column->addWidget(speed);
        connect(speed, &SpeedBox::chosen, this, &CellPage::speedChosen);
    }
    fit();
}

/// Null where none would have an effect.
FaultList* CellPage::addFaults(sim::Controller* controller, sim::Cell* cell) {
    if (!FaultList::isOffered(*controller)) {
        return nullptr;
    }
    QScrollArea* const page = addPage(tr("故障"));
    auto* faults = new FaultList(controller, cell, page->viewport());
    page->setWidget(faults);
    return faults;
}

/// The tab shows active faults while another page is open.
void CellPage::showFaults(int count) {
    tabs_->setText(captions_.size() - 1,
                   count > 0 ? QStringLiteral("%1 (%2)").arg(tr("故障")).arg(count) : tr("故障"));
}

void CellPage::fit() {
    const int margin = look::px(16);
    layout()->setContentsMargins(margin, 0, margin, 0);
    layout()->setSpacing(look::px(8));
}

void CellPage::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        fit();
    }
}

QScrollArea* CellPage::addPage(const QString& tab) {
    captions_ << tab;
    auto* scroller = new QScrollArea(pages_);
    scroller->setWidgetResizable(true);
    scroller->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroller->setFrameShape(QFrame::NoFrame);
    pages_->addWidget(scroller);
    return scroller;
}

}  // namespace app
