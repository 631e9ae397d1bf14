#include "app/cell/speedbox.h"

#include "app/cell/choice.h"

#include <QHBoxLayout>
#include <QLabel>

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
    : QFrame(parent), choice_(new Choice(QStringLiteral("speed"), captions())) {
    setObjectName(QStringLiteral("speedBox"));
    setToolTip(tr("单元的时间：快速运行时，焊接中的一切比例不变"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(8, 4, 8, 4);
    row->addWidget(new QLabel(tr("时间")));
    row->addWidget(choice_, 1);
    connect(choice_, &Choice::asked, this, [this](int index) {
        choice_->setCurrent(index);
        emit chosen(factors[index]);
    });
}

}  // namespace app
