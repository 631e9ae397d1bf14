#include "app/dock/dock.h"

#include "app/appearance.h"
#include "look/icon.h"
#include "look/scale.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

namespace app {

Dock::Dock(const QString& id, const QString& title, QWidget* content, QWidget* parent)
    : QFrame(parent), content_(content) {
    setObjectName(QStringLiteral("dock_") + id);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(1, 0, 0, 0);  // its left edge is a line
    column->setSpacing(0);
    if (!title.isEmpty()) {
        bar_ = makeBar(title);
        column->addWidget(bar_);
    }
    column->addWidget(content, 1);
    dress(this);
    fit();
}

QWidget* Dock::makeBar(const QString& title) {
    auto* bar = new QFrame;
    bar->setObjectName(QStringLiteral("dockBar"));
    auto* label = new QLabel(title);
    label->setObjectName(QStringLiteral("lblDockTitle"));
    auto* close = new QToolButton;
    close->setObjectName(QStringLiteral("btnDockClose"));
    close->setIcon(look::icon(QStringLiteral("close")));
    close->setAccessibleName(tr("关闭"));
    close->setFocusPolicy(Qt::TabFocus);
    connect(close, &QToolButton::clicked, this, &Dock::closeAsked);
    auto* row = new QHBoxLayout(bar);
    row->addWidget(label, 1);
    row->addWidget(close);
    return bar;
}

void Dock::fit() {
    if (!bar_) {
        return;
    }
    bar_->setFixedHeight(look::px(64));
    bar_->layout()->setContentsMargins(look::px(16), 0, look::px(8), 0);
    bar_->findChild<QToolButton*>()->setIconSize(QSize(look::px(20), look::px(20)));
}

void Dock::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        emit closeAsked();
    } else {
        QFrame::keyPressEvent(event);
    }
}

void Dock::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        fit();
    }
}

}  // namespace app
