#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

namespace sim {
class Controller;
}

namespace app {

class SegmentedControl;
class StopButton;

/// Emergency stop and drive power, one below the other. While the stop is latched, its release button takes
/// the place of the power switch. F12 and Pause stop in every window, also while a dialog blocks this one.
class StopBox : public QWidget {
    Q_OBJECT
public:
    explicit StopBox(sim::Controller* controller, QWidget* parent = nullptr);

    StopButton* button() const { return stop_; }
    /// Gives the keyboard to the power switch or the release button.
    void takeFocus();
    /// Filters the application's events for the keys: no shortcut is delivered to a blocked window.
    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void changeEvent(QEvent* event) override;

private:
    void press();
    void refresh();
    void fit();

    sim::Controller* controller_;
    StopButton* stop_;
    QLabel* caption_;
    SegmentedControl* power_;
    QPushButton* release_;
};

}  // namespace app
