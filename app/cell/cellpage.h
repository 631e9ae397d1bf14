#pragma once

#include <QFrame>
#include <QStringList>

class QScrollArea;
class QStackedWidget;

namespace sim {
class Cell;
class Controller;
}  // namespace sim

namespace app {

class FaultList;
class LinkWatch;
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

/// Inputs, outputs and faults of the simulated cell, and the speed of its time. Of a controller or device
/// that is not simulated also the link; then time runs as it does there, and there are only the faults that
/// have an effect.
class CellPage : public QFrame {
    Q_OBJECT
public:
    /// Make it after the package's page.
    CellPage(sim::Controller* controller, sim::Cell* cell, const LinkWatch* links, QWidget* parent = nullptr);

signals:
    /// The operator has chosen a speed, as a multiple of the wall clock.
    void speedChosen(double factor);

protected:
    void changeEvent(QEvent* event) override;

private:
    QScrollArea* addPage(const QString& tab);
    FaultList* addFaults(sim::Controller* controller, sim::Cell* cell);
    void showFaults(int count);
    void fit();

    QStackedWidget* pages_;
    QStringList captions_;
    SegmentedControl* tabs_ = nullptr;
};

}  // namespace app
