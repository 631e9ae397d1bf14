#pragma once

#include "campaign/random.h"

#include <QJsonArray>

namespace campaign {

/// A program of 1 to 25 lines: mostly what a welder would write, now and then what none should
/// (skipped lines, unknown types, missing points, impossible circles, welds that never end).
QJsonArray drawProgram(Random& random);

/// One to three parameter sets with short times, in any order, and values that do not belong there.
QJsonArray drawSets(Random& random);

}  // namespace campaign
