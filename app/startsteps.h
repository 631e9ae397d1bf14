#pragma once

#include <QObject>
#include <QTimer>

#include <functional>
#include <vector>

namespace app {

class PanelWindow;

/// The parts of the panel's start that come behind a paint each, so that the frame and the page are on the
/// screen early. A window that is not painted, because it is minimised or hidden, waits for a second instead.
class StartSteps : public QObject {
    Q_OBJECT
public:
    /// A step that returns false is the last. Begins with the window's first paint, or a second from now.
    StartSteps(PanelWindow* window, std::vector<std::function<bool()>> steps);

private:
    void takeNext();

    PanelWindow* window_;
    std::vector<std::function<bool()>> steps_;
    std::size_t next_ = 0;
    QTimer unpainted_;
};

}  // namespace app
