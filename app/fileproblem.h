#pragma once

#include "json/fileproblem.h"

#include <QString>

namespace app {

/// The problem in the panel's language, in one line; `shownFile` stands for the file's path.
QString problemText(const mendo::FileProblem& problem, const QString& shownFile);

/// What the operator can do about it, in the panel's language: a sentence or two.
QString remedyText(const mendo::FileProblem& problem);

/// Its reasons in the panel's language.
QString reasonText(const mendo::FileProblem& problem);

}  // namespace app
