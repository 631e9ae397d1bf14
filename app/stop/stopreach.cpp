#include "app/stop/stopreach.h"

#include "app/stop/runstopbutton.h"

#include <private/qguiapplication_p.h>
#include <qpa/qwindowsysteminterface_p.h>
#include <QApplication>
#include <QWindow>

namespace app {

namespace {

using System = QWindowSystemInterfacePrivate;

/// A place pressed by mouse or finger.
struct Press {
    const QWindow* window;
    QPoint place;  ///< on the screen
};

QVector<Press> pressesOf(const System::WindowSystemEvent* event) {
    QVector<Press> presses;
    if (event->type == System::Mouse) {
        const auto* mouse = static_cast<const System::MouseEvent*>(event);
        if (mouse->buttonType == QEvent::MouseButtonPress) {
            presses.append({mouse->window, mouse->globalPos.toPoint()});
        }
    } else if (event->type == System::Touch) {
        const auto* touch = static_cast<const System::TouchEvent*>(event);
        for (const QTouchEvent::TouchPoint& point : touch->points) {
            if (point.state() == Qt::TouchPointPressed) {
                presses.append({touch->window, point.screenPos().toPoint()});
            }
        }
    }
    return presses;
}

/// Whether Qt would not deliver the press to the button, which lies uncovered under it.
bool isLost(const Press& press, const RunStopButton* button) {
    const QWidget* const list = QApplication::activePopupWidget();
    if (list) {
        return !list->geometry().contains(press.place);
    }
    QWindow* const window = button->window()->windowHandle();
    return press.window == window && QGuiApplicationPrivate::instance()->isWindowBlocked(window);
}

}  // namespace

/// Sees the events of the window system before Qt decides which window is blocked.
class StopReach::Handler : public QWindowSystemEventHandler {
public:
    bool sendEvent(System::WindowSystemEvent* event) override {
        for (const Press& press : pressesOf(event)) {
            onPress(press);
        }
        return QWindowSystemEventHandler::sendEvent(event);
    }

    QList<QPointer<RunStopButton>> buttons;

private:
    void onPress(const Press& press) const {
        for (const QPointer<RunStopButton>& button : buttons) {
            if (button && button->isVisible() &&
                button->rect().contains(button->mapFromGlobal(press.place)) && isLost(press, button)) {
                button->animateClick();  // emits pressed() at once
            }
        }
    }
};

StopReach::StopReach() : handler_(std::make_unique<Handler>()) {
    QWindowSystemInterfacePrivate::installWindowSystemEventHandler(handler_.get());
}

StopReach::~StopReach() = default;

void StopReach::add(RunStopButton* button) {
    handler_->buttons.append(button);
}

}  // namespace app
