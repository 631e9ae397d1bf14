#include "app/rail/dialogguard.h"

#include "app/rail/placement.h"

#include <QApplication>
#include <QEvent>
#include <QScreen>
#include <QTimer>
#include <QWidget>

namespace app {

namespace {

bool isDialog(const QWidget* widget) {
    return widget->isWindow() && widget->windowType() == Qt::Dialog;
}

}  // namespace

DialogGuard::DialogGuard(const QList<QWidget*>& parts, QObject* parent) : QObject(parent) {
    for (QWidget* const part : parts) {
        parts_.append(part);
    }
    QCoreApplication::instance()->installEventFilter(this);
}

bool DialogGuard::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (due_ || (type != QEvent::Show && type != QEvent::Move && type != QEvent::Resize) ||
        !watched->isWidgetType() || !isDialog(static_cast<QWidget*>(watched))) {
        return false;
    }
    due_ = true;
    QTimer::singleShot(0, this, &DialogGuard::keepClear);  // a dialog is positioned while it is shown
    return false;
}

void DialogGuard::keepClear() {
    due_ = false;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* const window : windows) {
        if (window->isVisible() && isDialog(window)) {
            moveAway(window);
        }
    }
}

/// From all parts if there is room, else from fewer.
void DialogGuard::moveAway(QWidget* dialog) {
    for (int count = parts_.size(); count > 0; --count) {
        QList<QRect> keepFree;
        for (int i = 0; i < count; ++i) {
            if (const QWidget* const part = parts_[i]) {
                keepFree.append(QRect(part->mapToGlobal(QPoint()), part->size()));
            }
        }
        const QRect room = parts_[0] ? parts_[0]->window()->frameGeometry() : QRect();
        const auto place = placeClearOf(dialog->frameGeometry(), keepFree, room);
        if (place) {
            if (*place != dialog->pos()) {
                dialog->move(*place);
            }
            return;
        }
    }
}

}  // namespace app
