#pragma once

#include <QHash>
#include <QWidget>

class QPushButton;
class QVBoxLayout;

namespace sim {
class Cell;
class Controller;
}  // namespace sim

namespace app {

/// Buttons that put faults into the simulated cell: of the equipment, of a motion, and quirks of the
/// controller.
class FaultList : public QWidget {
    Q_OBJECT
public:
    FaultList(sim::Controller* controller, sim::Cell* cell, QWidget* parent = nullptr);

signals:
    /// Number of active faults.
    void countChanged(int count);

protected:
    /// Updates the labels from the port assignment.
    void showEvent(QShowEvent* event) override;

private:
    struct Fault {
        QString caption;
        QString signalName;  ///< input of the equipment; empty for quirks
    };
    void addHeading(const QString& text);
    QPushButton* addButton(const QString& name);
    QPushButton* addFault(const QString& name, const Fault& fault);
    void addEquipment(sim::Cell* cell);
    void addQuirks(sim::Controller* controller);
    void refresh();
    void clearAll();

    QVBoxLayout* column_;
    QHash<QPushButton*, Fault> faults_;
    QPushButton* clear_ = nullptr;
};

}  // namespace app
