#pragma once

#include "runner/options.h"

#include <QString>
#include <QStringList>

namespace run {

/// Why the trace or the value change dump cannot go to the file that was named for it: the run reads
/// that file, or the other one is written to it. Empty when nothing would be lost. `loaded`: further
/// projects that the run may read.
QString outputFault(const Options& options, const QStringList& loaded);

}  // namespace run
