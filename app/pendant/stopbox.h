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

class Choice;
class StopButton;

/// Emergency stop and drive power, which exclude each other: while the stop is latched, what turns it
/// back stands in the place of the drive switch.
class StopBox : public QFrame {
    Q_OBJECT
public:
    explicit StopBox(sim::Controller* controller, QWidget* parent = nullptr);

    /// Side by side, or all in a narrow column.
    void setUnfolded(bool unfolded);
    /// The application's events: an open list takes the presses beside it for itself, but not one on the
    /// stop.
    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// Asks for the rest of the pendant, or for less of it.
    void foldAsked();

private:
    void press();
    void refresh();

    sim::Controller* controller_;
    QBoxLayout* layout_;
    StopButton* stop_;
    QLabel* caption_;
    QStackedWidget* switches_;
    Choice* power_;
    QPushButton* fold_;
};

}  // namespace app
