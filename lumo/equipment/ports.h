#pragma once

#include "module/host.h"
#include "program/ports.h"

class QObject;

/// Switches a digital output with one "register.write", or appends the record to `batch` when given. False,
/// and nothing done, when the port is not in use or its row is missing, or when a dry run forbids it.
bool setPortDO(QObject* sender, I_PORT port, bool on, ModuleObject* batch = nullptr);

/// Sets an analogue output to a fraction of full scale. Not-a-number writes 0. Batch and result as
/// setPortDO().
bool setPortAO(QObject* sender, I_PORT port, double fraction, ModuleObject* batch = nullptr);

/// Writes 0 to an output, digital or analogue.
void clearPort(QObject* sender, I_PORT output);

/// Switches an output off if it is on, before its port is assigned elsewhere or taken out of use: afterwards
/// it could not be switched off any more. For a safety lock the devices behind it go off first. Nothing for
/// inputs.
void switchOffPort(QObject* sender, I_PORT port);

/// Whether the port is in use.
bool portEnabled(I_PORT port);

/// State of a digital port; false when the port is not in use or cannot be read.
bool portState(I_PORT port);

/// Read-back of an analogue port in percent of full scale; 0 when the port is not in use or cannot be read.
double portPercent(I_PORT port);

/// The 16-bit register value of a fraction of full scale: nearest to fraction × 32767, halves up, clamped to
/// the 16-bit range; not-a-number gives 0.
int scaledFraction(double fraction);
