#include "app/cell/segmentedcontrol.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QButtonGroup>
#include <QPushButton>
#include <QStyle>
#include <QVariant>

namespace app {

namespace {

/// The style rounds the corners at the ends.
QString endOf(int index, int count, Qt::Orientation orientation) {
    const bool across = orientation == Qt::Horizontal;
    if (index == 0) {
        return across ? QStringLiteral("left") : QStringLiteral("top");
    }
    if (index < count - 1) {
        return QStringLiteral("none");
    }
    return across ? QStringLiteral("right") : QStringLiteral("bottom");
}

}  // namespace

SegmentedControl::SegmentedControl(const QString& name, const QStringList& texts, QWidget* parent)
    : SegmentedControl(name, texts, Qt::Horizontal, parent) {}

SegmentedControl::SegmentedControl(const QString& name, const QStringList& texts, Qt::Orientation orientation,
                                   QWidget* parent)
    : QWidget(parent), buttons_(new QButtonGroup(this)) {
    auto* row = new QBoxLayout(
        orientation == Qt::Horizontal ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom, this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    for (int i = 0; i < texts.size(); ++i) {
        auto* button = new QPushButton(texts[i]);
        button->setObjectName(name + QString::number(i));
        button->setProperty("segment", endOf(i, texts.size(), orientation));
        button->setCheckable(true);
        button->setFocusPolicy(Qt::TabFocus);
        button->setSizePolicy(orientation == Qt::Vertical ? QSizePolicy::Ignored : QSizePolicy::Preferred,
                              QSizePolicy::Fixed);
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
        setFocusProxy(button);
    } else if (QAbstractButton* checked = buttons_->checkedButton()) {
        buttons_->setExclusive(false);
        checked->setChecked(false);
        buttons_->setExclusive(true);
    }
}

int SegmentedControl::current() const {
    return current_;
}

void SegmentedControl::setChoiceShown(int index, bool shown) {
    if (buttons_->button(index)->isHidden() != shown) {
        return;
    }
    buttons_->button(index)->setVisible(shown);
    QList<QAbstractButton*> there;
    const QList<QAbstractButton*> all = buttons_->buttons();
    for (QAbstractButton* button : all) {
        if (!button->isHidden()) {
            there << button;
        }
    }
    const auto* row = static_cast<const QBoxLayout*>(layout());
    const bool across = row->direction() == QBoxLayout::LeftToRight;
    for (int i = 0; i < there.size(); ++i) {
        there[i]->setProperty("segment", endOf(i, there.size(), across ? Qt::Horizontal : Qt::Vertical));
        there[i]->style()->unpolish(there[i]);
        there[i]->style()->polish(there[i]);
    }
}

QAbstractButton* SegmentedControl::button(int index) const {
    return buttons_->button(index);
}

void SegmentedControl::setText(int index, const QString& text) {
    buttons_->button(index)->setText(text);
}

void SegmentedControl::setQuiet(int index) {
    buttons_->button(index)->setProperty("quiet", true);
}

}  // namespace app
