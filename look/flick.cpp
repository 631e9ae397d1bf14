#include "look/flick.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPointer>
#include <QScrollBar>
#include <QScroller>
#include <QTextEdit>
#include <QTimer>
#include <QVariant>

#include <utility>

namespace look {

namespace {

constexpr int startAfterPx = 16;  ///< a glove's tap moves by less
constexpr int heldMs = 250;       ///< a press that rests so long drags and selects, as without flicking

bool isEdited(const QWidget* area) {
    if (const auto* text = qobject_cast<const QTextEdit*>(area)) {
        return !text->isReadOnly();
    }
    const auto* plain = qobject_cast<const QPlainTextEdit*>(area);
    return plain && !plain->isReadOnly();
}

bool canScroll(const QScrollBar* bar) {
    return bar->maximum() > bar->minimum();
}

bool mayFlick(const QAbstractScrollArea* area) {
    return !qobject_cast<const QHeaderView*>(area) && !isEdited(area) &&
           !area->property(noFlickProperty).toBool();
}

/// The area whose content a widget is, and that has something to scroll; null without one.
QAbstractScrollArea* areaAround(QWidget* widget) {
    for (QWidget* inner = widget; inner && !inner->isWindow(); inner = inner->parentWidget()) {
        auto* const area = qobject_cast<QAbstractScrollArea*>(inner->parentWidget());
        if (area && area->viewport() == inner && mayFlick(area) &&
            (canScroll(area->verticalScrollBar()) || canScroll(area->horizontalScrollBar()))) {
            return area;
        }
    }
    return nullptr;
}

/// An event is under way that one of these filters made. Package and panel have one each, which see the same
/// events.
constexpr const char* deliveringProperty = "lookFlickDelivers";

bool isDelivering() {
    return QCoreApplication::instance()->property(deliveringProperty).toBool();
}

void setDelivering(bool on) {
    QCoreApplication::instance()->setProperty(deliveringProperty, on);
}

/// Sees each scroll area when it is made ready to be shown, and each press and move of a finger in one. Qt's
/// own recognition of gestures is not used: it keeps what it knows of widgets that a nested event loop
/// deletes.
class Flicking final : public QObject {
public:
    explicit Flicking(QWidget* root) : QObject(root), root_(root) {
        clock_.start();
        wait_.setSingleShot(true);
        connect(&wait_, &QTimer::timeout, this, &Flicking::deliver);
        QCoreApplication::instance()->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        const QEvent::Type type = event->type();
        if (type == QEvent::Polish) {
            auto* const area = qobject_cast<QAbstractScrollArea*>(watched);
            if (area && isInside(area)) {
                letFlick(area);
            }
            return false;
        }
        const bool isFinger = type == QEvent::MouseButtonPress || type == QEvent::MouseMove ||
                              type == QEvent::MouseButtonRelease;
        auto* const widget = isFinger && !isDelivering() ? qobject_cast<QWidget*>(watched) : nullptr;
        return widget && follow(widget, static_cast<QMouseEvent*>(event));
    }

private:
    bool isInside(const QWidget* widget) const {
        while (widget && widget != root_) {
            widget = widget->parentWidget();
        }
        return widget;
    }

    bool follow(QWidget* widget, const QMouseEvent* event) {
        if (event->type() == QEvent::MouseButtonPress) {
            press(widget, event);
            return isHeldBack_;
        }
        if (!area_ || widget != pressed_) {
            return false;
        }
        if (event->type() == QEvent::MouseMove) {
            return move(event);
        }
        const bool dragged = dragging_;
        if (!dragged) {
            deliver();
        } else {
            feed(QScroller::InputRelease, event->globalPos());
        }
        area_ = nullptr;
        dragging_ = false;
        return dragged;
    }

    void press(QWidget* widget, const QMouseEvent* event) {
        dragging_ = false;
        area_ = event->button() == Qt::LeftButton && isInside(widget) ? areaAround(widget) : nullptr;
        pressed_ = widget;
        start_ = event->globalPos();
        inWidget_ = event->localPos();
        modifiers_ = event->modifiers();
        // A list selects at a press: it gets the press when it is known to be no drag.
        isHeldBack_ = area_ && widget == area_->viewport() && qobject_cast<QAbstractItemView*>(area_.data());
        wait_.stop();
        if (area_) {
            wait_.start(heldMs);
        }
        if (area_ && QScroller::hasScroller(area_->viewport())) {
            QScroller::scroller(area_->viewport())->stop();
        }
    }

    bool move(const QMouseEvent* event) {
        if (!dragging_) {
            const QPoint way = event->globalPos() - start_;
            const bool isScroll = (canScroll(area_->verticalScrollBar()) && qAbs(way.y()) > startAfterPx) ||
                                  (canScroll(area_->horizontalScrollBar()) && qAbs(way.x()) > startAfterPx);
            if (!wait_.isActive()) {
                area_ = nullptr;
                return false;
            }
            if (!isScroll) {
                return true;  // nothing is selected by a drag before it is known what it is
            }
            begin();
            if (!area_) {
                return true;
            }
        }
        feed(QScroller::InputMove, event->globalPos());
        return true;
    }

    /// Takes the press back from what was pressed: it lets go outside, which is no click.
    void begin() {
        dragging_ = true;
        wait_.stop();
        if (std::exchange(isHeldBack_, false)) {
            feed(QScroller::InputPress, start_);
            return;
        }
        setDelivering(true);
        constexpr QPoint outside(-10000, -10000);
        QMouseEvent letGo(QEvent::MouseButtonRelease, outside, outside, Qt::LeftButton, Qt::NoButton, {});
        QApplication::sendEvent(pressed_, &letGo);
        setDelivering(false);
        if (area_) {
            feed(QScroller::InputPress, start_);
        }
    }

    /// Lets the widget have a press that was held back.
    void deliver() {
        wait_.stop();
        if (std::exchange(isHeldBack_, false) && pressed_) {
            setDelivering(true);
            QMouseEvent press(QEvent::MouseButtonPress, inWidget_, start_, Qt::LeftButton, Qt::LeftButton,
                              modifiers_);
            QApplication::sendEvent(pressed_, &press);
            setDelivering(false);
        }
    }

    void feed(QScroller::Input input, const QPoint& globalPlace) {
        QWidget* const viewport = area_->viewport();
        QScroller::scroller(viewport)->handleInput(input, viewport->mapFromGlobal(globalPlace),
                                                   clock_.elapsed());
    }

    QWidget* root_;
    QElapsedTimer clock_;                 ///< the scroller takes its speed from real time
    QPointer<QAbstractScrollArea> area_;  ///< in which the finger is; null: it does not flick
    QPointer<QWidget> pressed_;
    QPoint start_;
    QPointF inWidget_;
    Qt::KeyboardModifiers modifiers_;
    QTimer wait_;              ///< runs from the press; a finger that moves later does not scroll
    bool isHeldBack_ = false;  ///< the widget has not got the press yet
    bool dragging_ = false;
};

}  // namespace

void letFlick(QAbstractScrollArea* area) {
    if (!mayFlick(area) || QScroller::hasScroller(area->viewport())) {
        return;
    }
    if (auto* const view = qobject_cast<QAbstractItemView*>(area)) {
        view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    }
    QScroller* const scroller = QScroller::scroller(area->viewport());
    QScrollerProperties properties = scroller->scrollerProperties();
    for (const auto overshoot :
         {QScrollerProperties::HorizontalOvershootPolicy, QScrollerProperties::VerticalOvershootPolicy}) {
        properties.setScrollMetric(overshoot, QScrollerProperties::OvershootAlwaysOff);
    }
    properties.setScrollMetric(QScrollerProperties::DragStartDistance, 0.0);
    properties.setScrollMetric(QScrollerProperties::FrameRate, QScrollerProperties::Fps60);
    scroller->setScrollerProperties(properties);
}

void letFlickIn(QWidget* root) {
    new Flicking(root);
}

}  // namespace look
