#pragma once

#include "program/check.h"

#include <QString>

namespace run {

/// What a finding says of its field or statement, in plain English, to follow on its name: "is no number".
QString findingText(const prog::Finding& finding);

}  // namespace run
