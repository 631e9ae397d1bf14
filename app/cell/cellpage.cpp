#include "app/cell/cellpage.h"

#include "app/cell/faultlist.h"
#include "app/cell/segmentedcontrol.h"
#include "app/cell/signallist.h"
#include "look/scale.h"

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

CellPage::CellPage(sim::Controller* controller, sim::Cell* cell, QWidget* parent)
    : QFrame(parent), pages_(new QStackedWidget(this)) {
    setObjectName(QStringLiteral("cellPage"));
    auto* tabs = new SegmentedControl(QStringLiteral("cellTab"), {tr("输入"), tr("输出"), tr("故障")}, this);
    auto* column = new QVBoxLayout(this);
    column->addWidget(tabs);
    column->addWidget(pages_, 1);
    auto* speed = new SpeedBox(this);
    column->addWidget(speed);
    connect(speed, &SpeedBox::chosen, this, &CellPage::speedChosen);
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
        tabs->setText(2, count > 0 ? QStringLiteral("%1 (%2)").arg(tr("故障")).arg(count) : tr("故障"));
    });
    fit();
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

QScrollArea* CellPage::addPage() {
    auto* scroller = new QScrollArea(pages_);
    scroller->setWidgetResizable(true);
    scroller->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroller->setFrameShape(QFrame::NoFrame);
    pages_->addWidget(scroller);
    return scroller;
}

}  // namespace app
