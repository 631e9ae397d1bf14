#pragma once

#include "files/projectfile.h"
#include "program/check.h"

#include <map>

namespace lumo {

/// Checks the programs of project files. What it found about the reach of a project's moves is kept: stations
/// run the same projects again and again.
class ProjectCheck {
public:
    /// What is wrong with a project's program, with the parameter sets and ports of the tree; the reach too
    /// where the host gives an arm. `fileName` tells the projects apart.
    [[nodiscard]] prog::Findings check(const QString& fileName, const Project& project);

private:
    std::map<QString, prog::ReachCheck> reach_;  ///< by file name
};

}  // namespace lumo
