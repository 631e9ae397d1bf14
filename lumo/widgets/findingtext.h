#pragma once

#include "program/finding.h"

#include <QString>

namespace lumo {

// What the operator reads of findings, in the panel's language.

/// What is wrong, without the place and without a full stop: "the weld speed is 0".
[[nodiscard]] QString findingText(const prog::Finding& finding);
/// What to do about it, in the same way: "enter a speed above 0". Empty where there is nothing to say.
[[nodiscard]] QString findingRemedy(const prog::Finding& finding);
/// Both in one sentence.
[[nodiscard]] QString findingWithRemedy(const prog::Finding& finding);
/// The text behind the number of the line, counted from 1, where there is one: "Line 12: the weld speed is
/// 0".
[[nodiscard]] QString findingAtLine(const prog::Finding& finding);
/// Why nothing is started: the first error with its remedy, and how many more there are. Empty without an
/// error.
[[nodiscard]] QString refusalText(const prog::Findings& findings);
/// "Error", "Warning".
[[nodiscard]] QString severityWord(prog::Severity severity);
/// "2 errors, 3 warnings"; a number that is 0 is left out.
[[nodiscard]] QString countText(int errors, int warnings);

/// The first error; null without errors.
[[nodiscard]] const prog::Finding* firstError(const prog::Findings& findings);

}  // namespace lumo
