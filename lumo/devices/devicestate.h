#pragma once

#include "devices/signlabel.h"
#include "program/ports.h"

namespace lumo {

/// The state of a safety lock or a device in words, below its button: "Armed. Tap to lock", "Off".
class DeviceState final : public SignLabel {
    Q_OBJECT
public:
    explicit DeviceState(I_PORT port, QWidget* parent = nullptr);

    [[nodiscard]] I_PORT port() const { return port_; }
    /// Reads the port.
    void refresh();

private:
    const I_PORT port_;
};

}  // namespace lumo
