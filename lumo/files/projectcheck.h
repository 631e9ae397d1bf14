#pragma once

#include "files/projectfile.h"
#include "program/finding.h"

namespace lumo {

/// What is wrong with a project's program, with the parameter sets and ports of the tree; the reach too where
/// the host gives an arm.
[[nodiscard]] prog::Findings checkProject(const Project& project);

}  // namespace lumo
