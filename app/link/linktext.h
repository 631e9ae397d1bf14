#pragma once

#include "bridge/linkreason.h"
#include "bridge/rule.h"

#include <QString>

namespace app {

// In the panel's language.

/// Why there is no link: "10.0.0.5:502 does not answer". Words of a backend's own as they are.
QString reasonText(const bridge::LinkReason& reason);
/// That controller or device cannot be reached, with the reason if it is known.
QString unreachableText(bridge::LinkEnd end, const bridge::LinkReason& reason);
/// What the controller has done wrong: "a second result of one motion".
QString brokenRuleText(bridge::Rule rule);

/// The word by which the event log keeps a rule; brokenRuleText() also takes it.
QString ruleWord(bridge::Rule rule);
QString brokenRuleText(const QString& word);

}  // namespace app
