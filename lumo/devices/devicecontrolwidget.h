#pragma once

#include "program/ports.h"

#include <QPair>
#include <QVector>
#include <QWidget>

#include <memory>
#include <vector>

class QDoubleSpinBox;
class QPushButton;

namespace lumo {
class FieldAnswer;
}

namespace Ui {
class DeviceControlWidget;
}

namespace lumo {
class DeviceState;
}

/// The page on which the operator switches laser, red pilot light, gas and wire. A device's button is enabled
/// while the output of its safety lock is on.
///
/// The page shows the outputs as they are read every 160 ms, and keeps no state. It does not look at the
/// executor: the last write counts, by the page or by a program. Leaving or deleting the page leaves the
/// outputs as they are. equipment/handlit.h records what the page switched on, so that it goes off at a loss
/// of power, a start, a single step and the application's end.
class DeviceControlWidget final : public QWidget {
    Q_OBJECT
public:
    explicit DeviceControlWidget(QWidget* parent = nullptr);
    ~DeviceControlWidget() override;

    /// Updates which buttons are enabled, their colours, and the states in words.
    void refresh();
    /// Moves the focus from the fields to a title.
    void testNofocus();

private:
    struct Device {
        QPushButton* button;
        prog::Device ports;
        bool coloured;  ///< the colour of the button shows whether it is on
        /// Analogue outputs that are written after each switching, in their order, and their fields in
        /// percent.
        QVector<QPair<I_PORT, QDoubleSpinBox*>> setPoints;
    };
    struct Lock {
        QPushButton* button;
        const Device* device;  ///< is switched off before the lock is released
    };

    /// What stands beside the buttons of one group.
    struct Group {
        std::vector<lumo::DeviceState*> states;
        QPushButton* toPorts = nullptr;  ///< shown while a port of the group is out of use
    };

    void fillTables();
    void addStates();
    void answerFields();
    [[nodiscard]] bool areTaken(const Device& device) const;
    void pressLock(const Lock& lock);
    void pressDevice(const Device& device);

    const std::unique_ptr<Ui::DeviceControlWidget> ui_;
    std::vector<Device> devices_;
    std::vector<Lock> locks_;
    std::vector<Group> groups_;
    QVector<lumo::FieldAnswer*> answers_;  ///< of all set points
};
