#include "app/cell/cellstrip.h"

#include "app/appearance.h"
#include "app/cell/faultlist.h"
#include "app/cell/segmentedcontrol.h"
#include "app/cell/signallist.h"

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

}  // namespace

SpeedBox::SpeedBox(QWidget* parent)
    : QFrame(parent), choice_(new SegmentedControl(QStringLiteral("speed"), captions())) {
    setObjectName(QStringLiteral("speedBox"));
    setToolTip(tr("单元的时间：快速运行时，焊接中的一切比例不变"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(8, 4, 8, 4);
    row->addWidget(new QLabel(tr("时间")));
    row->addWidget(choice_, 1);
    connect(choice_, &SegmentedControl::clicked, this, [this](int index) {
        choice_->setCurrent(index);
        emit chosen(factors[index]);
    });
}

CellStrip::CellStrip(sim::Controller* controller, sim::Cell* cell, QWidget* parent)
    : QFrame(parent), pages_(new QStackedWidget(this)) {
    setObjectName(QStringLiteral("cellStrip"));
    setFixedWidth(fullWidth);
    // Set before the children are made, so that each is styled only once.
    setStyleSheet(app::frameStyleSheet());
    auto* tabs = new SegmentedControl(QStringLiteral("cellTab"), {tr("输入"), tr("输出"), tr("故障")}, this);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(tabs);
    column->addWidget(pages_, 1);
    auto* speed = new SpeedBox(this);
    column->addWidget(speed);
    connect(speed, &SpeedBox::chosen, this, &CellStrip::speedChosen);
    connect(tabs, &SegmentedControl::clicked, this, [this, tabs](int index) {
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
    // The tab shows active faults while another page is open.
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
