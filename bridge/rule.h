#pragma once

#include <QString>

namespace bridge {

/// What a backend must keep to, and an Adapter names when it does not.
enum class Rule {
    UnknownResult,    ///< a result of a motion that nobody ordered
    SecondResult,     ///< a second result of one motion
    StoppedResult,    ///< a result of a motion that was stopped or dropped
    EarlyResult,      ///< a result before the motion was released
    ResultOrder,      ///< results in another order than the motions
    ResultsTogether,  ///< two results in one millisecond
    PostureMissing,   ///< no posture between two results
    LateState,        ///< the last result while the backend still tells that the arm moves
};

/// What was broken, in English, for a log.
QString ruleText(Rule rule);

}  // namespace bridge
