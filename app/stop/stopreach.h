#pragma once

#include <QList>
#include <QPointer>

#include <memory>

namespace app {

class RunStopButton;

/// Lets a press reach the Stop buttons where Qt would swallow it: while a dialog blocks the panel's window,
/// or while a list or menu is open. Only one object at a time.
class StopReach {
public:
    StopReach();
    ~StopReach();

    void add(RunStopButton* button);

private:
    class Handler;
    std::unique_ptr<Handler> handler_;
};

}  // namespace app
