#include "app/startsteps.h"

#include "app/panelwindow.h"

#include <utility>

namespace app {

namespace {
constexpr int unpaintedMs = 1000;
}

StartSteps::StartSteps(PanelWindow* window, std::vector<std::function<bool()>> steps)
    : window_(window), steps_(std::move(steps)) {
    unpainted_.setSingleShot(true);
    unpainted_.setInterval(unpaintedMs);
    connect(&unpainted_, &QTimer::timeout, this, &StartSteps::takeNext);
    connect(window, &PanelWindow::painted, this, &StartSteps::takeNext, Qt::QueuedConnection);
    unpainted_.start();
}

void StartSteps::takeNext() {
    unpainted_.stop();
    if (next_ >= steps_.size()) {
        return;
    }
    const bool goesOn = steps_[next_++]();
    if (!goesOn) {
        next_ = steps_.size();
    } else if (next_ < steps_.size()) {
        window_->tellNextPaint();
        unpainted_.start();
    }
}

}  // namespace app
