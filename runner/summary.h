#pragma once

#include "runner/projectresult.h"

#include <QByteArray>

namespace run {

/// The summary of a run as an indented JSON object. Numbers have their shortest form.
[[nodiscard]] QByteArray summaryText(const ProjectResult& result);

}  // namespace run
