#pragma once

#include "runner/stress/trial.h"

#include <QStringList>

namespace campaign {

/// Draws a random program with random parameter sets, ports and settings, and a schedule for it.
run::stress::Trial drawTrial(quint64 seed, const QStringList& inputNames);

}  // namespace campaign
