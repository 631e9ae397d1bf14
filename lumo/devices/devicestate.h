#pragma once

#include "program/ports.h"

#include <QLabel>

namespace lumo {

/// The state of a safety lock or a device in words, below its button: "Armed", "Locked", "◆ Laser on", "Off".
/// Says so when the port is out of use.
class DeviceState final : public QLabel {
    Q_OBJECT
public:
    explicit DeviceState(I_PORT port, QWidget* parent = nullptr);

    [[nodiscard]] I_PORT port() const { return port_; }
    void refresh();

private:
    const I_PORT port_;
};

}  // namespace lumo
