#pragma once

#include "runner/options.h"

#include <QString>
#include <QStringList>

namespace run {

/// Why a file cannot be written to the place that was given for it: the run reads that file, or two are the
/// same file or standard output. Empty when nothing would be overwritten. `loaded`: further projects
/// that the run may read.
QString outputFault(const Options& options, const QStringList& loaded);

}  // namespace run
