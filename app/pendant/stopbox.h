#pragma once

#include <QFrame>

class QBoxLayout;
class QLabel;
class QPushButton;
class QStackedWidget;

namespace sim {
class Controller;
}

namespace app {

class SegmentedControl;
class StopButton;

/// Emergency stop and drive power. While the stop is latched, its release button replaces the power switch.
class StopBox : public QFrame {
    Q_OBJECT
public:
    explicit StopBox(sim::Controller* controller, QWidget* parent = nullptr);

    /// Unfolded: side by side; folded: in a narrow column.
    void setUnfolded(bool unfolded);
    /// Filters the application's events: an open popup would swallow a press on the emergency stop.
    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// The operator wants to fold or unfold the pendant.
    void foldAsked();

private:
    void press();
    void refresh();

    sim::Controller* controller_;
    QBoxLayout* layout_;
    StopButton* stop_;
    QLabel* caption_;
    QStackedWidget* switches_;
    SegmentedControl* power_;
    QPushButton* fold_;
};

}  // namespace app
