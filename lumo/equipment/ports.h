#pragma once

#include "module/host.h"
#include "program/ports.h"

class QObject;

/// Switches a logical output: one "register.write", or a record appended to `batch` when given.
/// False, and nothing done, when the port is disabled or its row is missing.
bool setPortDO(QObject* sender, I_PORT port, bool on, ModuleObject* batch = nullptr);

/// Sets a logical analogue output to a fraction of full scale. Not-a-number writes 0.
bool setPortAO(QObject* sender, I_PORT port, double fraction, ModuleObject* batch = nullptr);

/// Switches an output off that is on, before its port is assigned elsewhere or taken out of use:
/// afterwards nobody would. Before a safety lock the devices that it gates, as the device page, which could
/// switch none of them off any more, does when it releases the lock. Nothing for inputs.
void switchOffPort(QObject* sender, I_PORT port);

/// Whether the port is in use.
bool portEnabled(I_PORT port);

/// State of an enabled digital port; false when disabled or not readable.
bool portState(I_PORT port);

/// Read-back of an enabled analogue port in percent of full scale; 0 when disabled or not readable.
double portPercent(I_PORT port);

/// The 16-bit register value of a fraction of full scale: nearest to fraction × 32767, halves up,
/// clamped to the 16-bit range; not-a-number gives 0.
int scaledFraction(double fraction);
