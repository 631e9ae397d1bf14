#include "tools/pictures/judge.h"

#include "tools/pictures/colours.h"
#include "tools/pictures/texts.h"

#include <QAbstractScrollArea>
#include <QRegion>
#include <QScrollBar>
#include <QSizeGrip>
#include <QVariant>
#include <QWidget>

namespace pictures {

namespace {

/// Antialiased edges of neighbours may share a pixel.
constexpr int sharedPx = 1;

QWidgetList shownChildren(const QWidget& parent) {
    QWidgetList shown;
    for (QObject* child : parent.children()) {
        auto* widget = qobject_cast<QWidget*>(child);
        if (widget && !widget->isWindow() && widget->isVisible() && !widget->geometry().isEmpty()) {
            shown << widget;
        }
    }
    return shown;
}

/// A sheet, its veil, or what else is meant to lie over its neighbours.
bool mayCover(const QWidget& widget) {
    return widget.inherits("app::Sheet") || widget.property("covers").toBool() ||
           qobject_cast<const QSizeGrip*>(&widget) || widget.testAttribute(Qt::WA_TransparentForMouseEvents);
}

/// The scroll area whose viewport this is, null for other widgets.
const QAbstractScrollArea* areaOf(const QWidget& viewport) {
    const auto* area = qobject_cast<const QAbstractScrollArea*>(viewport.parentWidget());
    return area && area->viewport() == &viewport ? area : nullptr;
}

/// By how much a child may stand out of its parent: in a direction that can be scrolled by any amount.
QRect roomIn(const QWidget& parent) {
    QRect room = parent.rect();
    if (const QAbstractScrollArea* area = areaOf(parent)) {
        constexpr int anyPx = 1 << 20;
        if (area->verticalScrollBar()->maximum() > area->verticalScrollBar()->minimum()) {
            room.adjust(0, -anyPx, 0, anyPx);
        }
        if (area->horizontalScrollBar()->maximum() > area->horizontalScrollBar()->minimum()) {
            room.adjust(-anyPx, 0, anyPx, 0);
        }
    }
    return room;
}

void judgePlaces(const QWidget& parent, QStringList* faults) {
    const QWidgetList children = shownChildren(parent);
    const QRect room = roomIn(parent).adjusted(-sharedPx, -sharedPx, sharedPx, sharedPx);
    for (int i = 0; i < children.size(); ++i) {
        const QWidget& child = *children.at(i);
        if (!room.contains(child.geometry()) && !mayCover(child)) {
            *faults << QStringLiteral("%1 stands out of %2").arg(nameOf(child), nameOf(parent));
        }
        for (int j = i + 1; j < children.size(); ++j) {
            const QWidget& other = *children.at(j);
            const QRect shared = child.geometry() & other.geometry();
            const bool overlap = shared.width() > sharedPx && shared.height() > sharedPx;
            if (overlap && !mayCover(child) && !mayCover(other)) {
                *faults << QStringLiteral("%1 and %2 overlap").arg(nameOf(child), nameOf(other));
            }
        }
    }
}

void judgeAll(const QWidget& window, const QWidget& widget, const QImage& picture, QStringList* faults) {
    judgePlaces(widget, faults);
    const QString cut = cutText(widget);
    if (!cut.isEmpty()) {
        *faults << QStringLiteral("%1 is too small for \"%2\"").arg(nameOf(widget), cut);
    }
    if (const double contrast = faintContrast(window, widget, picture); contrast > 0) {
        *faults << QStringLiteral("%1 has a contrast of %2").arg(nameOf(widget)).arg(contrast, 0, 'f', 2);
    }
    const QWidgetList children = shownChildren(widget);
    for (const QWidget* child : children) {
        judgeAll(window, *child, picture, faults);
    }
}

}  // namespace

QStringList faultsOf(const QWidget& window, const QImage& picture) {
    QStringList faults;
    judgeAll(window, window, picture, &faults);
    faults += pureColours(window, picture);
    faults.removeDuplicates();
    return faults;
}

}  // namespace pictures
