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

/// Faults that can be let into the simulated cell: of the equipment, of a motion, and the ways in which a
/// controller can misbehave.
class FaultList : public QWidget {
    Q_OBJECT
public:
    FaultList(sim::Controller* controller, sim::Cell* cell, QWidget* parent = nullptr);

signals:
    /// How many faults there are now.
    void countChanged(int count);

protected:
    /// Labels follow the port assignment of the moment.
    void showEvent(QShowEvent* event) override;

private:
    struct Fault {
        QString caption;
        QString signalName;  ///< of the equipment; empty when it has none
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
