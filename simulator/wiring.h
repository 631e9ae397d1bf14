#pragma once

#include "simulator/cell.h"

namespace sim {

/// The wiring that a port file tells: a JSON list of rows with the controller's "name" of each signal,
/// in the fixed order of the ports. Nothing is wired without a file that reads.
Wiring readWiring(const QString& portFile);

}  // namespace sim
