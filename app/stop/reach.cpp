#include "app/stop/reach.h"

#include <private/qguiapplication_p.h>
#include <qpa/qwindowsysteminterface_p.h>
#include <QApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QWidget>
#include <QWindow>

#include <optional>

namespace app {

namespace {

using System = QWindowSystemInterfacePrivate;

/// What mouse or first finger does.
struct Touch {
    const QWindow* window;
    QPointF place;  ///< on the screen
    QEvent::Type type;
};

std::optional<Touch> touchOf(const System::WindowSystemEvent* event) {
    if (event->type == System::Mouse) {
        const auto* mouse = static_cast<const System::MouseEvent*>(event);
        const bool isLeft = mouse->buttonType == QEvent::MouseMove || mouse->button == Qt::LeftButton;
        return isLeft ? std::optional<Touch>({mouse->window, mouse->globalPos, mouse->buttonType})
                      : std::nullopt;
    }
    if (event->type != System::Touch) {
        return std::nullopt;
    }
    const auto* fingers = static_cast<const System::TouchEvent*>(event);
    if (fingers->points.isEmpty()) {
        return std::nullopt;
    }
    const QTouchEvent::TouchPoint& first = fingers->points.first();
    const QEvent::Type type = first.state() == Qt::TouchPointPressed    ? QEvent::MouseButtonPress
                              : first.state() == Qt::TouchPointReleased ? QEvent::MouseButtonRelease
                                                                        : QEvent::MouseMove;
    return Touch{fingers->window, first.screenPos(), type};
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
        if (const auto touch = touchOf(event)) {
            follow(*touch);
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
        } else if (held_) {
            send(held_, touch);
        }
        if (touch.type == QEvent::MouseButtonRelease) {
            held_ = nullptr;
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
            held_ = inner ? inner : part.widget.data();
            send(held_, touch);
            return;
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
    QPointer<QWidget> held_;  ///< has got the press, and gets what follows
};

Reach::Reach() : handler_(std::make_unique<Handler>()) {
    QWindowSystemInterfacePrivate::installWindowSystemEventHandler(handler_.get());
}

Reach::~Reach() = default;

void Reach::add(QWidget* part, Through through) {
    handler_->add(part, through);
}

}  // namespace app
