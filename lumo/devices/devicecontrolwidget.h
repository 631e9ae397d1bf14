#pragma once

#include "program/ports.h"

#include <QPair>
#include <QVector>
#include <QWidget>

#include <memory>
#include <optional>
#include <vector>

class QDoubleSpinBox;
class QLabel;

namespace Ui {
class DeviceControlWidget;
}

namespace lumo {
class DeviceButton;
class DeviceCard;
class DeviceState;
class SetPoint;
}  // namespace lumo

/// The page on which the operator switches laser, red pilot light, gas and wire. A device's button is enabled
/// while the output of its safety lock is on.
///
/// The page shows the outputs as they are read every 160 ms, and keeps no state of them. It does not look at
/// the executor: the last write counts, by the page or by a program. Leaving or deleting the page leaves the
/// outputs as they are. equipment/handlit.h records what the page switched on, so that it goes off at a loss
/// of power, a start, a single step and the application's end.
///
/// Its cards are laid out when it is first shown.
class DeviceControlWidget final : public QWidget {
    Q_OBJECT
public:
    explicit DeviceControlWidget(QWidget* parent = nullptr);
    ~DeviceControlWidget() override;

    /// Updates which buttons are enabled, their colours, and, while the page is visible, the states in words.
    void refresh();
    /// Moves the focus from the fields to a title.
    void testNofocus();

protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    struct Device {
        lumo::DeviceButton* button;
        prog::Device ports;
        bool coloured;  ///< the colour of the button shows whether it is on
        /// Analogue outputs that are written after each switching, in their order, and their fields in
        /// percent.
        QVector<QPair<I_PORT, QDoubleSpinBox*>> setPoints;
    };
    struct Lock {
        lumo::DeviceButton* button;
        const Device* device;  ///< is switched off before the lock is released
    };
    /// A card, its device and what shows their states.
    struct Group {
        lumo::DeviceCard* card;
        prog::Device ports;
        std::vector<lumo::SetPoint*> setPoints;
        std::vector<lumo::DeviceState*> states;
    };
    struct SetPointRow {
        I_PORT output;
        QLabel* caption;
        QDoubleSpinBox* field;
    };
    struct ButtonRow {
        lumo::DeviceButton* button;
        I_PORT port;
        const char* icon;
    };

    void fillTables();
    void layOut();
    void makeCard(lumo::DeviceCard* card, QLabel* title, const char* icon,
                  const std::vector<SetPointRow>& setPoints, const std::vector<ButtonRow>& buttons);
    void placeCards();
    void refreshLocks();
    void refreshCard(const Group& group);
    [[nodiscard]] QString laserDetail() const;
    [[nodiscard]] bool areTaken(const Device& device) const;
    void pressLock(const Lock& lock);
    void pressDevice(const Device& device);

    const std::unique_ptr<Ui::DeviceControlWidget> ui_;
    std::vector<Device> devices_;
    std::vector<Lock> locks_;
    std::vector<Group> groups_;           ///< empty before the page is first shown
    std::optional<qint64> laserSinceMs_;  ///< on the host's clock; since when it is seen to be on
};
