#include "app/panelwindow.h"

#include "app/navigation.h"
#include "app/noticebar.h"
#include "app/panelbody.h"

#include <QApplication>
#include <QFile>
#include <QHBoxLayout>
#include <QStackedWidget>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

namespace app {

namespace {

constexpr int kHeaderHeight = 50;

/// The look of header and strip. Pages have their own, so it is not set on the window.
QString frameStyle() {
    QFile file(QStringLiteral(":/app/panel.qss"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

}  // namespace

PanelWindow::PanelWindow()
    : navigation_(new Navigation),
      notices_(new NoticeBar(this)),
      stripButton_(new QToolButton),
      body_(new PanelBody) {
    setWindowTitle(tr("激光焊接操作面板"));
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeHeader());
    column->addWidget(body_, 1);
    setCentralWidget(content);
    connect(body_, &PanelBody::resized, this, [this] {
        if (!operatorPlaces_)
            placeStrip();
    });
}

QWidget* PanelWindow::makeHeader() {
    stripButton_->setObjectName(QStringLiteral("btnCell"));
    stripButton_->setText(tr("模拟单元"));
    stripButton_->setCheckable(true);
    stripButton_->setFocusPolicy(Qt::TabFocus);
    stripButton_->setMinimumSize(120, 48);
    stripButton_->hide();
    connect(stripButton_, &QToolButton::clicked, this, [this](bool on) {
        operatorPlaces_ = true;
        body_->setFolded(!on);
    });

    auto* header = new QFrame;
    header->setObjectName(QStringLiteral("header"));
    header->setFixedHeight(kHeaderHeight);
    header->setStyleSheet(frameStyle());
    notices_->list()->setStyleSheet(frameStyle());
    auto* row = new QHBoxLayout(header);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(navigation_);
    // Notices take the room that is left, so that a page never gets smaller by one.
    auto* room = new QWidget;
    auto* roomRow = new QHBoxLayout(room);
    roomRow->setContentsMargins(0, 0, 0, 0);
    roomRow->addWidget(notices_);
    row->addWidget(room, 1);
    row->addWidget(stripButton_);
    return header;
}

QStackedWidget* PanelWindow::pages() const {
    return body_->pages();
}

void PanelWindow::setStrip(QWidget* strip) {
    strip->setStyleSheet(frameStyle());
    body_->setStrip(strip);
    stripButton_->show();
    placeStrip();
}

void PanelWindow::unfoldStrip(bool unfolded) {
    stripButton_->setChecked(unfolded);
    body_->setFolded(!unfolded);
}

void PanelWindow::placeStrip() {
    unfoldStrip(body_->hasRoom());
}

void PanelWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    QWidget* const dialog = QApplication::activeModalWidget();
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && dialog && dialog != this)
        QTimer::singleShot(0, dialog, &QWidget::activateWindow);
}

void PanelWindow::closeEvent(QCloseEvent* event) {
    QMainWindow::closeEvent(event);
    QCoreApplication::quit();
}

}  // namespace app
