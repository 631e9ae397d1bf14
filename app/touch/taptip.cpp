#include "app/touch/taptip.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QToolTip>

namespace app {

namespace {

/// The text for a place of a widget where a tap has no other effect; empty at other places and
/// where the widget has no tip.
QString tipAt(const QWidget* widget, const QPoint& place) {
    const auto* const view = qobject_cast<const QAbstractItemView*>(widget->parentWidget());
    if (view && view->viewport() == widget) {
        return view->indexAt(place).data(Qt::ToolTipRole).toString();
    }
    if (widget->isEnabled() && !qobject_cast<const QLabel*>(widget)) {
        return {};
    }
    return widget->toolTip();
}

}  // namespace

TapTip::TapTip(QObject* parent) : QObject(parent) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool TapTip::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease && watched->isWidgetType()) {
        auto* const widget = static_cast<QWidget*>(watched);
        const auto* const mouse = static_cast<QMouseEvent*>(event);
        const QString tip = widget->rect().contains(mouse->pos()) ? tipAt(widget, mouse->pos()) : QString();
        if (!tip.isEmpty()) {
            QToolTip::showText(mouse->globalPos(), tip, widget);
        }
    }
    return false;
}

}  // namespace app
