#pragma once

#include "equipment/ports.h"

#include <QPair>
#include <QVector>
#include <QWidget>

#include <memory>
#include <vector>

class QDoubleSpinBox;
class QPushButton;

namespace Ui {
class DeviceControlWidget;
}

/// The page that works laser, red pilot light, gas and wire by hand. A device's button works while the
/// output of its safety lock is on.
///
/// What it shows comes from the outputs, every 160 ms; it keeps no state. It does not look at the
/// executor: an output has what was written last, by the page or by a program. Leaving the page, or its end,
/// leaves the outputs as they are: what the page switched on is on a record that outlives it
/// (devices/handlit.h), by which a loss of power, a start, a single step and the application's end switch it
/// off.
class DeviceControlWidget final : public QWidget {
    Q_OBJECT
public:
    explicit DeviceControlWidget(QWidget* parent = nullptr);
    ~DeviceControlWidget() override;

    /// Brings what the buttons allow and their colours up to date.
    void refresh();
    /// Gives the focus to a title, so that no field begins with it.
    void testNofocus();

private:
    /// A device that is switched by a button while its lock is on.
    struct Device {
        QPushButton* button;
        I_PORT output;
        I_PORT lock;
        bool coloured;  ///< shows by its colour whether it is on
        /// Analogue outputs that follow each switching, in their order, and the fields in percent.
        QVector<QPair<I_PORT, QDoubleSpinBox*>> setPoints;
    };
    /// A lock, and the device that is switched off before it is released.
    struct Lock {
        QPushButton* button;
        I_PORT output;
        const Device* device;
    };

    void fillTables();
    void pressLock(const Lock& lock);
    void pressDevice(const Device& device);

    const std::unique_ptr<Ui::DeviceControlWidget> ui_;
    std::vector<Device> devices_;
    std::vector<Lock> locks_;
};
