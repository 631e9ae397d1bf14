#include "app/cell/segmentedcontrol.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPushButton>

namespace app {

SegmentedControl::SegmentedControl(const QString& name, const QStringList& texts, QWidget* parent)
    : QWidget(parent), buttons_(new QButtonGroup(this)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    for (int i = 0; i < texts.size(); ++i) {
        auto* button = new QPushButton(texts[i]);
        button->setObjectName(name + QString::number(i));
        button->setCheckable(true);
        button->setFocusPolicy(Qt::TabFocus);
        button->setMinimumHeight(48);
        buttons_->addButton(button, i);
        row->addWidget(button, 1);
    }
    setCurrent(0);
    connect(buttons_, &QButtonGroup::idClicked, this, [this](int index) {
        setCurrent(current_);
        emit clicked(index);
    });
}

void SegmentedControl::setCurrent(int index) {
    current_ = index;
    if (QAbstractButton* button = buttons_->button(index)) {
        button->setChecked(true);
    }
}

int SegmentedControl::current() const {
    return current_;
}

void SegmentedControl::setText(int index, const QString& text) {
    buttons_->button(index)->setText(text);
}

}  // namespace app
