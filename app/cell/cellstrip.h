#pragma once

#include <QFrame>

class QStackedWidget;

namespace sim {
class Controller;
}

namespace app {

/// The simulated cell at hand, a strip as wide as a hand: the robot with its drive, pendant keys and
/// jog, the inputs, and the outputs.
class CellStrip : public QFrame {
    Q_OBJECT
public:
    static constexpr int kWidth = 280;

    /// The package's page has been made.
    explicit CellStrip(sim::Controller* controller, QWidget* parent = nullptr);

private:
    void addPage(QWidget* page);

    QStackedWidget* pages_;
};

}  // namespace app
