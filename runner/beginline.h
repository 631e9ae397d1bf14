#pragma once

#include "runner/options.h"
#include "runner/trace.h"

namespace run {

/// Writes the first line of a trace: what shapes the run, and the settings as the package has them.
void writeBeginLine(Trace& trace, const Options& options, int statements);

}  // namespace run
