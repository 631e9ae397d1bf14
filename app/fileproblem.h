#pragma once

#include "json/fileproblem.h"

#include <QString>

namespace app {

/// The problem in the panel's language, in one line; `shownFile` stands for the file's path.
QString problemText(const mendo::FileProblem& problem, const QString& shownFile);

/// Its reasons in the panel's language.
QString reasonText(const mendo::FileProblem& problem);

}  // namespace app
