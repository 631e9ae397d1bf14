#pragma once

#include <QHash>
#include <QVector>
#include <QWidget>

class QPushButton;
class QVBoxLayout;

namespace sim {
class Cell;
class Controller;
}  // namespace sim

namespace app {

/// Buttons that put faults into the simulated cell: of the equipment, of a motion, and quirks of the
/// controller. Only what is simulated has faults: the equipment where its inputs are, the rest with the
/// robot.
class FaultList : public QWidget {
    Q_OBJECT
public:
    /// Whether there is any fault to offer.
    static bool isOffered(const sim::Controller& controller);
    /// The equipment whose faults have an effect, by its positions in sim::Cell::equipment().
    static QVector<int> equipmentOf(const sim::Controller& controller);
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
    void addEquipment(sim::Cell* cell, const QVector<int>& pieces);
    void addMotion(sim::Controller* controller);
    void addQuirks(sim::Controller* controller);
    void refresh();
    void clearAll();

    QVBoxLayout* column_;
    QHash<QPushButton*, Fault> faults_;
    QPushButton* clear_ = nullptr;
};

}  // namespace app
