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

/// Inputs, outputs and faults of the simulated cell, and the speed of its time.
class CellPage : public QFrame {
    Q_OBJECT
public:
    /// Make it after the package's page.
    CellPage(sim::Controller* controller, sim::Cell* cell, QWidget* parent = nullptr);

signals:
    /// The operator has chosen a speed, as a multiple of the wall clock.
    void speedChosen(double factor);

protected:
    void changeEvent(QEvent* event) override;

private:
    QScrollArea* addPage();
    void fit();

    QStackedWidget* pages_;
};

}  // namespace app
