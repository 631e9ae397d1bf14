#include "app/panelwindow.h"

#include "app/appearance.h"
#include "app/navigation.h"
#include "app/noticebar.h"
#include "app/panelbody.h"
#include "app/parts/partsblock.h"
#include "app/state/stateblock.h"
#include "app/stop/runstopbutton.h"

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

constexpr int headerButtonWidth = 96;
constexpr int headerSpace = 8;

/// A button of the header that is down while what it opens is open.
QToolButton* makeHeaderButton(const QString& name, const QString& text) {
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setText(text);
    button->setCheckable(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setMinimumSize(headerButtonWidth, 48);
    button->hide();
    return button;
}

}  // namespace

PanelWindow::PanelWindow()
    : state_(new StateBlock),
      stop_(new RunStopButton),
      parts_(new PartsBlock),
      navigation_(new Navigation),
      notices_(new NoticeBar(this)),
      viewsButton_(makeHeaderButton(QStringLiteral("btnViews"), tr("视图"))),
      stripButton_(makeHeaderButton(QStringLiteral("btnCell"), tr("单元"))),
      body_(new PanelBody),
      status_(new QHBoxLayout) {
    setWindowTitle(tr("激光焊接操作面板"));
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeHeader());
    column->addWidget(body_, 1);
    column->addWidget(makeStatusLine());
    setCentralWidget(content);
    connect(body_, &PanelBody::resized, this, [this] {
        if (!operatorPlaces_) {
            placeStrip();
        }
    });
}

QWidget* PanelWindow::makeHeader() {
    connect(stripButton_, &QToolButton::clicked, this, [this](bool on) {
        operatorPlaces_ = true;
        body_->setFolded(!on);
    });

    auto* header = new QFrame;
    header->setObjectName(QStringLiteral("header"));
    header->setFixedHeight(headerHeight);
    header->setStyleSheet(frameStyleSheet());
    auto* row = new QHBoxLayout(header);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(state_);
    row->addWidget(navigation_);
    row->addStretch(1);
    row->addWidget(parts_);
    row->addWidget(viewsButton_);
    row->addWidget(stripButton_);
    row->addSpacing(headerSpace);
    row->addWidget(stop_);
    header_ = row;
    return header;
}

void PanelWindow::addToHeader(QWidget* button) {
    header_->insertWidget(header_->indexOf(parts_), button);
}

void PanelWindow::addBeforeStop(QWidget* button) {
    constexpr int spaceAndStop = 2;
    header_->insertWidget(header_->count() - spaceAndStop, button);
}

/// Notices have their room there, so that a page never gets smaller by one.
QWidget* PanelWindow::makeStatusLine() {
    auto* line = new QFrame;
    line->setObjectName(QStringLiteral("statusLine"));
    line->setFixedHeight(statusHeight);
    line->setStyleSheet(frameStyleSheet());
    notices_->list()->setStyleSheet(frameStyleSheet());
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

QStackedWidget* PanelWindow::pages() const {
    return body_->pages();
}

void PanelWindow::offerViews() {
    viewsButton_->show();
    viewsButton_->setToolTip(tr("路径、信号、结果、日志") + QStringLiteral(": F6, F7, F8, F10"));
    connect(viewsButton_, &QToolButton::clicked, this, [this](bool on) {
        if (on) {
            emit viewsAsked(0);
        } else {
            emit viewsDismissed();
        }
    });
    int page = 0;
    for (const auto key : {Qt::Key_F6, Qt::Key_F7, Qt::Key_F8, Qt::Key_F10}) {
        auto* shortcut = new QShortcut(key, this);
        shortcut->setContext(Qt::ApplicationShortcut);
        connect(shortcut, &QShortcut::activated, this, [this, page] { emit viewsAsked(page); });
        ++page;
    }
}

void PanelWindow::showViewsOpen(bool open) {
    viewsButton_->setChecked(open);
}

QWidget* PanelWindow::stripParent() const {
    return body_;
}

void PanelWindow::setStrip(QWidget* strip) {
    body_->setStrip(strip);
    stripButton_->show();
    stripButton_->setToolTip(tr("模拟单元"));
    placeStrip();
}

void PanelWindow::unfoldStrip(bool unfolded) {
    stripButton_->setChecked(unfolded);
    body_->setFolded(!unfolded);
}

void PanelWindow::showSpeed(double factor) {
    const QString name = tr("单元");
    stripButton_->setText(factor == 1 ? name : QStringLiteral("%1 %2x").arg(name).arg(factor));
}

void PanelWindow::placeStrip() {
    unfoldStrip(body_->hasRoom());
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
    state_->fitTo(width());
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
