#include "app/cell/cellstrip.h"

#include "app/cell/choice.h"
#include "app/cell/faultlist.h"
#include "app/cell/signallist.h"
#include "app/cell/speedbox.h"
#include "app/look.h"

#include <QScrollArea>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace app {

CellStrip::CellStrip(sim::Controller* controller, sim::Cell* cell, QWidget* parent)
    : QFrame(parent), pages_(new QStackedWidget(this)) {
    setObjectName(QStringLiteral("cellStrip"));
    setFixedWidth(fullWidth);
    // Before what is in it, all of which is made where it stays: what gets another sheet is styled again.
    setStyleSheet(app::frameStyle());
    auto* tabs = new Choice(QStringLiteral("cellTab"), {tr("输入"), tr("输出"), tr("故障")}, this);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(tabs);
    column->addWidget(pages_, 1);
    auto* speed = new SpeedBox(this);
    column->addWidget(speed);
    connect(speed, &SpeedBox::chosen, this, &CellStrip::speedChosen);
    connect(tabs, &Choice::asked, this, [this, tabs](int index) {
        tabs->setCurrent(index);
        pages_->setCurrentIndex(index);
    });

    for (const auto kind : {SignalButton::Kind::Input, SignalButton::Kind::Output}) {
        QScrollArea* const page = addPage();
        page->setWidget(new SignalList(kind, controller, page->viewport()));
    }
    QScrollArea* const last = addPage();
    auto* faults = new FaultList(controller, cell, last->viewport());
    last->setWidget(faults);
    // A fault that is forgotten is seen from the other pages.
    connect(faults, &FaultList::countChanged, tabs, [tabs](int count) {
        tabs->setText(2, count > 0 ? QStringLiteral("⚠ %1 (%2)").arg(tr("故障")).arg(count) : tr("故障"));
    });
}

QScrollArea* CellStrip::addPage() {
    auto* scroller = new QScrollArea(pages_);
    scroller->setWidgetResizable(true);
    scroller->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroller->setFrameShape(QFrame::NoFrame);
    pages_->addWidget(scroller);
    return scroller;
}

}  // namespace app
