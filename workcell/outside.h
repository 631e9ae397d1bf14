#pragma once

#include "bridge/controller.h"
#include "simulator/controller.h"

#include <QString>

#include <memory>

namespace workcell {

/// As they were given; empty for what is simulated.
struct OutsideNames {
    QString robot, device;
};

/// A robot and an I/O device that are not simulated, loaded by their names (see bridge/plugin.h).
class Outside {
public:
    /// Either name may be empty. False, with the reason in `error`, when one cannot be loaded.
    bool load(const QString& robot, const QString& device, QString* error);
    bool isAny() const { return robot_ || device_; }
    const OutsideNames& names() const { return names_; }
    /// Adds them to the options of a controller that does not outlive this object.
    void addTo(sim::Controller::Options* options) const;

private:
    OutsideNames names_;
    std::unique_ptr<bridge::Controller> robot_;
    std::unique_ptr<bridge::SignalPort> device_;
};

/// Waits in an event loop of its own until the controller's robot and device are reached and, with `power`,
/// until the drives are on: at most ten seconds each. False, with the reason in `error`, when they are not.
bool connectOutside(sim::Controller* controller, bool power, QString* error);

}  // namespace workcell
