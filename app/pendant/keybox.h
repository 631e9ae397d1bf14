#pragma once

#include <QHash>
#include <QWidget>

namespace sim {
class Controller;
}

namespace app {

class HoldButton;

/// The keys of the end tool: reports each press and release as the tool does, so that short and long
/// presses are told apart by whoever listens. F1 to F5 are these keys too, in whatever window the
/// keyboard is.
class KeyBox : public QWidget {
    Q_OBJECT
public:
    explicit KeyBox(sim::Controller* controller, QWidget* parent = nullptr);

    /// The application's events, for the function keys.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QHash<int, HoldButton*> byFunctionKey_;
};

}  // namespace app
