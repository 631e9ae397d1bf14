#pragma once

#include "app/results/runresult.h"
#include "program/statement.h"

namespace app {

/// A statement as a result keeps it. `set` is the name of the parameter set that it names.
[[nodiscard]] ProgramLine programLine(const prog::Statement& statement, const QString& set);

/// The name of a statement's command in the panel's language.
[[nodiscard]] QString commandText(const ProgramLine& line);

}  // namespace app
