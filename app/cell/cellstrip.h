#pragma once

#include <QFrame>

class QScrollArea;
class QStackedWidget;

namespace sim {
class Cell;
class Controller;
}  // namespace sim

namespace app {

class SegmentedControl;

/// Buttons for the speed of the cell's time, as a multiple of the wall clock.
class SpeedBox : public QFrame {
    Q_OBJECT
public:
    explicit SpeedBox(QWidget* parent = nullptr);

signals:
    void chosen(double factor);

private:
    SegmentedControl* choice_;
};

/// The strip on the right with inputs, outputs and faults of the simulated cell.
class CellStrip : public QFrame {
    Q_OBJECT
public:
    static constexpr int fullWidth = 280;

    /// Make it after the package's page.
    CellStrip(sim::Controller* controller, sim::Cell* cell, QWidget* parent = nullptr);

signals:
    /// The operator has chosen a speed, as a multiple of the wall clock.
    void speedChosen(double factor);

private:
    QScrollArea* addPage();

    QStackedWidget* pages_;
};

}  // namespace app
