#include "look/flick.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QEvent>
#include <QHeaderView>
#include <QPlainTextEdit>
#include <QScroller>
#include <QTextEdit>
#include <QVariant>

namespace look {

namespace {

bool isEdited(const QWidget* area) {
    if (const auto* text = qobject_cast<const QTextEdit*>(area)) {
        return !text->isReadOnly();
    }
    const auto* plain = qobject_cast<const QPlainTextEdit*>(area);
    return plain && !plain->isReadOnly();
}

/// Sees each scroll area when it is made ready to be shown.
class Flicking final : public QObject {
public:
    explicit Flicking(QWidget* root) : QObject(root), root_(root) {
        QCoreApplication::instance()->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Polish) {
            auto* const area = qobject_cast<QAbstractScrollArea*>(watched);
            if (area && isInside(area)) {
                letFlick(area);
            }
        }
        return false;
    }

private:
    bool isInside(const QWidget* widget) const {
        while (widget && widget != root_) {
            widget = widget->parentWidget();
        }
        return widget;
    }

    QWidget* root_;
};

}  // namespace

void letFlick(QAbstractScrollArea* area) {
    QWidget* const viewport = area->viewport();
    if (qobject_cast<QHeaderView*>(area) || isEdited(area) || area->property(noFlickProperty).toBool() ||
        QScroller::hasScroller(viewport)) {
        return;
    }
    if (auto* const view = qobject_cast<QAbstractItemView*>(area)) {
        view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    }
    QScroller::grabGesture(viewport, QScroller::LeftMouseButtonGesture);
    QScroller* const scroller = QScroller::scroller(viewport);
    QScrollerProperties properties = scroller->scrollerProperties();
    for (const auto overshoot :
         {QScrollerProperties::HorizontalOvershootPolicy, QScrollerProperties::VerticalOvershootPolicy}) {
        properties.setScrollMetric(overshoot, QScrollerProperties::OvershootAlwaysOff);
    }
    constexpr double startAfterM = 0.004;  // a glove's tap moves by less
    properties.setScrollMetric(QScrollerProperties::DragStartDistance, startAfterM);
    properties.setScrollMetric(QScrollerProperties::FrameRate, QScrollerProperties::Fps60);
    scroller->setScrollerProperties(properties);
}

void letFlickIn(QWidget* root) {
    new Flicking(root);
}

}  // namespace look
