#include "app/cell/cellstrip.h"

#include "app/cell/choice.h"
#include "app/cell/faultlist.h"
#include "app/cell/signallist.h"
#include "app/cell/speedbox.h"

#include <QScrollArea>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace app {

CellStrip::CellStrip(sim::Controller* controller, sim::Cell* cell, QWidget* parent)
    : QFrame(parent), pages_(new QStackedWidget) {
    setObjectName(QStringLiteral("cellStrip"));
    setFixedWidth(kWidth);
    auto* tabs = new Choice(QStringLiteral("cellTab"), {tr("输入"), tr("输出"), tr("故障")});
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(tabs);
    column->addWidget(pages_, 1);
    auto* speed = new SpeedBox;
    column->addWidget(speed);
    connect(speed, &SpeedBox::chosen, this, &CellStrip::speedChosen);
    connect(tabs, &Choice::asked, this, [this, tabs](int index) {
        tabs->setCurrent(index);
        pages_->setCurrentIndex(index);
    });

    addPage(new SignalList(SignalButton::Kind::Input, controller));
    addPage(new SignalList(SignalButton::Kind::Output, controller));
    auto* faults = new FaultList(controller, cell);
    addPage(faults);
    // A fault that is forgotten is seen from the other pages.
    connect(faults, &FaultList::countChanged, tabs, [tabs](int count) {
        tabs->setText(2, count > 0 ? QStringLiteral("⚠ %1 (%2)").arg(tr("故障")).arg(count) : tr("故障"));
    });
}

void CellStrip::addPage(QWidget* page) {
    auto* scroller = new QScrollArea;
    scroller->setWidgetResizable(true);
    scroller->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroller->setFrameShape(QFrame::NoFrame);
    scroller->setWidget(page);
    pages_->addWidget(scroller);
}

}  // namespace app
