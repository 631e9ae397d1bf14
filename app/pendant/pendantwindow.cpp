#include "app/pendant/pendantwindow.h"

#include "app/appearance.h"
#include "app/cell/segmentedcontrol.h"
#include "app/pendant/dialogguard.h"
#include "app/pendant/drivebox.h"
#include "app/pendant/jogbox.h"
#include "app/pendant/keybox.h"
#include "app/pendant/placement.h"
#include "app/pendant/stopbox.h"
#include "app/preferences.h"
#include "app/stop/runstopbutton.h"

#include <QApplication>
#include <QCloseEvent>
#include <QScreen>
#include <QShortcut>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

namespace app {

namespace {

constexpr int foldedWidth = 108;  // as the column of buttons on the package's pages
constexpr int fullWidth = 300;
constexpr int titleHeight = 30;  // assumed for the window manager's title bar before the window is shown
constexpr int movedDistance = 60;
constexpr int statusHeight = 48;  // of the panel's status line

}  // namespace

PendantWindow::PendantWindow(sim::Controller* controller)
    : QWidget(nullptr, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowStaysOnTopHint |
                           Qt::WindowDoesNotAcceptFocus),
      stop_(new StopBox(controller)),
      runStop_(new RunStopButton),
      lowerPart_(makeLowerPart(controller)) {
    setObjectName(QStringLiteral("pendant"));
    setWindowTitle(tr("手控器"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_AlwaysShowToolTips);
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(frameStyleSheet());
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(2, 2, 2, 2);
    column->setSpacing(6);
    column->addWidget(stop_);
    column->addWidget(runStop_);
    column->addWidget(lowerPart_, 1);
    auto* keyboard = new QShortcut(Qt::Key_F9, this);
    keyboard->setContext(Qt::ApplicationShortcut);
    connect(keyboard, &QShortcut::activated, this, &PendantWindow::toggleKeyboardFocus);
    connect(stop_, &StopBox::foldAsked, this, [this] { setUnfolded(!isUnfolded()); });
    new DialogGuard(this);
    setUnfolded(true);
}

QWidget* PendantWindow::makeLowerPart(sim::Controller* controller) {
    auto* tabs = new SegmentedControl(QStringLiteral("pendantTab"), {tr("点动"), tr("末端按键")});
    auto* pages = new QStackedWidget;
    pages->addWidget(new JogBox(controller));
    pages->addWidget(new KeyBox(controller));
    connect(tabs, &SegmentedControl::clicked, pages, [tabs, pages](int index) {
        tabs->setCurrent(index);
        pages->setCurrentIndex(index);
    });
    auto* part = new QWidget;
    auto* column = new QVBoxLayout(part);
    column->setContentsMargins(4, 0, 4, 4);
    column->setSpacing(4);
    column->addWidget(new DriveBox(controller));
    column->addWidget(tabs);
    column->addWidget(pages, 1);
    return part;
}

void PendantWindow::showBeside(const QRect& panel) {
    const QRect room = screen()->availableGeometry();
    const auto remembered = Preferences::pendantPosition();
    const auto beside = cornerBeside(panel, size() + QSize(0, titleHeight), room);
    if (remembered && QGuiApplication::screenAt(*remembered)) {
        setUnfolded(Preferences::pendantUnfolded());
        move(*remembered);
    } else if (beside) {
        move(*beside);
    } else {
        setUnfolded(false);
        move(room.x(), room.y() + room.height() - height() - titleHeight - statusHeight);
    }
    placed_ = pos();
    show();
    QTimer::singleShot(0, this, &PendantWindow::keepOnScreen);
}

void PendantWindow::setUnfolded(bool unfolded) {
    const QRect before = frameGeometry();
    const QRect room = screen()->availableGeometry();
    const bool atBottom = before.bottom() > room.bottom() - movedDistance;
    const bool atRight = before.right() > room.right() - movedDistance;
    lowerPart_->setVisible(unfolded);
    stop_->setUnfolded(unfolded);
    setFixedWidth(unfolded ? fullWidth : foldedWidth);
    layout()->invalidate();
    setFixedHeight(layout()->sizeHint().height());
    if (!isVisible()) {
        return;
    }
    // Unfolding grows away from the nearest screen corner; folding returns to the former position.
    const QSize grown(width() - before.width(),
                      height() + frameGeometry().height() - geometry().height() - before.height());
    const bool byHand = (pos() - placed_).manhattanLength() > movedDistance;
    const bool stayed = !unfolded && foldedPos_ && (pos() - unfoldedPos_).manhattanLength() <= movedDistance;
    if (unfolded) {
        foldedPos_ = pos();
    }
    move(stayed ? foldedPos_.value_or(pos())
                : pos() - QPoint(atRight ? grown.width() : 0, atBottom ? grown.height() : 0));
    keepOnScreen();
    unfoldedPos_ = pos();
    if (byHand) {
        Preferences::rememberPendant(pos(), unfolded);
    } else {
        placed_ = pos();
    }
}

bool PendantWindow::isUnfolded() const {
    return !lowerPart_->isHidden();
}

QRect PendantWindow::stopGeometry() const {
    return QRect(stop_->mapToGlobal(QPoint()), stop_->size())
        .united(QRect(runStop_->mapToGlobal(QPoint()), runStop_->size()));
}

void PendantWindow::keepOnScreen() {
    const QRect frame = frameGeometry();
    const QRect kept = movedInto(frame, screen()->availableGeometry());
    if (kept != frame) {
        move(pos() + kept.topLeft() - frame.topLeft());
    }
}

void PendantWindow::toggleKeyboardFocus() {
    if (isActiveWindow()) {
        QWidget* const dialog = QApplication::activeModalWidget();
        if (QWindow* window = dialog ? dialog->windowHandle() : previousFocus_.data()) {
            window->requestActivate();
        }
        return;
    }
    previousFocus_ = QGuiApplication::focusWindow();
    windowHandle()->setFlag(Qt::WindowDoesNotAcceptFocus, false);
    activateWindow();
    if (!focusWidget()) {
        focusNextChild();
    }
}

bool PendantWindow::event(QEvent* event) {
    if (event->type() == QEvent::WindowDeactivate && windowHandle()) {
        windowHandle()->setFlag(Qt::WindowDoesNotAcceptFocus, true);
    }
    return QWidget::event(event);
}

void PendantWindow::moveEvent(QMoveEvent* event) {
    QWidget::moveEvent(event);
    if (event->spontaneous() && isVisible() && (pos() - placed_).manhattanLength() > movedDistance) {
        Preferences::rememberPendant(pos(), isUnfolded());
    }
}

void PendantWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange && isMinimized()) {
        QTimer::singleShot(0, this, &QWidget::showNormal);
    }
}

void PendantWindow::closeEvent(QCloseEvent* event) {
    event->setAccepted(!event->spontaneous());
}

}  // namespace app
