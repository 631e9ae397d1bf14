#pragma once

#include "bridge/controller.h"

#include <QString>

#include <memory>

namespace bridge {

/// A controller, or an I/O device, as it is named on a command line: "NAME", "NAME:ARGUMENT" or
/// "FILE.so:ARGUMENT". A name stands for the library lumo-NAME.so beside this one, in its folder `bridges`,
/// or in the folder that the environment variable LUMO_BRIDGES names. The argument is the backend's own: a
/// file, an address.
///
/// Null, with the reason in `error`, where there is no such library or it cannot be used. The libraries stay
/// loaded.
std::unique_ptr<Controller> loadController(const QString& name, QString* error);
std::unique_ptr<SignalPort> loadSignalPort(const QString& name, QString* error);

/// Version of the functions below and of the types that they return. A library made for another version is
/// not loaded.
constexpr int pluginVersion = 2;

}  // namespace bridge

// What such a library exports, in one of its sources: a function that makes the controller, or the device,
// from the argument, or returns null and says in `error` why not.
//
//     LUMO_BRIDGE_CONTROLLER(argument, error) {
//         return new MyController(argument);
//     }
#define LUMO_BRIDGE_EXPORT extern "C" __attribute__((visibility("default")))
#define LUMO_BRIDGE_VERSION                     \
    LUMO_BRIDGE_EXPORT int lumoBridgeVersion(); \
    int lumoBridgeVersion() {                   \
        return bridge::pluginVersion;           \
    }
#define LUMO_BRIDGE_CONTROLLER(argument, error)                                                           \
    LUMO_BRIDGE_VERSION                                                                                   \
    LUMO_BRIDGE_EXPORT bridge::Controller* lumoBridgeController(const QString& argument, QString* error); \
    bridge::Controller* lumoBridgeController([[maybe_unused]] const QString& argument,                    \
                                             [[maybe_unused]] QString* error)
#define LUMO_BRIDGE_SIGNAL_PORT(argument, error)                                                          \
    LUMO_BRIDGE_VERSION                                                                                   \
    LUMO_BRIDGE_EXPORT bridge::SignalPort* lumoBridgeSignalPort(const QString& argument, QString* error); \
    bridge::SignalPort* lumoBridgeSignalPort([[maybe_unused]] const QString& argument,                    \
                                             [[maybe_unused]] QString* error)
