#pragma once

#include "runner/projectresult.h"

#include <QByteArray>

#include <vector>

namespace run {

/// Results as JUnit XML, which CI servers read: a test suite for each project, in it a test case "run" and
/// one for each seam; times are virtual seconds. A case that failed has one element `failure`: its message is
/// the first fault, its text has all. A run fails by its end, findings, the limit of its duration and what
/// --strict found; a seam by violated limits and what --strict found. The projects of stations have suites of
/// their own; what concerns their folder as a whole has one where something failed there.
[[nodiscard]] QByteArray junitText(const std::vector<ProjectResult>& results);

}  // namespace run
