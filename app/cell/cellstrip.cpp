#include "app/cell/cellstrip.h"

#include "app/cell/choice.h"
#include "app/cell/drivebox.h"
#include "app/cell/jogbox.h"
#include "app/cell/keybox.h"
#include "app/cell/signallist.h"

#include <QScrollArea>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace app {

CellStrip::CellStrip(sim::Controller* controller, QWidget* parent)
    : QFrame(parent), pages_(new QStackedWidget) {
    setObjectName(QStringLiteral("cellStrip"));
    setFixedWidth(kWidth);
    auto* tabs = new Choice(QStringLiteral("cellTab"), {tr("机器人"), tr("输入"), tr("输出")});
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(tabs);
    column->addWidget(pages_, 1);
    connect(tabs, &Choice::asked, this, [this, tabs](int index) {
        tabs->setCurrent(index);
        pages_->setCurrentIndex(index);
    });

    auto* robot = new QWidget;
    auto* robotColumn = new QVBoxLayout(robot);
    robotColumn->setContentsMargins(6, 0, 6, 4);
    robotColumn->setSpacing(2);
    robotColumn->addWidget(new DriveBox(controller));
    robotColumn->addWidget(new KeyBox(controller));
    robotColumn->addWidget(new JogBox(controller));
    robotColumn->addStretch(1);
    addPage(robot);
    addPage(new SignalList(SignalButton::Kind::Input, controller));
    addPage(new SignalList(SignalButton::Kind::Output, controller));
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
