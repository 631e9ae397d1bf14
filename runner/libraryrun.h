#pragma once

#include "runner/options.h"

namespace run {

/// The projects of a folder and its subfolders that are to be run, sorted by name: those with a
/// NAME.limits.json beside them.
QStringList libraryProjects(const QString& folder);

/// `lumo-run [options] DIR`: runs each project of `options.library` in a process of its own, with its
/// NAME.scenario.json where it has one, prints a line for each, and writes one summary and one JUnit file for
/// all. Returns the exit status: 0 when every run returned 0; else 1, or 2 when a project could not be run.
int runLibrary(const Options& options);

}  // namespace run
