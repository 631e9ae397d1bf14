#pragma once

#include <QHash>
#include <QWidget>

namespace sim {
class Controller;
}

namespace app {

class HoldButton;

/// The keys of the end tool. Each press and release is reported separately, as the tool does, so that the
/// package can tell short from long presses. F11 and F2 to F5 act as these keys in every window.
class KeyBox : public QWidget {
    Q_OBJECT
public:
    explicit KeyBox(sim::Controller* controller, QWidget* parent = nullptr);

    /// Filters the application's events for the function keys.
    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void changeEvent(QEvent* event) override;

private:
    void fit();

    QHash<int, HoldButton*> byFunctionKey_;
};

}  // namespace app
