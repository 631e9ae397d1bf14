#pragma once

#include "program/words.h"

/// The nineteen logical signals of the welding equipment. The value is the port's row in `lumo.port`.
enum I_PORT {
    DI_LASER_STATE = 0,
    DI_LASER_HEAD_STATE,
    DI_WATER_COOLING_STATE,
    DI_AIR_PRESSURE_STATE,
    DI_TEMPERATURE_STATE,
    DI_WELDING_STATE,
    DO_GAS,
    DO_RED_LIGHT,
    DO_WIRE_ENABLE,
    DO_LASER_ENABLE,
    DO_ALARM,
    DO_LASER_SAFETY_LOCK,
    DO_WIRE_SAFETY_LOCK,
    DO_GAS_SAFETY_LOCK,
    DO_WIRE_PULLBACK,
    AO_WIRE_SPEED,
    AO_LASER_POWER,
    AO_LASER_FREQUENCY,
    AO_LASER_DUTY_CYCLE,
};

namespace prog {

/// The register value of an analogue output at 100 %.
constexpr double analogueFullScale = 32767.0;

constexpr int portCount = AO_LASER_DUTY_CYCLE + 1;

/// What a port's state says about the cell.
enum class PortMeaning {
    Plain,     ///< nothing, on or off
    Health,    ///< off is a fault
    Alarm,     ///< on is a fault
    Emission,  ///< on: the laser emits, or may
};

/// What is fixed about a port. What it is assigned to and whether it is in use stand in `lumo.port`.
struct Port {
    QLatin1String kind;  ///< `type` of its row: word::portInput, portOutput or portAnalog
    QLatin1String word;  ///< its name in recordings
    QLatin1String defaultName;
    bool isUsedByDefault;
    PortMeaning meaning;
};

[[nodiscard]] const Port& portInfo(I_PORT port);

/// One of the four devices that the device page switches, and the safety lock that must be on for it.
struct Device {
    I_PORT output;
    I_PORT lock;
};
constexpr Device devices[] = {
    {DO_LASER_ENABLE, DO_LASER_SAFETY_LOCK},
    {DO_RED_LIGHT, DO_LASER_SAFETY_LOCK},
    {DO_WIRE_ENABLE, DO_WIRE_SAFETY_LOCK},
    {DO_GAS, DO_GAS_SAFETY_LOCK},
};

/// An output in the order in which an immediate shutdown sets them to 0.
struct ShutdownOutput {
    I_PORT output;
    I_PORT device;  ///< the device of the page that it belongs to; the output itself where it belongs to none
    bool endsRun;   ///< whether the shutdown of a run writes it; the others only go off with their device
};
constexpr ShutdownOutput shutdownOrder[] = {
    {DO_WIRE_PULLBACK, DO_WIRE_PULLBACK, true},
    {DO_WIRE_ENABLE, DO_WIRE_ENABLE, true},
    {AO_WIRE_SPEED, DO_WIRE_ENABLE, false},
    {AO_LASER_POWER, DO_LASER_ENABLE, true},
    {DO_LASER_ENABLE, DO_LASER_ENABLE, true},
    {AO_LASER_DUTY_CYCLE, DO_LASER_ENABLE, true},
    {AO_LASER_FREQUENCY, DO_LASER_ENABLE, true},
    {DO_RED_LIGHT, DO_RED_LIGHT, false},
    {DO_GAS, DO_GAS, true},
};

/// The device of this output; null for a port that is none of a device's own.
[[nodiscard]] const Device* deviceOf(I_PORT port);

}  // namespace prog
