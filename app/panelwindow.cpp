#include "app/panelwindow.h"

#include "app/appearance.h"
#include "app/dock/dockarea.h"
#include "app/framegrid.h"
#include "app/header/header.h"
#include "app/noticebar.h"
#include "look/scale.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QShortcut>
#include <QStackedWidget>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

namespace app {

namespace {

/// A place that its only child fills; others may lie over it.
QWidget* stageOf(QWidget* pages) {
    auto* stage = new QWidget;
    auto* column = new QVBoxLayout(stage);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(pages);
    return stage;
}

}  // namespace

PanelWindow::PanelWindow()
    : header_(new Header),
      pages_(new QStackedWidget),
      docks_(new DockArea(stageOf(pages_))),
      notices_(new NoticeBar(this)),
      body_(new QHBoxLayout),
      status_(new QHBoxLayout),
      statusLine_(makeStatusLine()) {
    setWindowTitle(tr("激光焊接操作面板"));
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(header_);
    column->addLayout(body_, 1);
    column->addWidget(statusLine_);
    body_->setSpacing(0);
    body_->addWidget(docks_, 1);
    setCentralWidget(content);
    layout()->setSizeConstraint(QLayout::SetNoConstraint);  // else a large window could not be made smaller
    fit();
}

/// Notices have their room there, so that a page never gets smaller by one.
QWidget* PanelWindow::makeStatusLine() {
    auto* line = new QFrame;
    line->setObjectName(QStringLiteral("statusLine"));
    dress(line, {QStringLiteral("base"), QStringLiteral("frame")});
    line->setLayout(status_);
    status_->setContentsMargins(0, 0, 0, 0);
    status_->setSpacing(0);
    status_->addWidget(notices_, 3);
    return line;
}

void PanelWindow::setStatus(QWidget* why, QWidget* progress, QWidget* times) {
    status_->insertWidget(0, why, 2);
    status_->addWidget(progress);
    status_->addWidget(times);
}

QWidget* PanelWindow::stage() const {
    return docks_->stage();
}

void PanelWindow::offerDock(const QString& id, const QString& button, const QString& icon,
                            const QString& text) {
    offer(header_->addButton(button, icon, text), id);
}

void PanelWindow::offer(QToolButton* button, const QString& dock) {
    connect(docks_, &DockArea::changed, button, [dock, button](const QString& changed, bool open) {
        if (changed == dock) {
            button->setChecked(open);
        }
    });
    connect(button, &QToolButton::clicked, docks_, [this, dock, button] {
        docks_->toggle(dock);
        button->setChecked(docks_->isOpen(dock));  // a press has toggled it
    });
}

void PanelWindow::offerByKey(Qt::Key key, const QString& dock) {
    auto* shortcut = new QShortcut(key, this);
    shortcut->setContext(Qt::ApplicationShortcut);
    connect(shortcut, &QShortcut::activated, docks_, [this, dock] { docks_->open(dock); });
}

void PanelWindow::setRail(QWidget* rail) {
    rail_ = rail;
    body_->addWidget(rail);
    fit();
}

void PanelWindow::setChosenFactor(double factor) {
    setProperty(look::scaleProperty, factor);
    fit();
}

void PanelWindow::prepare() {
    fit();
    layout()->activate();
    centralWidget()->layout()->activate();
    docks_->refit();
    stage()->layout()->activate();
}

void PanelWindow::fit() {
    setFrameFactor(look::factorFor(*this));
    header_->fitTo(width());
    statusLine_->setFixedHeight(framegrid::statusHeight());
    if (rail_) {
        rail_->setFixedWidth(framegrid::railWidth(width()));
    }
    docks_->refit();
}

bool PanelWindow::event(QEvent* event) {
    const bool handled = QMainWindow::event(event);
    if (event->type() == QEvent::UpdateRequest && !painted_) {  // which paints it
        painted_ = true;
        emit painted();
    }
    return handled;
}

void PanelWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    QWidget* const dialog = QApplication::activeModalWidget();
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && dialog && dialog != this) {
        QTimer::singleShot(0, dialog, &QWidget::activateWindow);
    }
}

void PanelWindow::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    fit();
}

void PanelWindow::closeEvent(QCloseEvent* event) {
    if (mayClose_ && !mayClose_()) {
        event->ignore();
        return;
    }
    QMainWindow::closeEvent(event);
    QCoreApplication::quit();
}

}  // namespace app
