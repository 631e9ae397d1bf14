#include "app/pendant/dialogguard.h"

#include "app/pendant/pendantwindow.h"
#include "app/pendant/placement.h"

#include <QApplication>
#include <QEvent>
#include <QScreen>
#include <QTimer>
#include <QWindow>

namespace app {

DialogGuard::DialogGuard(PendantWindow* pendant) : QObject(pendant), pendant_(pendant) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool DialogGuard::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    const bool appears = type == QEvent::Show || type == QEvent::WindowActivate;
    const bool moves = watched == pendant_ && (type == QEvent::Move || type == QEvent::Resize);
    if ((!appears && !moves) || !watched->isWidgetType()) {
        return false;
    }
    auto* window = static_cast<QWidget*>(watched);
    if (!window->isWindow()) {
        return false;
    }
    // Qt makes its own message boxes application-modal, which would block the pendant, too.
    if (type == QEvent::Show && window->windowModality() == Qt::ApplicationModal) {
        window->setWindowModality(Qt::WindowModal);
        window->windowHandle()->setModality(Qt::WindowModal);
    }
    if (!due_) {
        due_ = true;
        QTimer::singleShot(0, this, &DialogGuard::keepClear);  // a dialog is positioned while it is shown
    }
    return false;
}

void DialogGuard::keepClear() {
    due_ = false;
    if (!pendant_->isVisible()) {
        return;
    }
    pendant_->raise();
    // The window manager keeps the pendant above the windows that it manages; move the others away.
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        const Qt::WindowType kind = window->windowType();
        const bool passing = kind == Qt::Popup || kind == Qt::ToolTip;
        if (window->isVisible() && window->windowFlags().testFlag(Qt::BypassWindowManagerHint) && !passing) {
            moveAway(window);
        }
    }
}

/// Uncovers the whole pendant if possible, else its emergency stop and Stop.
void DialogGuard::moveAway(QWidget* dialog) {
    const QRect room = pendant_->screen()->availableGeometry();
    for (const QRect& keepFree : {pendant_->frameGeometry(), pendant_->stopGeometry()}) {
        if (!dialog->geometry().intersects(keepFree)) {
            return;
        }
        if (const auto place = placeClearOf(dialog->geometry(), keepFree, room)) {
            dialog->move(*place);
            return;
        }
    }
}

}  // namespace app
