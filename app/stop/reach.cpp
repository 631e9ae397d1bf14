#include "app/stop/reach.h"

#include <private/qguiapplication_p.h>
#include <qpa/qwindowsysteminterface_p.h>
#include <QApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QWidget>
#include <QWindow>

namespace app {

namespace {

using System = QWindowSystemInterfacePrivate;

constexpr int mouseId = -1;

/// What the mouse or a finger does.
struct Touch {
    const QWindow* window;
    QPointF place;  ///< on the screen
    QEvent::Type type;
    int id;  ///< of the finger
};

QEvent::Type typeOf(Qt::TouchPointState state) {
    switch (state) {
        case Qt::TouchPointPressed:
            return QEvent::MouseButtonPress;
        case Qt::TouchPointReleased:
            return QEvent::MouseButtonRelease;
        default:
            return QEvent::MouseMove;
    }
}

QVector<Touch> touchesOf(const System::WindowSystemEvent* event) {
    QVector<Touch> touches;
    if (event->type == System::Mouse) {
        const auto* mouse = static_cast<const System::MouseEvent*>(event);
        if (mouse->buttonType == QEvent::MouseMove || mouse->button == Qt::LeftButton) {
            touches.append({mouse->window, mouse->globalPos, mouse->buttonType, mouseId});
        }
    } else if (event->type == System::Touch) {
        const auto* fingers = static_cast<const System::TouchEvent*>(event);
        for (const QTouchEvent::TouchPoint& point : fingers->points) {
            touches.append({fingers->window, point.screenPos(), typeOf(point.state()), point.id()});
        }
    }
    return touches;
}

/// The window system takes the fingers away, without telling of their release.
bool isCancelled(const System::WindowSystemEvent* event) {
    return event->type == System::Touch &&
           static_cast<const System::TouchEvent*>(event)->touchType == QEvent::TouchCancel;
}

/// Whether Qt would not deliver a press there to the part, which lies uncovered under it.
bool isLost(const Touch& touch, const QWidget* part, Reach::Through through) {
    const QWidget* const list = QApplication::activePopupWidget();
    if (list) {
        return through == Reach::Through::DialogsAndLists &&
               !list->geometry().contains(touch.place.toPoint());
    }
    QWindow* const window = part->window()->windowHandle();
    return touch.window == window && QGuiApplicationPrivate::instance()->isWindowBlocked(window);
}

}  // namespace

/// Sees the events of the window system before Qt decides which window is blocked.
class Reach::Handler : public QWindowSystemEventHandler {
public:
    bool sendEvent(System::WindowSystemEvent* event) override {
        if (isCancelled(event) && held_ && heldBy_ != mouseId) {
            letGo();
        }
        const QVector<Touch> touches = touchesOf(event);
        for (const Touch& touch : touches) {
            follow(touch);
        }
        return QWindowSystemEventHandler::sendEvent(event);
    }

    void add(QWidget* part, Through through) { parts_.append({part, through}); }

private:
    struct Part {
        QPointer<QWidget> widget;
        Through through;
    };

    void follow(const Touch& touch) {
        if (touch.type == QEvent::MouseButtonPress) {
            press(touch);
        } else if (held_ && touch.id == heldBy_) {
            send(held_, touch);
            if (touch.type == QEvent::MouseButtonRelease) {
                held_ = nullptr;
            }
        }
    }

    void press(const Touch& touch) {
        for (const Part& part : qAsConst(parts_)) {
            if (!part.widget || !part.widget->isVisible() || !isLost(touch, part.widget, part.through)) {
                continue;
            }
            const QPoint place = part.widget->mapFromGlobal(touch.place.toPoint());
            if (!part.widget->rect().contains(place)) {
                continue;
            }
            QWidget* const inner = part.widget->childAt(place);
            take(inner ? inner : part.widget.data(), touch, part.through);
            return;
        }
    }

    /// A second finger presses Stop or emergency stop only.
    void take(QWidget* widget, const Touch& touch, Through through) {
        if (!held_) {
            held_ = widget;
            heldBy_ = touch.id;
            send(widget, touch);
        } else if (through == Through::DialogsAndLists) {
            send(widget, touch);
            send(widget, {touch.window, touch.place, QEvent::MouseButtonRelease, touch.id});
        }
    }

    /// As a finger that leaves the widget before it is lifted, which presses nothing.
    void letGo() {
        const QPointer<QWidget> widget = held_;
        held_ = nullptr;
        for (const QEvent::Type type : {QEvent::MouseMove, QEvent::MouseButtonRelease}) {
            if (widget) {
                send(widget, {nullptr, widget->mapToGlobal(QPoint(-1, -1)), type, heldBy_});
            }
        }
    }

    static void send(QWidget* widget, const Touch& touch) {
        const bool isUp = touch.type == QEvent::MouseButtonRelease;
        const Qt::MouseButton button = touch.type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(touch.type, widget->mapFromGlobal(touch.place.toPoint()), touch.place, button,
                          isUp ? Qt::NoButton : Qt::LeftButton, QApplication::keyboardModifiers());
        QApplication::sendEvent(widget, &event);
    }

    QVector<Part> parts_;
    QPointer<QWidget> held_;  ///< has got a press, and gets what follows
    int heldBy_ = mouseId;
};

Reach::Reach() : handler_(std::make_unique<Handler>()) {
    QWindowSystemInterfacePrivate::installWindowSystemEventHandler(handler_.get());
}

Reach::~Reach() = default;

void Reach::add(QWidget* part, Through through) {
    handler_->add(part, through);
}

}  // namespace app
