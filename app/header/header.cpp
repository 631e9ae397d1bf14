#include "app/header/header.h"

#include "app/appearance.h"
#include "app/framegrid.h"
#include "app/navigation.h"
#include "app/parts/partsblock.h"
#include "app/state/stateblock.h"
#include "app/stop/runstopbutton.h"
#include "look/icon.h"
#include "look/scale.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QToolButton>

namespace app {

Header::Header(QWidget* parent)
    : QFrame(parent),
      navigation_(new Navigation),
      state_(new StateBlock),
      parts_(new PartsBlock),
      stop_(new RunStopButton),
      row_(new QHBoxLayout(this)),
      buttons_(new QHBoxLayout) {
    setObjectName(QStringLiteral("header"));
    row_->setContentsMargins(0, 0, 0, 0);
    row_->addWidget(navigation_);
    row_->addWidget(state_);
    row_->addWidget(parts_);
    row_->addStretch(1);
    row_->addLayout(buttons_);
    row_->addWidget(stop_);
    dress(this, {QStringLiteral("base"), QStringLiteral("frame")});
}

QToolButton* Header::addButton(const QString& name, const QString& icon, const QString& text) {
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setText(text);
    button->setIcon(look::icon(icon, look::white));
    button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    button->setCheckable(true);
    button->setFocusPolicy(Qt::TabFocus);
    buttons_->addWidget(button);
    fitTo(window_);
    return button;
}

void Header::addBeforeStop(QWidget* widget) {
    row_->insertWidget(row_->indexOf(stop_), widget);
}

void Header::fitTo(int window) {
    window_ = window;
    const bool narrow = framegrid::isNarrow(window);
    setFixedHeight(framegrid::headerHeight());
    state_->setFixedSize(framegrid::stateWidth(window), look::px(48));
    row_->setSpacing(look::px(narrow ? 8 : 16));
    row_->setContentsMargins(0, 0, look::px(narrow ? 4 : 8), 0);
    buttons_->setSpacing(look::px(narrow ? 4 : 8));
    navigation_->setNarrow(narrow);
    const QList<QToolButton*> all = findChildren<QToolButton*>(QString(), Qt::FindDirectChildrenOnly);
    for (QToolButton* const button : all) {
        button->setMinimumSize(look::px(narrow ? 64 : 72), look::px(48));
        button->setIconSize(QSize(look::px(20), look::px(20)));
    }
}

void Header::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        fitTo(window_);
    }
}

}  // namespace app
