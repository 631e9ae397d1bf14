#pragma once

#include <QFrame>

class QScrollArea;
class QStackedWidget;

namespace sim {
class Cell;
class Controller;
}  // namespace sim

namespace app {

/// The simulated cell at hand, a strip as wide as a hand: its inputs, its outputs, and its faults.
class CellStrip : public QFrame {
    Q_OBJECT
public:
    static constexpr int fullWidth = 280;

    /// The package's page has been made.
    CellStrip(sim::Controller* controller, sim::Cell* cell, QWidget* parent = nullptr);

signals:
    /// How many times as fast as the wall clock the cell is to run.
    void speedChosen(double factor);

private:
    QScrollArea* addPage();

    QStackedWidget* pages_;
};

}  // namespace app
