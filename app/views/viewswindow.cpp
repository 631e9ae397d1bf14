#include "app/views/viewswindow.h"

#include "app/appearance.h"
#include "app/cell/cellstrip.h"
#include "app/panelwindow.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace app {

namespace {

constexpr int minHeight = 480;
constexpr int frames = 16;  // width of the window manager's frames

/// Geometry of another visible window than these two; empty without one.
QRect thirdWindow(const QWidget* one, const QWidget* other) {
    const QWidgetList all = QApplication::topLevelWidgets();
    for (const QWidget* widget : all) {
        if (widget != one && widget != other && widget->isVisible()) {
            return widget->frameGeometry();
        }
    }
    return {};
}

}  // namespace

QRect placeBeside(const QRect& other, const QRect& screen, int width, const QMargins& margins,
                  const QRect& keepFree) {
    QRect place(0, other.top(), width, other.height());
    if (screen.right() - other.right() >= width) {
        place.moveLeft(other.right() + 1);
    } else if (other.left() - screen.left() >= width) {
        place.moveRight(other.left() - 1);
    } else {
        place.moveLeft(screen.left());
        place.setTop(other.top() + margins.top());
        place.setBottom(other.bottom() - margins.bottom());
        place.setWidth(std::min(width, screen.width()));
    }
    if (place.intersects(keepFree)) {
        const int left = keepFree.left() - width;
        if (keepFree.top() - place.top() >= minHeight) {
            place.setBottom(keepFree.top() - 1);
        } else if (left + margins.right() + frames > other.right()) {
            place = QRect(left, other.top() + margins.top(), width,
                          other.height() - margins.top() - margins.bottom());
        }
    }
    return place.intersected(screen);
}

ViewsWindow::ViewsWindow() : tabs_(new QTabWidget) {
    setObjectName(QStringLiteral("viewsWindow"));
    setWindowTitle(tr("路径、信号、结果、日志"));
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(frameStyleSheet());
    tabs_->setDocumentMode(true);
    tabs_->tabBar()->setExpanding(true);
    tabs_->tabBar()->setFocusPolicy(Qt::TabFocus);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(tabs_);
    resize(fullWidth, fullWidth);
}

void ViewsWindow::addPage(QWidget* page, const QString& title) {
    tabs_->addTab(page, title);
}

void ViewsWindow::open(int page, const QWidget* panel) {
    if (!placed_) {
        placed_ = true;
        setGeometry(
            placeBeside(panel->geometry(), panel->screen()->availableGeometry(), fullWidth,
                        {0, PanelWindow::headerHeight, CellStrip::fullWidth, PanelWindow::statusHeight},
                        thirdWindow(this, panel)));
    }
    tabs_->setCurrentIndex(page);
    show();
    raise();
    activateWindow();
}

void ViewsWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    emit opened(true);
}

void ViewsWindow::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    emit opened(false);
}

void ViewsWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

}  // namespace app
